// The frame analyser on hand-made files: the bit-rate table and the text
// tables, the 3000-byte scan and its edges, the rounding ties, the overflow
// of long songs, and how each of the four callers is answered.
#include "mp3/mp3_frame.h"
#include "platform/testing/fakes.h"
#include "shell/jukebox.h"
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

// The eight header texts, in the record's order.
QStringList Texts(const Mp3FrameInfo& i) {
    return {i.BitRateText, i.VersionText,  i.LayerText,    i.ProtectionText,
            i.SampleRateText, i.CopyrightText, i.OriginalText, i.EmphasisText};
}

const QStringList kUnknown(8, QStringLiteral("???"));

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
        const QString path = dir.path() + u'/' + name;
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_EQ(f.write(bytes), bytes.size());
        return path;
    }
    // A file of `size` bytes that holds only a header at its start; the rest
    // is a hole, so long songs cost no disk.
    QString WriteSparse(Header header, qint64 size) {
        const QString path = Write(Song(header, 4));
        EXPECT_TRUE(QFile(path).resize(size));
        return path;
    }
    Mp3Analysis Analyse(const QString& path, Mp3Caller caller = Mp3Caller::GridSong) {
        Mp3AnalysisOptions o;
        o.caller = caller;
        o.CurrentCell = path;
        return AnalyseMp3File(j, info, o);
    }
    // A 128 kbit/s mono song of 10 seconds analysed first, so that what a
    // later analysis keeps shows.
    void AnalyseEarlierSong() {
        ASSERT_EQ(Analyse(Write(Song({0xFF, 0xFB, 0x90, 0xC4}, 160000), QStringLiteral("earlier.mp3"))).outcome,
                  Mp3Outcome::Analysed);
    }
};

TEST_F(FrameTest, EveryBitRateRowGivesItsLabelAndIsTimedAtItsRate) {
    const std::tuple<uint8_t, const char*, int> rows[] = {
        {0x00, "free", 16000}, {0x10, " 32", 4000},  {0x20, " 40", 5000},  {0x30, "VBR", 6000},
        {0x40, " 56", 7000},   {0x50, " 64", 8000},  {0x60, " 80", 10000}, {0x70, " 96", 12000},
        {0x80, "112", 14000},  {0x90, "128", 16000}, {0xA0, "160", 20000}, {0xB0, "192", 24000},
        {0xC0, "224", 28000},  {0xD0, "256", 32000}, {0xE0, "320", 40000}, {0xF0, "bad", 16000},
        // B2 / 16 rounds ties to even: 9.5 up to the "160" row, 8.5 down, 7.5
        // up, 3.5 up (so no longer "VBR"), 2.5 down.
        {0x98, "160", 20000},  {0x88, "112", 14000}, {0x78, "112", 14000}, {0x38, " 56", 7000},
        {0x28, " 40", 5000},   {0xFF, "bad", 16000}};
    for (auto [b2, label, bytesPerSecond] : rows) {
        SCOPED_TRACE(int(b2));
        // 66.5 seconds at the row's rate: the half goes to the even 66.
        ASSERT_EQ(Analyse(Write(Song({0xFF, 0xFB, b2, 0x00}, qint64(bytesPerSecond) * 133 / 2))).outcome,
                  Mp3Outcome::Analysed);
        EXPECT_EQ(info.BitRateText, QString::fromLatin1(label));
        EXPECT_EQ(info.EncodingText, QString::fromLatin1(label));
        EXPECT_EQ(info.DurationText, u"1:06");
    }
}

TEST_F(FrameTest, HeaderBitsPickTheTextsAndTheSampleRateRowFollowsTheVersion) {
    const std::pair<Header, QStringList> cases[] = {
        // The first byte is never looked at: any byte above 200 will do.
        {{0xC9, 0xFB, 0x90, 0x64}, {"128", "Version 1.0", "Layer III", "None", "44100", "None", "Original", "None"}},
        {{0xFF, 0xFA, 0x94, 0xC4}, {"128", "Version 1.0", "Layer III", "by CRC", "48000", "None", "Original", "None"}},
        {{0xFF, 0xFD, 0x58, 0x09}, {" 80", "Version 1.0", "Layer II", "None", "32000", "Yes", "Copy", "50/15 ms"}},
        {{0xFF, 0xFF, 0x6C, 0x0E}, {" 96", "Version 1.0", "Layer I", "None", "Reser.", "Yes", "Original", "Reserved"}},
        {{0xFF, 0xF9, 0x00, 0x03}, {"free", "Version 1.0", "Reserved", "None", "44100", "None", "Copy", "CCIT J17"}},
        {{0xFF, 0xF3, 0x80, 0xC4}, {"112", "Version 2.0", "Layer III", "None", "22050", "None", "Original", "None"}},
        {{0xFF, 0xF2, 0x84, 0x00}, {"112", "Version 2.0", "Layer III", "by CRC", "24000", "None", "Copy", "None"}},
        {{0xFF, 0xF3, 0x48, 0x00}, {" 56", "Version 2.0", "Layer III", "None", "16000", "None", "Copy", "None"}},
        {{0xFF, 0xE3, 0x40, 0x00}, {" 56", "Version 2.5", "Layer III", "None", "11025", "None", "Copy", "None"}},
        {{0xFF, 0xE3, 0x48, 0x00}, {" 56", "Version 2.5", "Layer III", "None", "8000", "None", "Copy", "None"}},
        // The reserved version reads its sample rate as version 1.0 does.
        {{0xFF, 0xEB, 0x44, 0x00}, {" 56", "Reserved", "Layer III", "None", "48000", "None", "Copy", "None"}},
    };
    for (const auto& [header, texts] : cases) {
        SCOPED_TRACE(texts.join(u',').toStdString());
        ASSERT_EQ(Analyse(Write(Song(header, 4000))).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(Texts(info), texts);
    }
}

TEST_F(FrameTest, TheChannelMarkRoundsB3Over64TiesToEven) {
    // B3 / 64: 2.5 and below is stereo, above it mono; dual channel with any
    // of the low bits set counts as mono.
    const std::pair<uint8_t, bool> marks[] = {{0x00, false}, {0x9F, false}, {0xA0, false},
                                               {0xA1, true},  {0xC0, true},  {0xFF, true}};
    for (auto [b3, mono] : marks) {
        SCOPED_TRACE(int(b3));
        EXPECT_EQ(Analyse(Write(Song({0xFF, 0xFB, 0x90, b3}, 4000))).Mono, mono);
        EXPECT_EQ(info.ChannelMark, mono ? u"M:" : u"S:");
    }
}

TEST_F(FrameTest, DurationIsTheWholeFileOverTheRowRateRoundedAndShownAsMinutesAndSeconds) {
    const std::tuple<uint8_t, qint64, int, const char*> cases[] = {
        {0x30, 6000000, 1000, "16:40"},  // "VBR" is timed at 6000 bytes a second
        {0x90, 16000 * 9 + 8000, 10, "0:10"},   // 9.5: up to the even 10
        {0x90, 3001, 0, "0:00"},
        {0x10, 131069999, 32767, "546:07"},  // the longest a 16-bit count holds
    };
    for (auto [b2, size, seconds, text] : cases) {
        SCOPED_TRACE(size);
        ASSERT_EQ(Analyse(WriteSparse({0xFF, 0xFB, b2, 0x00}, size)).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(info.FileBytes, size);
        EXPECT_EQ(info.DurationSeconds, seconds);
        EXPECT_EQ(info.DurationText, QString::fromLatin1(text));
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

// The scan's edges: files of 3000 bytes or less, a header found at 2998 but
// not at 2999, and a tag or text in front read from its first byte above 200.
// A failed scan keeps the earlier song's encoding and time.
TEST_F(FrameTest, TheScanTakesTheFirstByteAbove200UpToPosition2998InFilesOverThe3000) {
    QByteArray lead;  // bytes up to 200, as a header repair would leave untouched
    for (int i = 0; i < 2997; ++i) lead += char(i % 201);
    QByteArray v2("ID3\x03\x00\x00\x00\x00\x07\x76TIT2\x00\x00\x03\x70\x00\x00\x00", 20);
    v2 += QByteArray("A title in plain letters").leftJustified(1000, ' ');
    const Header h320{0xFF, 0xFB, 0xE0, 0x00};
    const std::tuple<QByteArray, const char*, const char*> rows[] = {  // no label: no frame
        {Song(h320, 0), nullptr, ""},
        {Song(h320, 3000), nullptr, ""},
        {Song(h320, 3001), "320", "S:"},
        {Song({0xFF, 0xFB, 0xB0, 0xC0}, 3001, lead), "192", "M:"},
        {Song({0xFF, 0xFB, 0xB0, 0xC0}, 10000, lead + '\x10'), nullptr, ""},
        {QByteArray(2999, char(200)) + QByteArray(5000, char(0xFF)), nullptr, ""},
        // An ID3v2 block of plain ASCII is passed over to the frame behind it.
        {Song({0xFF, 0xF3, 0x80, 0xC4}, 48000, v2), "112", "M:"},
    };
    for (const auto& [bytes, label, mark] : rows) {
        SCOPED_TRACE(bytes.size());
        AnalyseEarlierSong();
        const Mp3Analysis a = Analyse(Write(bytes));
        EXPECT_EQ(info.FileBytes, bytes.size());
        EXPECT_FALSE(a.SongFileMissing);
        if (!label) {
            EXPECT_EQ(a.outcome, Mp3Outcome::NoFrame);
            EXPECT_EQ(Texts(info), kUnknown);
            EXPECT_EQ(info.EncodingText + info.ChannelMark + info.DurationText, u"128M:0:10");
            continue;
        }
        EXPECT_EQ(a.outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(info.EncodingText, QString::fromLatin1(label));
        EXPECT_EQ(info.ChannelMark, QString::fromLatin1(mark));
    }
    // A tag in front whose text has an accented letter: "\xE9 de" is the header.
    ASSERT_EQ(Analyse(Write(Song({}, 3500, "TAGCaf\xE9 del Mar"))).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(Texts(info), QStringList({" 80", "Version 2.5", "Reserved", "by CRC", "12000", "None", "Original",
                                        "50/15 ms"}));
    EXPECT_EQ(info.ChannelMark, u"S:");
    // A blank path that is found is worked out as a zero header of no length.
    files.found = {true};
    EXPECT_EQ(Analyse(QStringLiteral("   ")).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(Texts(info), QStringList({"free", "Version 2.5", "Reserved", "by CRC", "11025", "None", "Copy", "None"}));
    EXPECT_EQ(info.FileBytes, 0);
}

TEST_F(FrameTest, OnlyTheGridAnalysersTakeTheOverrideSetTheMarkAndAskForTheSongLine) {
    const QString cell = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 4000), QStringLiteral("cell.mp3"));
    const QString other = Write(Song({0xFF, 0xFB, 0xE0, 0xC0}, 4000), QStringLiteral("other.mp3"));
    const QString shortFile = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 3000), QStringLiteral("short.mp3"));
    for (Mp3Caller caller : {Mp3Caller::GridSong, Mp3Caller::PlaylistSong, Mp3Caller::FileWindow, Mp3Caller::Editor}) {
        SCOPED_TRACE(int(caller));
        const bool grid = caller == Mp3Caller::GridSong || caller == Mp3Caller::PlaylistSong;
        Mp3AnalysisOptions o;
        o.caller = caller;
        o.CurrentCell = cell;
        o.ShowSongInfoLine = true;
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
    struct Case {
        Mp3Caller caller;
        int16_t playlistActive;
        bool inventory, flagged;
        int boxFlags;  // -1: no box
        const char* encoding;
    };
    const Case cases[] = {
        {Mp3Caller::GridSong, 0, false, true, vbOKOnly + vbExclamation, "128"},
        {Mp3Caller::FileWindow, 0, false, true, vbCritical, "128"},
        {Mp3Caller::GridSong, 1, true, true, -1, "128"},  // a running playlist wins over an inventory
        {Mp3Caller::FileWindow, 1, false, true, -1, "128"},
        {Mp3Caller::GridSong, 0, true, false, -1, "???"},
        {Mp3Caller::Editor, 1, true, true, vbCritical, "128"},  // the editor always tells
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(int(&c - cases));
        tp.messages.shown.clear();
        picturesHidden = 0;
        info.EncodingText = QStringLiteral("128");
        j.PlaylistActive = c.playlistActive;
        Mp3AnalysisOptions o;
        o.caller = c.caller;
        o.CurrentCell = gone;
        o.InventoryRun = c.inventory;
        const Mp3Analysis a = AnalyseMp3File(j, info, o);
        EXPECT_EQ(a.outcome, Mp3Outcome::Missing);
        EXPECT_EQ(a.SongFileMissing, c.flagged);
        EXPECT_EQ(info.EncodingText, QString::fromLatin1(c.encoding));
        EXPECT_EQ(tp.messages.shown.size(), c.boxFlags < 0 ? 0u : 1u);
        EXPECT_EQ(picturesHidden, c.boxFlags < 0 ? 0 : 1);
        if (c.boxFlags < 0 || tp.messages.shown.empty()) continue;
        EXPECT_EQ(tp.messages.shown[0].flags, c.boxFlags);
        EXPECT_EQ(tp.messages.shown[0].title + tp.messages.shown[0].text, "ZOR JUKEBOX" + english);
    }
    EXPECT_EQ(info.DurationText, u"0:10");  // the rest of the record is never touched

    j.PlaylistActive = 0;
    j.Language = QStringLiteral("0");
    tp.messages.shown.clear();
    Analyse(gone);
    ASSERT_EQ(tp.messages.shown.size(), 1u);
    EXPECT_EQ(tp.messages.shown[0].text,
              "ATTENTIE!\n\nDit Song-bestand zit niet / niet meer in  \nde eerder bepaalde directory! \n\n"
              "Dit kan worden gecorrigeerd door dit bestand  \n(opnieuw) aan de database toe te voegen.\n");
}

TEST_F(FrameTest, ADirectoryIsMissingAndAFileThatCantBeOpenedReachesTheCaller) {
    const Mp3Analysis a = Analyse(dir.path());
    EXPECT_EQ(a.outcome, Mp3Outcome::Missing);
    EXPECT_TRUE(a.SongFileMissing);

    QString locked = Write(Song({0xFF, 0xFB, 0x90, 0x00}, 4000), QStringLiteral("locked.mp3"));
    QFile::setPermissions(locked, QFileDevice::Permissions());
    // The superuser reads any file; a kernel file that refuses reading stands in.
    if (QFile(locked).open(QIODevice::ReadOnly)) locked = QStringLiteral("/sys/bus/pci/rescan");
    if (!QFileInfo(locked).isFile() || QFile(locked).open(QIODevice::ReadOnly))
        GTEST_SKIP() << "no file here that refuses to be read";
    EXPECT_EQ(ErrorOf([&] { Analyse(locked); }), 70);
}

TEST_F(FrameTest, TheFileWindowFailsTheAnalysisWhenTheFileGoesBeforeItIsOpened) {
    AnalyseEarlierSong();
    const QString path = Write(Song({0xFF, 0xFB, 0xE0, 0x00}, 4000));
    files.found = {true, false};
    const Mp3Analysis a = Analyse(path, Mp3Caller::FileWindow);
    EXPECT_EQ(a.outcome, Mp3Outcome::NoFrame);
    EXPECT_FALSE(a.SongFileMissing);
    EXPECT_TRUE(tp.messages.shown.empty());
    EXPECT_EQ(info.EncodingText, u"128");
    // The other callers look once.
    files.found = {true, false};
    EXPECT_EQ(Analyse(path, Mp3Caller::Editor).outcome, Mp3Outcome::Analysed);
}

// Only blanks are trimmed; the label keeps its blank.
TEST(SongInfoLine, ShowsTrimmedTitleAndArtistTheLabelWithItsBlankAndTheLength) {
    Mp3FrameInfo info;
    info.BitRateText = QStringLiteral(" 96");
    info.DurationText = QStringLiteral("3:05");
    EXPECT_EQ(SongInfoLine(QStringLiteral("\tA "), QStringLiteral("B  "), info, QStringLiteral("1")),
              u"> \tA - B,  96 kb/s.; Length: 3:05");
    EXPECT_EQ(SongInfoLine(QStringLiteral("A"), QStringLiteral("B"), info, QStringLiteral("0")),
              u"> A - B,  96 kb/s.; Duur: 3:05");
}

}  // namespace
}  // namespace zor
