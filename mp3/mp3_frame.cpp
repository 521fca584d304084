#include "mp3/mp3_frame.h"

#include "platform/binary_file.h"
#include "platform/file_system.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"
#include "shell/jukebox.h"

#include <array>
#include <limits>

namespace zor {
namespace {

// The scan looks at this many bytes from the start and no more: a longer
// lead-in is what header repair is for.
constexpr qint64 kScanBytes = 3000;
// A header byte found later than this counts as not found.
constexpr qint64 kLastHeaderPosition = 2998;
// The first byte above this is taken for the header's first byte; the sync
// bits are never checked.
constexpr unsigned kHeaderByteAbove = 200;

struct BitRate {
    const char* label;
    int bytesPerSecond;
};

// One table for every MPEG version and layer. Row 3 is the 48 kbit/s slot of
// MPEG-1 Layer III, which the jukebox reads as a variable bit rate; "free"
// and "bad" are timed as 128 kbit/s. Seventeen rows, because the rounded
// B2 / 16 reaches 16 for B2 of 0xF8 and above.
constexpr std::array<BitRate, 17> kBitRates = {{{"free", 16000},
                                                {" 32", 4000},
                                                {" 40", 5000},
                                                {"VBR", 6000},
                                                {" 56", 7000},
                                                {" 64", 8000},
                                                {" 80", 10000},
                                                {" 96", 12000},
                                                {"112", 14000},
                                                {"128", 16000},
                                                {"160", 20000},
                                                {"192", 24000},
                                                {"224", 28000},
                                                {"256", 32000},
                                                {"320", 40000},
                                                {"bad", 16000},
                                                {"bad", 16000}}};

constexpr std::array<const char*, 4> kVersions = {"Version 2.5", "Reserved", "Version 2.0", "Version 1.0"};
constexpr std::array<const char*, 4> kLayers = {"Reserved", "Layer III", "Layer II", "Layer I"};
constexpr std::array<const char*, 2> kProtections = {"by CRC", "None"};
constexpr std::array<const char*, 2> kCopyrights = {"None", "Yes"};
constexpr std::array<const char*, 2> kOriginals = {"Copy", "Original"};
constexpr std::array<const char*, 4> kEmphases = {"None", "50/15 ms", "Reserved", "CCIT J17"};
// Four rows a version: 1.0 (and the reserved version) from row 0, 2.0 from
// row 4, 2.5 from row 8.
constexpr std::array<const char*, 17> kSampleRates = {"44100",  "48000",  "32000",  "Reser.", "22050",  "24000",
                                                      "16000",  "Reser.", "11025",  "12000",  "8000",   "Reser.",
                                                      "Reser.", "Reser.", "Reser.", "Reser.", "Reser."};

using Header = std::array<uint8_t, 4>;

bool IsMono(const Header& h) { return vb::CInt(h[3] / 64.0) >= 3; }

void MarkNoFrame(Mp3FrameInfo& info) {
    const QString unknown = QStringLiteral("???");
    for (QString* text : {&info.BitRateText, &info.VersionText, &info.LayerText, &info.ProtectionText,
                          &info.SampleRateText, &info.CopyrightText, &info.OriginalText, &info.EmphasisText})
        *text = unknown;
}

QString FormatDuration(int16_t seconds) {
    const int minutes = seconds / 60;
    const int rest = seconds % 60;
    return QString::number(minutes) + u':' + (rest < 10 ? QStringLiteral("0") : QString()) + QString::number(rest);
}

// The results in the order they were always written: an overflow of the
// 16-bit second count leaves DurationSeconds and BitRateText new and the
// rest of the record as the song before left it.
void Describe(Mp3FrameInfo& info, const Header& h, int32_t length, bool setChannelMark) {
    const BitRate& rate = kBitRates[size_t(vb::CInt(h[2] / 16.0))];
    info.DurationSeconds = vb::CLng(double(length) / rate.bytesPerSecond);
    info.BitRateText = QString::fromLatin1(rate.label);
    info.DurationText = FormatDuration(vb::CInt(info.DurationSeconds));
    if (setChannelMark) info.ChannelMark = IsMono(h) ? QStringLiteral("M:") : QStringLiteral("S:");
    const int version = (h[1] & 24) / 8;
    info.VersionText = QString::fromLatin1(kVersions[size_t(version)]);
    info.LayerText = QString::fromLatin1(kLayers[size_t((h[1] & 6) / 2)]);
    info.ProtectionText = QString::fromLatin1(kProtections[size_t(h[1] & 1)]);
    const int rateRow = (h[2] & 12) / 4 + (version == 2 ? 4 : 0) + (version == 0 ? 8 : 0);
    info.SampleRateText = QString::fromLatin1(kSampleRates[size_t(rateRow)]);
    info.CopyrightText = QString::fromLatin1(kCopyrights[size_t((h[3] & 8) / 8)]);
    info.OriginalText = QString::fromLatin1(kOriginals[size_t((h[3] & 4) / 4)]);
    info.EmphasisText = QString::fromLatin1(kEmphases[size_t(h[3] & 3)]);
    info.EncodingText = info.BitRateText;
}

uint8_t ByteAt(const QByteArray& bytes, qint64 position) {
    return position <= bytes.size() ? uint8_t(bytes[position - 1]) : 0;
}

// The 1-based position of the first byte above 200 among the first bytes,
// or 0 when there is none early enough.
qint64 FindHeader(const QByteArray& lead) {
    qint64 position = 1;
    while (position < kScanBytes && ByteAt(lead, position) <= kHeaderByteAbove) ++position;
    return position > kLastHeaderPosition ? 0 : position;
}

void TellMissing(Jukebox& j, Mp3FrameInfo& info, const Mp3AnalysisOptions& o, Mp3Analysis& result) {
    // The editor was asked about this one song, so it always says so.
    if (o.caller != Mp3Caller::Editor) {
        if (j.PlaylistActive == 1) {
            result.SongFileMissing = true;
            return;
        }
        if (o.InventoryRun) {
            info.EncodingText = QStringLiteral("???");
            return;
        }
    }
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    j.AddMessageLine(j.Lang(QStringLiteral("The Song file is not/no longer in  "),
                            QStringLiteral("Dit Song-bestand zit niet / niet meer in  ")));
    j.AddMessageLine(j.Lang(QStringLiteral("this pre-determined directory! "),
                            QStringLiteral("de eerder bepaalde directory! ")));
    j.AddMessageLine(QString());
    j.AddMessageLine(j.Lang(QStringLiteral("Please correct this by adding the "),
                            QStringLiteral("Dit kan worden gecorrigeerd door dit bestand  ")));
    j.AddMessageLine(j.Lang(QStringLiteral("song (again) to the database."),
                            QStringLiteral("(opnieuw) aan de database toe te voegen.")));
    const bool gridAnalyser = o.caller == Mp3Caller::GridSong || o.caller == Mp3Caller::PlaylistSong;
    j.ShowMessageBuffer(vbOKOnly + (gridAnalyser ? vbExclamation : vbCritical));
    result.SongFileMissing = true;
}

// Dir's answer without Dir's shared walk, which a caller may be in the
// middle of: a directory or nothing at all is missing.
bool Found(FileSystem& fs, const QString& path) { return !fs.DirList(path).isEmpty(); }

}  // namespace

Mp3Analysis ScanMp3File(FileSystem& fs, const QString& path, Mp3FrameInfo& info, bool setChannelMark) {
    Mp3Analysis result;
    result.path = path;
    Header header{};
    qint64 length = 0;
    if (!vb::Trim(path).isEmpty()) {
        BinaryFile file(fs, path, BinaryFile::ReadOnly);
        length = file.Length();
        if (length > std::numeric_limits<int32_t>::max()) throw RuntimeError::Overflow();
        info.FileBytes = int32_t(length);
        if (length <= kScanBytes) {
            MarkNoFrame(info);
            result.outcome = Mp3Outcome::NoFrame;
            return result;
        }
        // A read that fails works out the header as read so far, the rest
        // as zeros, as the old error handler went straight to the close.
        try {
            const qint64 at = FindHeader(file.Get(1, kScanBytes));
            if (at == 0) {
                MarkNoFrame(info);
                result.outcome = Mp3Outcome::NoFrame;
                return result;
            }
            // The four header bytes in one read; those past the end are zeros.
            const QByteArray bytes = file.Get(at, qint64(header.size()));
            for (qint64 i = 0; i < qint64(header.size()); ++i) header[size_t(i)] = ByteAt(bytes, i + 1);
        } catch (const RuntimeError&) {
        }
    } else {
        info.FileBytes = 0;
    }
    Describe(info, header, int32_t(length), setChannelMark);
    result.outcome = Mp3Outcome::Analysed;
    result.Mono = IsMono(header);
    return result;
}

Mp3Analysis AnalyseMp3File(Jukebox& j, Mp3FrameInfo& info, const Mp3AnalysisOptions& o) {
    FileSystem& fs = j.platform.files;
    const bool gridAnalyser = o.caller == Mp3Caller::GridSong || o.caller == Mp3Caller::PlaylistSong;
    const QString path = gridAnalyser && o.SongPathOverride != u"XXX" ? o.SongPathOverride : o.CurrentCell;
    if (!Found(fs, path)) {
        Mp3Analysis result;
        result.path = path;
        TellMissing(j, info, o, result);
        return result;
    }
    // The file window looks once more just before the open; a file gone in
    // between is a failed analysis, not a missing one.
    if (o.caller == Mp3Caller::FileWindow && !vb::Trim(path).isEmpty() && !Found(fs, path)) {
        MarkNoFrame(info);
        Mp3Analysis result;
        result.outcome = Mp3Outcome::NoFrame;
        result.path = path;
        return result;
    }
    Mp3Analysis result = ScanMp3File(fs, path, info, gridAnalyser);
    result.ShowSongInfoLine = gridAnalyser && o.ShowSongInfoLine && result.outcome == Mp3Outcome::Analysed;
    return result;
}

QString SongInfoLine(const QString& title, const QString& artist, const Mp3FrameInfo& info,
                     const QString& language) {
    const QString length = language == u"0" ? QStringLiteral("Duur: ") : QStringLiteral("Length: ");
    return QStringLiteral("> ") + vb::Trim(title) + QStringLiteral(" - ") + vb::Trim(artist) + QStringLiteral(", ") +
           info.BitRateText + QStringLiteral(" kb/s.; ") + length + info.DurationText;
}

}  // namespace zor
