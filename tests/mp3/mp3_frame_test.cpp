// The frame analyser on hand-made files and on files a real encoder makes:
// the bit-rate rows and the text tables, the 3000-byte scan and its edges,
// the rounding ties, the overflow of long songs, and how each of the four
// callers is answered.
#include "mp3/mp3_frame.h"
#include "platform/testing/fakes.h"
#include "shell/jukebox.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// Failures show texts as text.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace zor {
namespace {

using testing::ErrorOf;
using Header = std::array<uint8_t, 4>;

// A song file: `lead` bytes, the four header bytes, then zeros up to `size`.
QByteArray Song(Header header, qint64 size, const QByteArray& lead = {}) {
    QByteArray b = lead;
    for (uint8_t h : header) b += char(h);
    if (b.size() < size) b.append(size - b.size(), '\0');
    return b.left(size);
}

// The eight header texts in the record's order, and the channel mark.
QStringList Texts(const Mp3FrameInfo& i) {
    return {i.BitRateText,   i.VersionText,  i.LayerText,    i.ProtectionText, i.SampleRateText,
            i.CopyrightText, i.OriginalText, i.EmphasisText, i.ChannelMark};
}

// A file system whose look-ups are answered from a script, to stand for a
// file that goes between two looks, or a blank name that is found.
class ScriptedFiles : public FileSystem {
public:
    std::deque<bool> found;  // one answer a look-up; the real answer once empty
    QStringList DirList(const QString& pattern, int attr) override {
        if (found.empty()) return FileSystem::DirList(pattern, attr);
        const bool f = found.front();
        found.pop_front();
        return f ? QStringList{pattern} : QStringList{};
    }
};

struct FrameTest : ::testing::Test {
    testing::TestPlatform tp;
    ScriptedFiles files;
    Platform platform{tp.messages, tp.dialog,      tp.clock, tp.events, tp.beeper,
                      tp.environment, tp.process, files,    tp.desktop, tp.players};
    Jukebox j{platform};
    Mp3FrameInfo info;
    QTemporaryDir dir;
    int picturesHidden = 0;

    void SetUp() override { j.HidePictureForms = [this] { ++picturesHidden; }; }

    QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("song.mp3")) {
        EXPECT_TRUE(testing::WriteFileBytes(dir.filePath(name), bytes));
        return dir.filePath(name);
    }
    // A file of `size` bytes that holds only a header at its start; the rest
    // is a hole, so long songs cost no disk.
    QString WriteSparse(Header header, qint64 size) {
        const QString path = Write(Song(header, 4));
        EXPECT_TRUE(QFile(path).resize(size));
        return path;
    }
    Mp3Analysis Analyse(const QString& path, Mp3Caller caller = Mp3Caller::GridSong) {
        return AnalyseMp3File(j, info, {.caller = caller, .CurrentCell = path});
    }
    // A 128 kbit/s mono song of 10 seconds analysed first, so that what a
    // later analysis keeps shows.
    void AnalyseEarlierSong() {
        ASSERT_EQ(Analyse(Write(Song({0xFF, 0xFB, 0x90, 0xC4}, 160000), QStringLiteral("earlier.mp3"))).outcome,
                  Mp3Outcome::Analysed);
    }
};

// B2 / 16, its ties rounded to even, picks the row; the time is the whole
// file over the row's rate, rounded the same way.
TEST_F(FrameTest, TheRoundedB2Over16PicksTheRowAndTheFileOverItsRateIsTheTime) {
    const struct {
        uint8_t b2;
        qint64 size;
        const char* label;
        int seconds;
        const char* text;
    } rows[] = {
        {0x00, 16000 * 66 + 8000, "free", 66, "1:06"},  // 66.5 s: down to the even 66
        {0x30, 6000000, "VBR", 1000, "16:40"},          // the 48 kbit/s row, timed at 6000 bytes a second
        {0x38, 7000 * 9 + 3500, " 56", 10, "0:10"},     // 3.5 up, so no longer "VBR"; 9.5 s up to 10
        {0x88, 14000 * 10, "112", 10, "0:10"},          // 8.5 down
        {0x98, 20000 * 10, "160", 10, "0:10"},          // 9.5 up
        {0xF0, 16000 * 10, "bad", 10, "0:10"},
        {0xFF, 16000 * 10, "bad", 10, "0:10"},          // 15.9 rounds to a seventeenth row
        {0x10, 131069999, " 32", 32767, "546:07"},      // the longest a 16-bit count holds
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(int(r.b2));
        ASSERT_EQ(Analyse(WriteSparse({0xFF, 0xFB, r.b2, 0x00}, r.size)).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(info.EncodingText, QString::fromLatin1(r.label));
        EXPECT_EQ(info.DurationSeconds, r.seconds);
        EXPECT_EQ(info.DurationText, QString::fromLatin1(r.text));
    }
}

// The channel mark rounds B3 / 64 to even: above 2.5 is mono, so dual
// channel with any of the low bits set counts as mono.
TEST_F(FrameTest, HeaderBitsPickTheTextsTheSampleRateRowFollowsTheVersionAndTheMarkRoundsToEven) {
    const std::pair<Header, QStringList> cases[] = {
        // The first byte is never looked at: any byte above 200 will do.
        {{0xC9, 0xFB, 0x90, 0x64}, {"128", "Version 1.0", "Layer III", "None", "44100", "None", "Original", "None", "S:"}},
        {{0xFF, 0xFA, 0x94, 0xC4}, {"128", "Version 1.0", "Layer III", "by CRC", "48000", "None", "Original", "None", "M:"}},
        {{0xFF, 0xFD, 0x58, 0x09}, {" 80", "Version 1.0", "Layer II", "None", "32000", "Yes", "Copy", "50/15 ms", "S:"}},
        {{0xFF, 0xFF, 0x6C, 0x0E}, {" 96", "Version 1.0", "Layer I", "None", "Reser.", "Yes", "Original", "Reserved", "S:"}},
        {{0xFF, 0xF9, 0x00, 0x03}, {"free", "Version 1.0", "Reserved", "None", "44100", "None", "Copy", "CCIT J17", "S:"}},
        {{0xFF, 0xF3, 0x80, 0xC4}, {"112", "Version 2.0", "Layer III", "None", "22050", "None", "Original", "None", "M:"}},
        // B3 / 64 of 2.52 is mono; of 2.5 (below), stereo.
        {{0xFF, 0xE3, 0x40, 0xA1}, {" 56", "Version 2.5", "Layer III", "None", "11025", "None", "Copy", "50/15 ms", "M:"}},
        // The reserved version reads its sample rate as version 1.0 does.
        {{0xFF, 0xEB, 0x44, 0xA0}, {" 56", "Reserved", "Layer III", "None", "48000", "None", "Copy", "None", "S:"}},
    };
    for (const auto& [header, texts] : cases) {
        SCOPED_TRACE(texts.join(u',').toStdString());
        ASSERT_EQ(Analyse(Write(Song(header, 4000))).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(Texts(info), texts);
    }
}

// Real files, encoded by lame at test time from a five-second tone: what
// the analyser says of each is worked out here by hand from the header lame
// writes and the one bit-rate table.
TEST_F(FrameTest, LamesHeadersReadAsTheTablesSayAndTheToneIsTimedAtTheRowsRate) {
    const testing::AudioTools tools;
    if (!tools.Usable()) GTEST_SKIP() << "sox and lame are needed to make the MP3 files; not found";
    const struct {
        int rate, channels;
        QStringList lame;
        QStringList texts;  // bit rate, version, protection, sample rate, copyright, original, emphasis, mark
        int seconds;  // the tone's five seconds at the file's own rate, over the rate of the label's row
    } encodings[] = {
        {44100, 2, {"-b", "128"}, {"128", "Version 1.0", "None", "44100", "None", "Original", "None", "S:"}, 5},
        // 48 kbit/s is the row read as "VBR", timed at its own 6000 bytes a second.
        {44100, 1, {"-b", "48", "-c", "-o", "-e", "5"},
         {"VBR", "Version 1.0", "None", "44100", "Yes", "Copy", "50/15 ms", "M:"}, 5},
        {48000, 1, {"-b", "128", "-p"}, {"128", "Version 1.0", "by CRC", "48000", "None", "Original", "None", "M:"}, 5},
        // 32000 Hz pushes the index up to the "160" row: 16000 bytes a second timed at 20000.
        {32000, 2, {"-m", "s", "-b", "128"}, {"160", "Version 1.0", "None", "32000", "None", "Original", "None", "S:"}, 4},
        // MPEG-2 numbers its bit rates otherwise: 64 kbit/s lands on the "112" row, 8000 timed at 14000.
        {22050, 2, {"-b", "64"}, {"112", "Version 2.0", "None", "22050", "None", "Original", "None", "S:"}, 3},
    };
    for (const auto& e : encodings) {
        SCOPED_TRACE(e.lame.join(u' ').toStdString());
        const QString path = dir.filePath(QStringLiteral("lame%1.mp3").arg(&e - encodings));
        ASSERT_TRUE(tools.Mp3(path, 5, e.lame, e.rate, e.channels));
        ASSERT_EQ(ScanMp3File(files, path, info, true).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(QStringList({info.BitRateText, info.VersionText, info.ProtectionText, info.SampleRateText,
                               info.CopyrightText, info.OriginalText, info.EmphasisText, info.ChannelMark}),
                  e.texts);
        EXPECT_EQ(info.LayerText, u"Layer III");
        // The encoder's few padding frames stay well inside the rounding.
        EXPECT_EQ(info.DurationSeconds, e.seconds);
    }
}

TEST_F(FrameTest, ASongPast32767SecondsOverflowsWithItsSecondsAndLabelAlreadyStored) {
    AnalyseEarlierSong();
    // 32767.5 seconds at 4000 bytes a second rounds to the even 32768.
    EXPECT_EQ(ErrorOf([&] { Analyse(WriteSparse({0xFF, 0xF3, 0x10, 0xC4}, 131070000)); }), 6);
    EXPECT_EQ(info.DurationSeconds, 32768);
    EXPECT_EQ(info.BitRateText, u" 32");
    EXPECT_EQ(info.DurationText, u"0:10");  // the rest is the earlier song's
    EXPECT_EQ(info.EncodingText, u"128");
    // A file too long for the 32-bit byte count can't be timed at all.
    EXPECT_EQ(ErrorOf([&] { Analyse(WriteSparse({0xFF, 0xFB, 0xE0, 0x00}, qint64(1) << 31)); }), 6);
}

// The scan's edges: a file of over 3000 bytes, its header the first byte
// above 200 up to position 2998; a tag or text in front is read from that
// byte. A failed scan keeps the earlier song's encoding and mark (what else
// it keeps and sets is the frame scan's fuzz target).
TEST_F(FrameTest, TheScanTakesTheFirstByteAbove200UpToPosition2998InFilesOverThe3000) {
    QByteArray lead;  // bytes up to 200, as a header repair would leave untouched
    for (int i = 0; i < 2997; ++i) lead += char(i % 201);
    QByteArray v2("ID3\x03\x00\x00\x00\x00\x07\x76TIT2\x00\x00\x03\x70\x00\x00\x00", 20);
    v2 += QByteArray("A title in plain letters").leftJustified(1000, ' ');
    const Header h320{0xFF, 0xFB, 0xE0, 0x00}, h192{0xFF, 0xFB, 0xB0, 0xC0};
    const std::pair<QByteArray, const char*> rows[] = {  // the encoding and mark found; none: no frame
        {Song(h320, 3000), nullptr},
        {Song(h320, 3001), "320S:"},
        {Song(h192, 3001, lead), "192M:"},
        {Song(h192, 10000, lead + '\x10'), nullptr},
        // An ID3v2 block of plain ASCII is passed over to the frame behind it.
        {Song({0xFF, 0xF3, 0x80, 0xC4}, 48000, v2), "112M:"},
    };
    for (const auto& [bytes, found] : rows) {
        SCOPED_TRACE(bytes.size());
        AnalyseEarlierSong();
        EXPECT_EQ(Analyse(Write(bytes)).outcome, found ? Mp3Outcome::Analysed : Mp3Outcome::NoFrame);
        EXPECT_EQ(info.EncodingText + info.ChannelMark, QString::fromLatin1(found ? found : "128M:"));
    }
    // A tag in front whose text has an accented letter: "\xE9 de" is the header.
    ASSERT_EQ(Analyse(Write(Song({}, 3500, "TAGCaf\xE9 del Mar"))).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(Texts(info), QStringList({" 80", "Version 2.5", "Reserved", "by CRC", "12000", "None", "Original",
                                        "50/15 ms", "S:"}));
    // A blank path that is found is worked out as a zero header of no length.
    files.found = {true};
    EXPECT_EQ(Analyse(QStringLiteral("   ")).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(Texts(info),
              QStringList({"free", "Version 2.5", "Reserved", "by CRC", "11025", "None", "Copy", "None", "S:"}));
    EXPECT_EQ(info.FileBytes, 0);
}

TEST_F(FrameTest, OnlyTheGridAnalysersTakeTheOverrideSetTheMarkAndAskForTheSongLine) {
    const QString cell = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 4000), QStringLiteral("cell.mp3"));
    const QString other = Write(Song({0xFF, 0xFB, 0xE0, 0xC0}, 4000), QStringLiteral("other.mp3"));
    const QString shortFile = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 3000), QStringLiteral("short.mp3"));
    for (Mp3Caller caller : {Mp3Caller::GridSong, Mp3Caller::PlaylistSong, Mp3Caller::FileWindow, Mp3Caller::Editor}) {
        SCOPED_TRACE(int(caller));
        const bool grid = caller == Mp3Caller::GridSong || caller == Mp3Caller::PlaylistSong;
        Mp3AnalysisOptions o{.caller = caller, .CurrentCell = cell, .ShowSongInfoLine = true};
        const Mp3Analysis plain = AnalyseMp3File(j, info, o);
        EXPECT_EQ(plain.path, cell);
        EXPECT_EQ(plain.ShowSongInfoLine, grid);
        info.ChannelMark = QStringLiteral("untouched");
        o.SongPathOverride = other;
        const Mp3Analysis a = AnalyseMp3File(j, info, o);
        EXPECT_EQ(a.path, grid ? other : cell);
        EXPECT_EQ(info.EncodingText, grid ? u"320" : u"128");
        EXPECT_EQ(info.ChannelMark, grid ? u"M:" : u"untouched");
        EXPECT_EQ(a.Mono, grid);  // every caller learns mono
        // No song line after a failed analysis.
        o.SongPathOverride = o.CurrentCell = shortFile;
        EXPECT_FALSE(AnalyseMp3File(j, info, o).ShowSongInfoLine);
    }
}

TEST_F(FrameTest, AMissingFileIsToldWithTheCallersStyleUnlessAPlaylistOrInventoryRuns) {
    AnalyseEarlierSong();
    const QString gone = dir.path() + QStringLiteral("/gone.mp3");
    const QString english =
        "ATTENTION!\n\nThe Song file is not/no longer in  \nthis pre-determined directory! \n\n"
        "Please correct this by adding the \nsong (again) to the database.\n";
    const QString dutch =
        "ATTENTIE!\n\nDit Song-bestand zit niet / niet meer in  \nde eerder bepaalde directory! \n\n"
        "Dit kan worden gecorrigeerd door dit bestand  \n(opnieuw) aan de database toe te voegen.\n";
    const struct {
        Mp3Caller caller;
        int16_t playlistActive;
        bool inventory, flagged;
        int boxFlags;  // -1: no box
        const char* encoding;
        const char* language = "1";
    } cases[] = {
        {Mp3Caller::GridSong, 0, false, true, vbOKOnly + vbExclamation, "128"},
        {Mp3Caller::GridSong, 0, false, true, vbOKOnly + vbExclamation, "128", "0"},
        {Mp3Caller::FileWindow, 0, false, true, vbCritical, "128"},
        {Mp3Caller::GridSong, 1, true, true, -1, "128"},  // a running playlist wins over an inventory
        {Mp3Caller::FileWindow, 1, false, true, -1, "128"},
        {Mp3Caller::GridSong, 0, true, false, -1, "???"},
        {Mp3Caller::Editor, 1, true, true, vbCritical, "128"},  // the editor always tells
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(int(&c - cases));
        tp.messages.shown.clear();
        picturesHidden = 0;
        info.EncodingText = QStringLiteral("128");
        j.PlaylistActive = c.playlistActive;
        j.Language = QString::fromLatin1(c.language);
        const Mp3Analysis a =
            AnalyseMp3File(j, info, {.caller = c.caller, .CurrentCell = gone, .InventoryRun = c.inventory});
        EXPECT_EQ(a.outcome, Mp3Outcome::Missing);
        EXPECT_EQ(a.SongFileMissing, c.flagged);
        EXPECT_EQ(info.EncodingText, QString::fromLatin1(c.encoding));
        EXPECT_EQ(tp.messages.shown.size(), c.boxFlags < 0 ? 0u : 1u);
        EXPECT_EQ(picturesHidden, c.boxFlags < 0 ? 0 : 1);
        if (c.boxFlags < 0 || tp.messages.shown.empty()) continue;
        EXPECT_EQ(tp.messages.shown[0].flags, c.boxFlags);
        EXPECT_EQ(tp.messages.shown[0].title + tp.messages.shown[0].text,
                  "ZOR JUKEBOX" + (j.Language == u"0" ? dutch : english));
    }
    EXPECT_EQ(info.DurationText, u"0:10");  // the rest of the record is never touched
}

// A file that goes between the file window's two looks is a failed analysis,
// not a missing one; the other callers look once. A directory is missing,
// and a file that can't be opened reaches the caller as its error.
TEST_F(FrameTest, AFileGoneBeforeTheOpenADirectoryAndAnUnreadableFileReachEachCallerAsItExpects) {
    AnalyseEarlierSong();
    const QString path = Write(Song({0xFF, 0xFB, 0xE0, 0x00}, 4000));
    files.found = {true, false};
    EXPECT_EQ(Analyse(path, Mp3Caller::FileWindow).outcome, Mp3Outcome::NoFrame);
    EXPECT_EQ(info.EncodingText, u"128");
    files.found = {true, false};
    EXPECT_EQ(Analyse(path, Mp3Caller::Editor).outcome, Mp3Outcome::Analysed);

    EXPECT_TRUE(Analyse(dir.path()).SongFileMissing);

    QString locked = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 4000), QStringLiteral("locked.mp3"));
    QFile::setPermissions(locked, QFileDevice::Permissions());
    // The superuser reads any file; a kernel file that refuses reading stands in.
    if (QFile(locked).open(QIODevice::ReadOnly)) locked = QStringLiteral("/sys/bus/pci/rescan");
    if (!QFileInfo(locked).isFile() || QFile(locked).open(QIODevice::ReadOnly))
        GTEST_SKIP() << "no file here that refuses to be read";
    EXPECT_EQ(ErrorOf([&] { Analyse(locked); }), 70);
}

}  // namespace
}  // namespace zor
