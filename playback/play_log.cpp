#include "playback/play_log.h"

#include "catalogue/song_grid.h"
#include "platform/binary_file.h"
#include "platform/cp1252.h"
#include "platform/nul_text.h"
#include "platform/runtime_error.h"
#include "shell/jukebox.h"

#include <QLocale>

namespace zor {
namespace {

void AppendLine(Jukebox& j, const LogRecord& r) {
    // Errors on the log are ignored: the file is closed and play goes on.
    try {
        BinaryFile f(j.platform.files, j.ProgramFile(QStringLiteral("ZORjuke.log")));
        f.Put(f.Length() + 1, EncodeLogRecord(r));
    } catch (const RuntimeError&) {
    }
}

LogRecord Stamped(Jukebox& j, const QString& song) {
    const QDateTime now = j.platform.clock.Now();
    return {LogTimeText(now), LogDateText(now), song, {}, {}};
}

}  // namespace

QByteArray EncodeLogRecord(const LogRecord& r) {
    QByteArray line;
    line.reserve(kLogLineBytes);
    line += cp1252::Field(r.Time, 12);
    line += cp1252::Field(r.Date, 10);
    line += cp1252::Field(r.Song, 30);
    line += cp1252::Field(r.Artist, 20);
    line += cp1252::Field(r.Year, 6);
    line += "\r\n";
    return line;
}

// The machine's short text when it fits its column in the log's code page;
// otherwise a plain numeric form that does. Cut to the column, the C
// locale's "22 Nov 2026" would lose a digit of the year, and many locales'
// texts have signs Windows-1252 lacks.
QString FitLogColumn(const QString& text, int width, const QString& plain) {
    return text.size() <= width && cp1252::Decode(cp1252::Encode(text)) == text ? text : plain;
}

QString LogTimeText(const QDateTime& now) {
    return FitLogColumn(QLocale::system().toString(now.time(), QLocale::ShortFormat), 12,
                        QLocale::c().toString(now.time(), QStringLiteral("HH:mm")));
}
QString LogDateText(const QDateTime& now) {
    return FitLogColumn(QLocale::system().toString(now.date(), QLocale::ShortFormat), 10,
                        QLocale::c().toString(now.date(), QStringLiteral("dd-MM-yyyy")));
}

void LogProgramStart(Jukebox& j) {
    if (j.settings.LogActivity == 0) return;
    AppendLine(j, Stamped(j, QStringLiteral("ZOR JUKEBOX START:")));
    AppendLine(j, {QStringLiteral("Time:"), QStringLiteral("Date:"), QStringLiteral("Song:"), QStringLiteral("Artist:"),
                   QStringLiteral("Year:")});
    AppendLine(j, {QString(12, u'='), QString(10, u'='), QString(30, u'='), QString(21, u'='), QString(6, u'=')});
}

void LogSongStart(Jukebox& j, SongGrid& grid) {
    if (j.settings.LogActivity == 0) return;
    LogRecord r = Stamped(j, {});
    // The grid's current column walks over the three cells and ends on the
    // title. A tag's field ends at its first zero, as it does on screen.
    grid.SetCol(4);
    r.Year = TextBeforeNul(grid.Text());
    grid.SetCol(2);
    r.Artist = TextBeforeNul(grid.Text());
    grid.SetCol(1);
    r.Song = TextBeforeNul(grid.Text());
    AppendLine(j, r);
}

void LogProgramStop(Jukebox& j) {
    if (j.settings.LogActivity == 0) return;
    AppendLine(j, Stamped(j, QStringLiteral("ZOR JUKEBOX STOP.")));
    AppendLine(j, {});
}

}  // namespace zor
