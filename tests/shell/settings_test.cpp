// The settings record and ZORjuke.ini: the byte layout other installations'
// files have, damaged files, and the rule that the jukebox never makes the
// file itself. That any record reads and writes back byte for byte, and that
// a save leaves a longer file's tail, settings_fuzz.cpp shows.
#include "platform/cp1252.h"
#include "platform/testing/test_installation.h"
#include "shell/jukebox.h"
#include "shell/settings.h"
#include "shell/settings_file.h"
#include "tests/support/disk_files.h"

#include <QtEndian>

#include <limits>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

int16_t I16(const QByteArray& b, int at) { return qFromLittleEndian<int16_t>(b.constData() + at); }
int32_t I32(const QByteArray& b, int at) { return qFromLittleEndian<int32_t>(b.constData() + at); }

constexpr int T = 384;  // the byte after the third font name, when each is "Arial"

TEST(SettingsRecord, FieldsSitAtTheirFileOffsets) {
    Settings s;
    s.SortAtStart = 0x0102;
    s.SortAtStartName = "Nothing";
    s.Spare3 = "S3";
    s.ExtraExtension1 = "ogg";
    s.ExtraExtension3 = "flac";  // three bytes: "fla"
    s.GridFontName = s.LyricsFontName = s.PrinterFontName = "Arial";
    s.GridFontSize = 10.5;
    s.PrinterFontStrikeout = -1;
    s.PrintColumnWidth[11] = 12;
    s.Reserved1 = {'a', 'b', 'c', 'd'};
    s.ArtistDirsPath = "/a";
    s.PrintColours[11].Spare = -2;
    s.DjVoice = 10;

    const QByteArray b = EncodeSettings(s);
    ASSERT_EQ(b.size(), 1128);
    EXPECT_EQ(I16(b, 0), 0x0102);
    EXPECT_EQ(b.mid(2, 10), "Nothing   ");
    EXPECT_EQ(b.mid(286, 3), "S3 ");
    EXPECT_EQ(b.mid(354, 9), "ogg   fla");
    EXPECT_EQ(I16(b, 363), 5);
    EXPECT_EQ(b.mid(365, 5), "Arial");
    EXPECT_EQ(qFromLittleEndian<double>(b.constData() + T), 10.5);
    EXPECT_EQ(I16(b, T + 46), -1);
    EXPECT_EQ(I16(b, T + 162), 12);
    EXPECT_EQ(b.mid(T + 164, 12), "abcd        ");
    EXPECT_EQ(b.mid(T + 480, 2), "/a");
    EXPECT_EQ(I16(b, T + 666), -2);
    EXPECT_EQ(I16(b, T + 690), 10);

    // Only the font names move the rest: 1107 bytes, the names and their
    // three length words, which count bytes of the code page.
    s.GridFontName = s.PrinterFontName = QString();
    s.LyricsFontName = "Äpfel €字";
    const QByteArray n = EncodeSettings(s);
    EXPECT_EQ(n.size(), 1107 + 6 + 8);
    EXPECT_EQ(I16(n, 365), 8);
    EXPECT_EQ(n.mid(367, 8), "\xC4pfel \x80?");
}

struct SettingsFileTest : ::testing::Test {
    TestInstallation inst;
    Jukebox j{inst.tp.platform};
    QString ini = inst.File("ZORjuke.ini");
    SettingsFileTest() { j.ProgramDir = inst.programDir; }
};

// No size test exists: a damaged file is read as far as it goes, and each
// field the bytes don't reach whole keeps what it held.
TEST_F(SettingsFileTest, LoadTakesWhatTheFileHoldsAndKeepsTheRest) {
    Settings file = inst.ReadSettings();
    file.WinampPath = "/from/file";
    file.MusicMatchPath = "/also/from/file";
    file.Language = 0;
    Settings mine;
    ApplyFirstUseDefaults(mine);
    QByteArray bad = EncodeSettings(file);
    bad[363] = bad[364] = char(0xFF);  // a first font name claiming 65535 bytes
    struct Damage { const char* what; QByteArray bytes; };
    for (const Damage& d : {Damage{"empty", {}}, Damage{"cut inside MusicMatchPath", EncodeSettings(file).left(100)},
                            Damage{"font name too long", bad}}) {
        SCOPED_TRACE(d.what);
        ASSERT_TRUE(WriteFileBytes(ini, d.bytes));
        j.settings = mine;
        EXPECT_TRUE(LoadSettings(j));
        // The old font names are let go first; a field is taken whole or not at all.
        EXPECT_TRUE(j.settings.GridFontName.isEmpty() && j.settings.LyricsFontName.isEmpty());
        EXPECT_EQ(j.settings.WinampPath, d.bytes.size() >= 86 ? file.WinampPath : mine.WinampPath);
        EXPECT_EQ(j.settings.MusicMatchPath, d.bytes.size() >= 136 ? file.MusicMatchPath : mine.MusicMatchPath);
        EXPECT_EQ(j.settings.Language, 1);
        EXPECT_FALSE(j.platform.files.IsHeldOpen(ini));
    }
    EXPECT_EQ(j.settings.ExtraExtension1, file.ExtraExtension1);

    QFile::remove(ini);
    j.settings.IntroSeconds = 7;
    EXPECT_FALSE(LoadSettings(j));
    EXPECT_EQ(j.settings.IntroSeconds, 7);
}

TEST_F(SettingsFileTest, AFullSaveWritesTheWidthsAndTheStampButNoSaveMakesTheFile) {
    j.settings = inst.ReadSettings();
    std::array<int, 13> grid{}, playlist{};
    for (int c = 0; c < 13; ++c) grid[c] = 100 * c + 15, playlist[c] = 3000 - c;
    SaveAllSettings(j, grid, playlist);
    const QByteArray b = FileBytes(ini);
    for (int c = 0; c < 13; ++c) {
        EXPECT_EQ(I32(b, T + 60 + 4 * c), grid[c]);
        EXPECT_EQ(I32(b, T + 692 + 4 * c), playlist[c]);
    }
    EXPECT_EQ(b.mid(T + 176, 50), cp1252::Encode(AuthorStampText().left(50)));
    EXPECT_EQ(I16(b, T + 226), 1);  // the stamp stops at its 50 bytes: the next field is untouched

    QFile::remove(ini);
    SaveSettings(j);
    SaveAllSettings(j, grid, playlist);
    EXPECT_FALSE(QFile::exists(ini));
}

// The defaults button leaves the print layout to other screens; first use
// keeps the fields it has no default for. Default paths stay as written,
// drive letter and all, whoever made the record: the record is the same bytes
// everywhere, and the longest default is not cut.
TEST(SettingsDefaults, FirstUseAndTheDefaultsButtonDifferWhereIntended) {
    Settings s;
    s.ShowFirst = 9;
    s.Spare2 = "junk";
    ApplyFirstUseDefaults(s);
    EXPECT_EQ(s.ShowFirst, 9);
    EXPECT_EQ(s.Spare2.Trimmed(), QString());
    EXPECT_EQ(s.PicturesPath.Trimmed(), "C:\\Pictures");
    EXPECT_EQ(EncodeSettings(s).mid(86, 50), cp1252::Field("C:\\Program Files\\MusicMatch Jukebox 3\\MMJB.exe", 50));
    s.PrintTotalWidth = 60;
    ApplyCommand2Defaults(s);
    EXPECT_EQ(s.ShowFirst, 0);
    EXPECT_EQ(s.PicturesPath.Trimmed(), "C:\\Artists");
    EXPECT_EQ(s.PrintTotalWidth, 60);
}

// A path the user sets is stored as given when it fits its 50 bytes; one
// that doesn't, or that the code page can't hold, is refused in the user's
// language and the field keeps its path: a cut one would name another place.
TEST_F(SettingsFileTest, AUserPathThatCannotFitIsRefusedNeverCut) {
    j.settings.LyricsPath = "C:\\Lyrics";
    const QString fits = "/home/" + QString(44, u'x');  // exactly 50 bytes
    EXPECT_TRUE(StoreUserPath(j, j.settings.LyricsPath, fits));
    EXPECT_EQ(j.settings.LyricsPath.Text(), fits);
    EXPECT_TRUE(inst.tp.messages.shown.empty());

    struct Refusal { const char* language; QString path; const char* line; };
    const QString long51 = fits + "y";
    for (const Refusal& r : {Refusal{"1", long51, "This path is too long for the settings (at most 50 characters):"},
                             Refusal{"0", "/home/\u5B57", "Dit pad bevat tekens die de instellingen niet kunnen bewaren:"}}) {
        SCOPED_TRACE(r.line);
        j.Language = r.language;
        inst.tp.messages.shown.clear();
        EXPECT_FALSE(StoreUserPath(j, j.settings.LyricsPath, r.path));
        EXPECT_EQ(j.settings.LyricsPath.Text(), fits);
        ASSERT_EQ(inst.tp.messages.shown.size(), 1u);
        const auto& box = inst.tp.messages.shown[0];
        EXPECT_EQ(box.flags, vbExclamation);
        EXPECT_TRUE(box.text.startsWith(QString(r.language == QStringLiteral("0") ? "ATTENTIE!" : "ATTENTION!") + "\n\n" +
                                        r.line + "\n" + r.path + "\n"))
            << box.text.toStdString();
    }
}

// Start-up takes what a record holds but the program can't use as the
// nearest usable value; what is usable stays as it is. The ranges' ends, the
// widths and a blank font name are tested with the window at start-up; here
// a size that is no number, a size below the smallest, and a colour.
TEST(SettingsRecord, UnusableValuesBecomeTheNearestUsableOnes) {
    Settings s, usable;
    ApplyFirstUseDefaults(s);
    MakeSettingsUsable(usable = s);
    EXPECT_EQ(EncodeSettings(usable), EncodeSettings(s));

    s.GridFontSize = std::numeric_limits<double>::quiet_NaN();
    s.PrinterFontSize = -8;
    s.LyricsFontColour = -1;
    MakeSettingsUsable(s);
    EXPECT_EQ(s.GridFontSize, 10);
    EXPECT_EQ(s.PrinterFontSize, 4);
    EXPECT_EQ(s.LyricsFontColour, 0xFFFFFF);
}

}  // namespace
}  // namespace zor::testing
