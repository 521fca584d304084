#include "playlists/m3u_file.h"

#include "catalogue/song_grid.h"
#include "platform/cp1252.h"
#include "platform/nul_text.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"

#include <QStringDecoder>

#include <algorithm>

namespace zor {
namespace {

constexpr qint64 kWindow = 200;
// The walk looks at characters 1 to 198 and the one after each.
constexpr qint64 kWalk = 198;
constexpr int kShortestLine = 7;
constexpr qint64 kSmallestFile = 10;

bool IsBreak(QByteArrayView w, qint64 i) { return i + 1 < w.size() && w[i] == '\r' && w[i + 1] == '\n'; }

// The 1-based position after the last "\" or "/", searched from the end
// down to the second character.
qint64 NameStart(const QString& path) {
    qint64 k = path.size();
    while (k >= 2 && path[k - 1] != u'\\' && path[k - 1] != u'/') --k;
    return std::max<qint64>(k, 1) + 1;
}

// The 1-based position of the first "-" of the name, or one past the end.
qint64 DashAt(const QString& path, qint64 start) {
    qint64 d = start;
    while (d <= path.size() && path[d - 1] != u'-') ++d;
    return d;
}

}  // namespace

QString DecodeM3uLine(QByteArrayView line) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(line);
    return utf8.hasError() ? cp1252::Decode(line.toByteArray()) : text;
}

M3uLine TakeM3uLine(QByteArrayView file, qint64 pos) {
    M3uLine out;
    if (pos < 1 || pos > file.size()) return out;
    // At the end only the rest is read: nothing past the file is seen.
    const QByteArrayView w = file.sliced(pos - 1, std::min(kWindow, file.size() - pos + 1));
    // The walk goes by bytes; the line is decoded once it is whole.
    QByteArray line;
    for (qint64 i = 0; i < kWalk && i < w.size(); ++i) {
        if (IsBreak(w, i)) {
            out.step = i + 2;
            if (line.isEmpty()) return out;
            if (line.size() >= kShortestLine) {
                out.text = DecodeM3uLine(line);
                out.complete = true;
                return out;
            }
            // A line of one to six characters goes on past its break.
        } else {
            line.append(w[i]);
        }
    }
    return out;
}

bool M3uLineReader::Next(QString& line) {
    while (pos_ <= file_.size()) {
        if (nextBreak_ < pos_ - 1) {
            nextBreak_ = file_.indexOf(QByteArrayView("\r\n"), pos_ - 1);
            if (nextBreak_ < 0) break;
        }
        // The window at pos_ sees a break at its characters 1 to 198 only.
        if (nextBreak_ + 1 > pos_ + kWalk - 1) {
            pos_ = nextBreak_ + 1 - (kWalk - 1);
            continue;
        }
        M3uLine taken = TakeM3uLine(file_, pos_);
        pos_ += taken.step;
        if (taken.complete) {
            line = std::move(taken.text);
            return true;
        }
    }
    pos_ = file_.size() + 1;
    return false;
}

QString M3uArtist(const QString& path) {
    const qint64 start = NameStart(path);
    return path.mid(start - 1, DashAt(path, start) - start);
}

QString M3uTitle(const QString& path) {
    const qint64 dash = DashAt(path, NameStart(path));
    const qint64 length = path.size() - 4 - dash;
    if (length < 0) throw RuntimeError::InvalidProcedureCall();
    return path.mid(dash, length);
}

bool ReadM3uRows(QByteArrayView file, SongGrid& grid, int32_t& playlistEnd) {
    grid.SetTextMatrix(0, 1, QStringLiteral("SONG:"));
    grid.SetTextMatrix(0, 2, QStringLiteral("ARTIST:"));
    grid.SetTextMatrix(0, 6, QStringLiteral("PATH:"));
    playlistEnd = 1;
    // The catalogue's rows go: one empty row stands ready for the first path.
    grid.SetRows(1);
    grid.SetRows(2);
    grid.SetRow(1);
    if (file.size() < kSmallestFile) return false;
    M3uLineReader reader(file);
    QString line;
    while (reader.Next(line)) {
        if (line.startsWith(QStringLiteral("#EXTINF"))) {
            grid.SetRow(playlistEnd);
            grid.SetCol(1);
            continue;
        }
        // A name that cannot be split leaves no row behind: the grid ends
        // with the rows read whole before it.
        QString artist, title;
        try {
            artist = vb::Trim(M3uArtist(line));
            title = vb::Trim(M3uTitle(line));
        } catch (const RuntimeError&) {
            grid.SetRows(playlistEnd);
            throw;
        }
        ++playlistEnd;
        const int row = grid.Row();
        grid.SetTextMatrix(row, 6, line);
        grid.SetTextMatrix(row, 2, artist);
        grid.SetTextMatrix(row, 1, title);
        grid.SetRows(playlistEnd + 1);
        grid.SetRow(playlistEnd);
    }
    grid.SetRows(playlistEnd);
    return true;
}

QByteArray M3uHeader() { return QByteArrayLiteral("#EXTM3U\r\n"); }

QByteArray M3uEntry(int32_t seconds, const QString& title, const QString& path) {
    // Other programs get the texts as they are shown: no padding of a
    // fixed field and nothing from the first zero of a tag's field on.
    return QByteArrayLiteral("#EXTINF:") + QByteArray::number(seconds) + ',' + TrimmedBeforeNul(title).toUtf8() +
           "\r\n" + TrimmedBeforeNul(path).toUtf8() + "\r\n";
}

}  // namespace zor
