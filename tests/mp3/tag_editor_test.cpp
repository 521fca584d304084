// The tag and record editor Form11: its clean-up rules on their own, and the
// window on the real main window, catalogue and song files.
#include "catalogue/ui/song_grid_view.h"
#include "mp3/id3_tag.h"
#include "mp3/tag_editor.h"
#include "mp3/ui/form11.h"
#include "mp3/ui/tag_editor_ops.h"
#include "platform/cp1252.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/song_bytes.h"

#include <QCheckBox>
#include <QListWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

TEST(TagEditorRules, CapitalsFollowBlanksAndBracketsOnlyAndUnderscoresBecomeBlanks) {
    const std::pair<const char*, const char*> cases[] = {
        {"mc_donald (live)", "Mc donald (Live)"}, {"the BEATLES", "The Beatles"}, {"X", "x"},
        {"abc_", "Abc_"}, {"a__b", "A  b"}, {"", ""}, {"rock'n'roll-HIT", "Rock'n'roll-hit"},
    };
    for (auto [in, out] : cases) EXPECT_EQ(CapitaliseWord(QString::fromUtf8(in)), QString::fromUtf8(out)) << in;
    // The score block keeps its case; the comment behind it is capitalised.
    EXPECT_EQ(CapitaliseWord(QStringLiteral("#5aB hello WORLD"), true), QStringLiteral("#5aB Hello World"));
    EXPECT_EQ(CapitaliseWord(QStringLiteral("#5aB hello WORLD")), QStringLiteral("#5ab Hello World"));

    EditorFields f{QStringLiteral("yesterday"), QStringLiteral("BEATLES"), QStringLiteral("help!"),
                   QStringLiteral("Made With LAME 3.90"), QStringLiteral("1965"), 13};
    CapitaliseWords(f);
    EXPECT_EQ(f, (EditorFields{QStringLiteral("Yesterday"), QStringLiteral("Beatles"), QStringLiteral("Help!"), QString(),
                               QStringLiteral("1965"), 13}));
    f.Comment = QStringLiteral("made with");  // nine characters: the user's own words
    CapitaliseWords(f);
    EXPECT_EQ(f.Comment, QStringLiteral("Made With"));
}

TEST(TagEditorRules, NamesComeFromArtistDashTitleFileNames) {
    struct Case {
        const char *path, *title, *artist;
    } const cases[] = {
        {"/music/Band - Song.mp3", "Song", "Band"},
        {"  C:\\Music\\Band - Song.mp3  ", "Song", "Band"},
        {"/music/Band-Song.mp3", "Song", "Ban"},  // without blanks the artist loses a letter
        {"/music/Song.mp3", "music/Song", "old artist"},  // no dash: the path is the title
        {"a.mp3", "old title", "old artist"},
        {"/-.mp3", "old title", "old artist"},
    };
    for (const Case& c : cases) {
        EditorFields f{QStringLiteral("old title"), QStringLiteral("old artist")};
        TakeNamesFromFile(QString::fromLatin1(c.path), f);
        EXPECT_EQ(f.Title, QString::fromLatin1(c.title)) << c.path;
        EXPECT_EQ(f.Artist, QString::fromLatin1(c.artist)) << c.path;
    }
}

TEST(TagEditorRules, TheYearGivesPlaceholderAlbumsTheirDecadeAndOldSongsOldies) {
    const std::tuple<const char*, const char*, const char*> albums[] = {
        {"", "1909", "Album"},          {"", "2020", "Album"},          {"ab", "1910", "The Tens"},
        {"the sixties", "1975", "The Seventies"}, {" MILLENNIUM ", "1955.4", "The Fifties"}, {"Oldies", "2019", "Millennium"},
        {"Greatest Hits", "1965", "Greatest Hits"}, {"   ", "abc", "Album"},   {"Title", "1999", "The Nineties"},
    };
    for (auto [album, year, out] : albums) {
        EditorFields f;
        f.Album = QString::fromLatin1(album), f.Year = QString::fromLatin1(year);
        AutoAlbum(f);
        EXPECT_EQ(f.Album, QString::fromLatin1(out)) << album << ' ' << year;
    }
    // 13 Pop, 11 Oldies, 12 Other, 17 Rock.
    const std::tuple<int, const char*, int> styles[] = {{13, "1965", 11}, {11, "1975", 13}, {17, "1965", 17}, {17, "1975", 17},
                                                        {12, "1969", 11}, {12, "1970", 13}, {13, "1909", 13}, {11, "1969", 11}};
    for (auto [style, year, out] : styles) {
        EditorFields f;
        f.Style = style, f.Year = QString::fromLatin1(year);
        AutoStyle(f);
        EXPECT_EQ(f.Style, out) << style << ' ' << year;
    }
    EXPECT_EQ(StyleToSave(0), 12);
    EXPECT_EQ(StyleToSave(-1), 12);
    EXPECT_EQ(StyleToSave(1), 1);
}

TEST(TagEditorRules, TheScoreBlockStandsInTheTagsCodePage) {
    const QString top = CommentBlock(10, 100, true);
    EXPECT_EQ(cp1252::Encode(top), QByteArray("#:\x94" "B "));
    EXPECT_EQ(CommentBlock(1, 0, false), QStringLiteral("#10A "));
    // A block that is there is replaced; otherwise the comment moves behind it.
    EXPECT_EQ(WithCommentBlock(QStringLiteral("#99A nice"), top), top + QStringLiteral("nice"));
    EXPECT_EQ(WithCommentBlock(QString(30, u'x'), top), top + QString(25, u'x'));
    // Read back as the scroll bars show it; a junk block stays in their ranges.
    CommentScore got;
    ASSERT_TRUE(ReadCommentBlock(top + QStringLiteral("nice"), got));
    EXPECT_EQ(std::tuple(got.score, got.reach, got.special), std::tuple(10, 100, true));
    ASSERT_TRUE(ReadCommentBlock(QString::fromUtf8("#ÿ/A"), got));
    EXPECT_EQ(std::tuple(got.score, got.reach, got.special), std::tuple(10, 0, false));
    EXPECT_FALSE(ReadCommentBlock(QStringLiteral("#1"), got));
}

TEST(TagEditorRules, LyricsAreFoundByFileNameThenWithoutBlanksAsSngAndPicturesByArtist) {
    QTemporaryDir dir;
    FileSystem fs;
    const QString d = dir.path();
    const QString song = QStringLiteral("C:\\Music\\Band - Tune.mp3");
    EXPECT_EQ(LyricsLookupName(song), QStringLiteral("Band - Tune"));
    EXPECT_EQ(VerifyLyricsLetter(fs, d, song), QStringLiteral("N"));
    WriteFileBytes(d + QStringLiteral("/Band-Tune.sng"), "la");
    EXPECT_EQ(VerifyLyricsLetter(fs, d, song), QStringLiteral("D"));
    WriteFileBytes(d + QStringLiteral("/Band - Tune.txt"), "la");
    EXPECT_EQ(VerifyLyricsLetter(fs, d, song), QStringLiteral("Y"));
    EXPECT_EQ(VerifyLyricsLetter(fs, d, QStringLiteral("/.mp3")), QStringLiteral("N"));
    EXPECT_EQ(VerifyPictureLetter(fs, d, QStringLiteral("Band")), QStringLiteral("N"));
    WriteFileBytes(d + QStringLiteral("/Band.jpg"), "jpg");
    EXPECT_EQ(VerifyPictureLetter(fs, d, QStringLiteral("Band")), QStringLiteral("Y"));
    EXPECT_EQ(VerifyPictureLetter(fs, d, QString()), QStringLiteral("N"));
}

QByteArray TagBytes(const char* title, const char* artist, const char* year, int style) {
    Id3TagRecord t;
    t.Tag = QStringLiteral("TAG"), t.Title = QString::fromLatin1(title), t.Artist = QString::fromLatin1(artist);
    t.Album = QString(), t.Year = QString::fromLatin1(year), t.Comment = QString(), t.Style = uint8_t(style);
    return EncodeId3Tag(t);
}

struct TagEditorTest : ::testing::Test {
    FormHarness h;
    QString dir, tagged, bare, gone;
    const QByteArray audio = SilentSong96(1);

    void SetUp() override {
        dir = h.inst.home + QStringLiteral("/music");
        tagged = dir + QStringLiteral("/the beatles - yesterday.mp3");
        bare = dir + QStringLiteral("/Band - Tune.mp3");
        gone = dir + QStringLiteral("/Gone - Away.mp3");
        ASSERT_TRUE(WriteFileBytes(tagged, audio + TagBytes("yesterday", "the beatles", "1965", 13)));
        ASSERT_TRUE(WriteFileBytes(bare, audio));
        SongFields a, b, c;
        a[0] = QStringLiteral("yesterday"), a[1] = QStringLiteral("the beatles"), a[5] = tagged;
        b[0] = QStringLiteral("tune"), b[1] = QStringLiteral("band"), b[5] = bare;
        c[0] = QStringLiteral("away"), c[1] = QStringLiteral("gone"), c[5] = gone;
        TestInstallation::AddSongs(catalogue(), {a, b, c});
        h.inst.EditSettings([](Settings& s) { s.SortAtStart = 0; });
        ASSERT_TRUE(h.Start());
    }
    QString catalogue() const { return h.inst.File(QStringLiteral("Mp3data1.mdb")); }
    Form11& Open(int row) {
        h.form().MFGrid1.SetRow(row);
        h.Click("Editor1");
        return *h.form().findChild<Form11*>(QStringLiteral("Form11"));
    }
    void ClickRow(int row) {
        SongGridView& view = *h.form().MFGrid1View;
        const QModelIndex i = view.model()->index(row - 1, 2);
        view.scrollTo(i);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(i).center());
    }
    Id3TagRecord TagOf(const QString& path) { return DecodeId3Tag(FileBytes(path).right(kId3TagBytes)); }
    SongGrid& grid() { return h.form().MFGrid1; }
};

// The road of an edit: the window, the tag in the file, the record, the
// grid's row, and the window opened on the row again.
TEST_F(TagEditorTest, AnEditLandsInTheTagTheRecordAndTheRowAndComesBackWithTheWindow) {
    Form11& w = Open(1);
    EXPECT_EQ(h.form().Text1->text(), tagged);
    EXPECT_EQ(w.Text41->text(), QStringLiteral("yesterday"));
    EXPECT_EQ(w.List5->currentRow(), 13);
    w.Text41->setText(QStringLiteral("Ωmega Señor, a title longer than thirty"));
    w.Text45->setText(QStringLiteral("1966"));
    w.List5->setCurrentRow(0);  // Blues can't be saved from here
    w.HScroll2->setValue(100);
    w.Command5->click();

    const QByteArray file = FileBytes(tagged);
    EXPECT_EQ(file.size(), audio.size() + kId3TagBytes);
    EXPECT_EQ(file.left(audio.size()), audio);
    const Id3TagRecord tag = TagOf(tagged);
    EXPECT_EQ(tag.Title.Text(), QStringLiteral("?mega Señor, a title longer th"));
    EXPECT_EQ(tag.Style, 12);
    EXPECT_EQ(file.right(31).left(5), QByteArray("#1\x94" "A "));  // score 1, reach 100
    const auto rows = TestInstallation::ReadSongs(catalogue());
    EXPECT_EQ(rows[0][0], QStringLiteral("Ωmega Señor, a title longer than thirty"));
    EXPECT_EQ(rows[0][3], QStringLiteral("1966"));
    EXPECT_EQ(rows[0][4], QStringLiteral("Other"));
    EXPECT_EQ(grid().TextMatrix(1, 1), rows[0][0]);
    EXPECT_EQ(grid().TextMatrix(1, 5), QStringLiteral("Other"));

    // A click on a row while the window shows reloads it; a song without
    // a tag shows the row's title and "Other".
    ClickRow(2);
    EXPECT_EQ(w.Text41->text(), QStringLiteral("tune"));
    EXPECT_EQ(w.List5->currentRow(), 12);
    w.Command11->click();
    EXPECT_FALSE(w.isVisible());
    ClickRow(1);
    EXPECT_EQ(w.Text41->text(), QStringLiteral("tune"));
    Open(1);
    EXPECT_EQ(w.Text41->text(), QStringLiteral("?mega Señor, a title longer th"));
    EXPECT_EQ(w.Text45->text(), QStringLiteral("1966"));
}

TEST_F(TagEditorTest, APlayingSongIsRefusedAndARowThatNoLongerMatchesItsRecordKeepsIt) {
    Form11& w = Open(1);
    w.Text41->setText(QStringLiteral("Changed"));
    h.j().engine.CurrentSongPath = tagged;
    h.j().PlayStopped = 0;
    w.Command5->click();
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].text, QStringLiteral("ATTENTION!\n\nThis Song is now playing!  \n"
                                                      "It is not possible to save changes to the ID3 TAG   \n"
                                                      "while this song is also playing. \n"));
    EXPECT_EQ(TagOf(tagged).Title.Trimmed(), QStringLiteral("yesterday"));
    EXPECT_EQ(grid().TextMatrix(1, 1), QStringLiteral("yesterday"));

    // The player idle, but the grid changed under the record: the tag and
    // the row take the edit, the record is left alone.
    h.j().PlayStopped = 1;
    grid().SetTextMatrix(1, 2, QStringLiteral("someone else"));
    w.Command5->click();
    EXPECT_EQ(TagOf(tagged).Title.Trimmed(), QStringLiteral("Changed"));
    EXPECT_EQ(grid().TextMatrix(1, 1), QStringLiteral("Changed"));
    EXPECT_EQ(TestInstallation::ReadSongs(catalogue())[0][0], QStringLiteral("yesterday"));
}

TEST_F(TagEditorTest, FilesTooShortForATagKeepTheirBytesAndTheRecordStillTakesTheEdit) {
    for (const QByteArray& bytes : {QByteArray(), QByteArray(127, 'x')}) {
        ASSERT_TRUE(WriteFileBytes(bare, bytes));
        Form11& w = Open(2);
        const QString artist = QStringLiteral("Band %1").arg(bytes.size());
        w.Text42->setText(artist);
        w.Command5->click();
        EXPECT_EQ(FileBytes(bare), bytes) << bytes.size();
        EXPECT_EQ(TestInstallation::ReadSongs(catalogue())[1][1], artist);
    }
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(TagEditorTest, AutoSaveComesNineTicksAfterTheLastChangeAndOnlyWhileNothingPlays) {
    h.j().settings.TagEditorChecks = {0, 0, 0, 1, 0, 0, 0};
    Form11& w = Open(1);
    w.Text41->setText(QStringLiteral("First"));
    for (int i = 0; i < 5; ++i) TagEditorTick(w);
    w.Text41->setText(QStringLiteral("Second"));  // the wait starts again
    for (int i = 0; i < 8; ++i) TagEditorTick(w);
    EXPECT_EQ(TagOf(tagged).Title.Trimmed(), QStringLiteral("yesterday"));
    TagEditorTick(w);
    EXPECT_EQ(TagOf(tagged).Title.Trimmed(), QStringLiteral("Second"));

    h.j().PlayStopped = 0;
    w.Text41->setText(QStringLiteral("Third"));
    for (int i = 0; i < 20; ++i) TagEditorTick(w);
    EXPECT_EQ(TagOf(tagged).Title.Trimmed(), QStringLiteral("Second"));
    EXPECT_EQ(w.state.SongEdited, 0);
    EXPECT_TRUE(h.boxes().shown.empty());

    // The boxes are the settings' fields and are read back at the next load.
    w.Checks[6]->click();
    EXPECT_EQ(h.j().settings.TagEditorChecks[6], 1);
    Open(1);
    EXPECT_TRUE(w.Checks[6]->isChecked());
}

TEST_F(TagEditorTest, TheCorrectionPassFixesEverySongItCanReachAndAStopEndsItWithoutABeep) {
    h.j().settings.TagEditorChecks = {0, 0, 0, 1, 1, 1, 1};
    Form11& w = Open(3);
    w.Command13->click();
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
    const Id3TagRecord tag = TagOf(tagged);
    EXPECT_EQ(tag.Title.Trimmed(), QStringLiteral("Yesterday"));
    EXPECT_EQ(tag.Artist.Trimmed(), QStringLiteral("Beatles"));  // "the " goes
    EXPECT_EQ(tag.Album.Trimmed(), QStringLiteral("The Sixties"));
    EXPECT_EQ(tag.Style, 11);
    EXPECT_EQ(TagOf(bare).Title.Trimmed(), QStringLiteral("Tune"));
    EXPECT_EQ(TagOf(bare).Album.Trimmed(), QStringLiteral("Album"));  // not the song before's
    const auto rows = TestInstallation::ReadSongs(catalogue());
    EXPECT_EQ(rows[0][1], QStringLiteral("Beatles"));
    EXPECT_EQ(rows[1][0], QStringLiteral("Tune"));
    EXPECT_EQ(rows[2][0], QStringLiteral("away"));  // its file is gone: passed over
    EXPECT_TRUE(h.boxes().shown.empty());
    // The window ends on the last song the pass reached, and a save from it
    // goes to that song.
    EXPECT_EQ(w.Text41->text(), QStringLiteral("Tune"));
    EXPECT_EQ(w.LoadedPath, bare);

    // Closed after the first row: the second keeps its tag and nobody beeps.
    ASSERT_TRUE(WriteFileBytes(bare, audio));
    h.inst.tp.events.onDoEvents = [&](int) { w.Command11->click(); };
    w.Command14->click();
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
    EXPECT_EQ(FileBytes(bare), audio);
    EXPECT_EQ(TagOf(tagged).Year.Trimmed(), QStringLiteral("1965"));
}

}  // namespace
}  // namespace zor::testing
