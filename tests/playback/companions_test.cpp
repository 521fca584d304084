// The lyrics and picture windows on a real main window, with lyrics and
// pictures in temporary directories: how each file is found, where the
// windows go, what keeps them away, and the lyrics and picture menus.
#include "playback/companion_files.h"
#include "playback/picture_fit.h"
#include "playback/ui/companion_forms.h"
#include "playback/ui/companions.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <set>

namespace zor::testing {
namespace {

TEST(CompanionNames, StemAndSaveNameAtTheirEdges) {
    EXPECT_EQ(SongFileStem(u"C:\\MP3\\abc.mp3"), QStringLiteral("abc."));
    EXPECT_EQ(SongFileStem(u"D:a.b"), QStringLiteral("a.b"));  // three letters stay whole
    EXPECT_EQ(LyricsSaveName(u"/music/noext"), QStringLiteral("no.txt"));
    EXPECT_EQ(LyricsSaveName(u" a.b "), QString());  // blanks, as a .zpl field pads it, don't count
}

TEST(PictureFit, FillsOneWayKeepsProportionsCentresTheOther) {
    EXPECT_EQ(FitPictureRect({200, 100}, {100, 100}), QRect(0, 25, 100, 50));
    EXPECT_EQ(FitPictureRect({100, 400}, {300, 200}), QRect(125, 0, 50, 200));
    EXPECT_EQ(FitPictureRect({30, 20}, {600, 400}), QRect(0, 0, 600, 400));
    EXPECT_EQ(FitPictureRect({0, 20}, {600, 400}), QRect());
    EXPECT_EQ(TrueSizeRect({30, 20}, {600, 400}), QRect(285, 190, 30, 20));
    // A picture that isn't one draws nothing and costs nothing.
    EXPECT_TRUE(RenderPicture(QImage(), {50, 40}, Qt::black, false).size() == QSize(50, 40));
}

SongFields Song(const QString& title, const QString& artist, const QString& album, const QString& path,
                const QString& lyricsCell = QStringLiteral(" N")) {
    return {title, artist, album, "", "", path, "", lyricsCell};
}

struct CompanionsTest : FormTest {
    QString Dir(const char* name) {
        const QString dir = h.inst.home + QStringLiteral("/c/") + QLatin1String(name);
        QDir().mkpath(dir);
        return dir;
    }
    const QString lyricsDir = Dir("lyr"), picturesDir = Dir("pic"), coversDir = Dir("cov"), backsDir = Dir("back");
    void Start(const std::vector<SongFields>& songs, bool artistic = false) {
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), songs);
        h.inst.EditSettings([&](Settings& s) {
            s.SortAtStart = 0;
            s.LyricsPath = lyricsDir;
            s.PicturesPath = picturesDir;
            s.AlbumCoverPath = coversDir;
            s.AlbumBackPath = backsDir;
            s.ShowLyricsAtPlay = s.ShowPictureAtPlay = s.ShowAlbumCover = s.ShowAlbumBack = 1;
            s.RandomPictures = s.MaximizePicture = 0;
            s.ArtisticScreen = artistic ? 1 : 0;
        });
        ASSERT_TRUE(h.Start());
    }
    SongGrid& grid() { return f().MFGrid1; }
    LyricsForm& form3() { return f().companions->Form3(); }
    ArtistPictureForm& form4() { return f().companions->Form4(); }
    static void Write(const QString& path, const QByteArray& bytes) { ASSERT_TRUE(WriteFileBytes(path, bytes)); }
    // A picture told apart from the others by its size.
    static void Picture(const QString& path, int width) {
        QImage image(width, 10, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        ASSERT_TRUE(image.save(path));
    }
    QString ShownLyrics() { return form3().Face()->toPlainText(); }
    void LyricsOfRow(int row) {
        grid().SetRow(row);
        ShowLyrics(f(), grid());
    }
    // The artist picture shown for `row`, by its width; 0 when none comes.
    int ArtistPicture(int row) {
        grid().SetRow(row);
        form4().PicClip1 = QImage();
        ShowArtistPicture(f(), grid());
        return form4().isVisible() ? form4().PicClip1.width() : 0;
    }
};

TEST_F(CompanionsTest, LyricsAreFoundByTheirCellThenTheSongFileThenTheTitle) {
    Write(lyricsDir + QStringLiteral("/Let It Be.lrc"), "When I find myself\r\nin times of trouble\r\n");
    Write(lyricsDir + QStringLiteral("/Let It Be.txt"), "second hit, never shown");
    Write(lyricsDir + QStringLiteral("/BridgeOv.sng"), "When you're weary");
    Write(h.inst.home + QStringLiteral("/own.txt"), "Caf\xE9 line one\r\ntwo\r\nthree\r\n");
    Start({Song("Let It Be", "The Beatles", "Let It Be", "/music/Let It Be.mp3", " Y"),
           Song("Bridge Over Troubled Water", "S&G", "", "/music/bridge.mp3"),
           Song("Anything", "X", "", "/music/x.mp3", h.inst.home + QStringLiteral("/own.txt")),
           Song("Gone", "X", "", "/music/gone.mp3", h.inst.home + QStringLiteral("/missing.txt"))});
    // A two-letter mark in the Lyrics cell falls through to the song file's
    // name with any extension, and only the first hit counts.
    LyricsOfRow(1);
    EXPECT_TRUE(form3().isVisible());
    EXPECT_EQ(ShownLyrics(), QStringLiteral("When I find myself\nin times of trouble\n"));
    EXPECT_EQ(form3().Text2->toPlainText(), form3().Text1->toPlainText());
    EXPECT_EQ(j().companion.LyricsLineCount, 2);
    // No file by the song file's name: the title's first eight letters, blanks not counted.
    LyricsOfRow(2);
    EXPECT_EQ(ShownLyrics(), QStringLiteral("When you're weary"));
    EXPECT_EQ(j().companion.LyricsLineCount, 0);
    // A longer Lyrics cell is the file itself, read in the Windows code page.
    LyricsOfRow(3);
    EXPECT_EQ(ShownLyrics(), QStringLiteral("Café line one\ntwo\nthree\n"));
    EXPECT_EQ(j().companion.LyricsLineCount, 3);
    // ... and when that file is gone there is no other search: nothing new shows.
    form3().hide();
    LyricsOfRow(4);
    EXPECT_FALSE(form3().isVisible());
    EXPECT_EQ(j().companion.LyricsLineCount, 0);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(CompanionsTest, ABinaryOrHugeLyricsFileNeitherHangsNorFloodsTheWindow) {
    Write(lyricsDir + QStringLiteral("/song.mp3"), QByteArray("ID3\x03\0\0\0\0", 8) + QByteArray(4000, '\xFF'));
    QByteArray huge;
    while (huge.size() < 3 * kMaxLyricsBytes) huge += "la la la la la la la la\r\n";
    Write(lyricsDir + QStringLiteral("/Long.sng"), huge);
    Start({Song("Sound", "A", "", "/music/song.mp3"), Song("Long", "B", "", "/m/long.mp3")});
    LyricsOfRow(1);
    EXPECT_FALSE(form3().isVisible());
    EXPECT_EQ(j().companion.LyricsLineCount, 0);
    LyricsOfRow(2);
    EXPECT_TRUE(form3().isVisible());
    EXPECT_LE(ShownLyrics().size(), kMaxLyricsBytes);
    EXPECT_EQ(j().companion.LyricsLineCount, kMaxLyricsBytes / 25);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(CompanionsTest, LyricsStandInTheLeftHalfCheck1WidensThemAndTheBoxesStopAtTheMinimum) {
    Write(lyricsDir + QStringLiteral("/s.sng"), "text");
    Start({Song("s", "A", "", "/m/s.mp3")});
    LyricsOfRow(1);
    // A 1280 x 800 screen in the normal skin.
    EXPECT_EQ(form3().geometry(), QRect(10, 152, 630, 595));
    EXPECT_TRUE(form3().Text1->isVisible());
    EXPECT_FALSE(form3().Text2->isVisible() || form3().Command1->isVisible());
    form3().Check1->click();
    EXPECT_EQ(form3().width(), 1280 - 38);
    form3().Check1->click();
    EXPECT_EQ(form3().width(), 630);
    // The text boxes follow the window, but not below 1000 twips.
    form3().resize(300, 200);
    EXPECT_EQ(form3().Text1->size(), QSize(283, 183));
    form3().resize(60, 200);
    EXPECT_EQ(form3().Text1->size(), QSize(283, 183));
}

TEST_F(CompanionsTest, TheArtisticSkinShowsText2FromTheLeftEdge) {
    Write(lyricsDir + QStringLiteral("/s.sng"), "text");
    Picture(picturesDir + QStringLiteral("/A.jpg"), 30);
    Start({Song("s", "A", "", "/m/s.mp3")}, true);
    LyricsOfRow(1);
    EXPECT_EQ(form3().geometry(), QRect(0, 171, 650, 565));
    EXPECT_TRUE(form3().Text2->isVisible() && !form3().Text1->isVisible());
    ShowArtistPicture(f(), grid());
    EXPECT_EQ(form4().geometry(), QRect(640, 171, 640, 565));
}

TEST_F(CompanionsTest, ThePlainTurnSkipsGapsAndNeverShowsTenOrAbove) {
    for (auto [name, width] : {std::pair{"ABBA2.jpg", 22}, {"ABBA5.bmp", 55}, {"ABBA10.jpg", 100}, {"One1.jpg", 11},
                               {"Nine9.jpg", 9}, {"Nine10.jpg", 100}})
        Picture(picturesDir + u'/' + QString::fromLatin1(name), width);
    Start({Song("Waterloo", "ABBA", "", "/m/w.mp3"), Song("x", "One", "", "/m/x.mp3"),
           Song("y", "Nine", "", "/m/y.mp3")});
    EXPECT_EQ(ArtistPicture(1), 22);  // after two misses: no name alone, no 1
    EXPECT_EQ(form4().geometry(), QRect(640, 152, 615, 595));
    EXPECT_EQ(j().companion.PictureNumber, 3);
    EXPECT_EQ(ArtistPicture(1), 55);
    EXPECT_EQ(ArtistPicture(1), 0);  // 6 to 9 are missing: the turn ends
    EXPECT_EQ(j().companion.PictureNumber, 0);
    EXPECT_EQ(ArtistPicture(1), 22);
    // The name with 1 counts in the plain turn.
    j().companion.PictureNumber = 0;
    EXPECT_EQ(ArtistPicture(2), 11);
    // After the 9 the turn starts over; the 10 never comes.
    EXPECT_EQ(ArtistPicture(3), 9);
    EXPECT_EQ(ArtistPicture(3), 9);
}

TEST_F(CompanionsTest, TheRandomDrawKeepsToTheUnbrokenSeriesCountedOncePerSong) {
    for (auto [name, width] :
         {std::pair{"Queen.jpg", 10}, {"Queen2.jpg", 20}, {"Queen3.bmp", 30}, {"Queen5.jpg", 50}, {"Solo.jpg", 7}})
        Picture(picturesDir + u'/' + QString::fromLatin1(name), width);
    Start({Song("a", "Queen", "", "/m/a.mp3"), Song("b", "Solo", "", "/m/b.mp3")});
    j().settings.RandomPictures = 1;
    auto draws = [&] {
        std::set<int> seen;
        for (int i = 0; i < 40; ++i) {
            h.inst.tp.clock.Advance(1);
            seen.insert(ArtistPicture(1));
        }
        return seen;
    };
    EXPECT_EQ(draws(), (std::set<int>{10, 20, 30}));
    // A new picture joins the series once the next song counts again.
    Picture(picturesDir + QStringLiteral("/Queen4.jpg"), 40);
    EXPECT_EQ(draws(), (std::set<int>{10, 20, 30}));
    ClearRandomPictureFlag(f());
    EXPECT_EQ(draws(), (std::set<int>{10, 20, 30, 40, 50}));
    // The picture without a number alone: shown at once, nothing drawn.
    ClearRandomPictureFlag(f());
    const uint32_t seed = f().companions->PictureRandom.Seed();
    EXPECT_EQ(ArtistPicture(2), 7);
    EXPECT_EQ(f().companions->PictureRandom.Seed(), seed);
}

TEST_F(CompanionsTest, AnAlbumBackThatIsNoPictureIsMissingAndEditsTheMixerAndSettingsKeepTheWindowsAway) {
    Write(lyricsDir + QStringLiteral("/s.sng"), "text");
    Picture(picturesDir + QStringLiteral("/A.jpg"), 30);
    Picture(coversDir + QStringLiteral("/Abbey Road.bmp"), 33);
    Write(backsDir + QStringLiteral("/Abbey Road.jpg"), "this is no picture");
    Start({Song("s", "A", "  Abbey Road ", "/m/s.mp3")});
    grid().SetRow(1);
    ShowAlbumCover(f(), grid());
    EXPECT_EQ(f().companions->Form18().PicClip1.width(), 33);
    EXPECT_EQ(j().companion.PictureMissing, 0);
    // A file that is no picture counts as missing, without a box.
    ShowAlbumBack(f(), grid());
    EXPECT_FALSE(CompanionVisible(f(), 19));
    EXPECT_EQ(j().companion.PictureMissing, 1);
    EXPECT_TRUE(h.boxes().shown.empty());
    // Which of the lyrics, artist picture and album cover come up.
    auto shows = [&] {
        f().companions->HideAll();
        j().companion.PictureNumber = 0;
        ShowLyrics(f(), grid());
        ShowArtistPicture(f(), grid());
        ShowAlbumCover(f(), grid());
        return QString::number(CompanionVisible(f(), 3)) + QString::number(CompanionVisible(f(), 4)) +
               QString::number(CompanionVisible(f(), 18));
    };
    EXPECT_EQ(shows(), u"111");
    j().companion.LyricsEditing = 1;
    EXPECT_EQ(shows(), u"100");
    j().companion.LyricsEditing = 0;
    j().engine.MixerOpen = 1;
    EXPECT_EQ(shows(), u"100");
    j().engine.MixerOpen = 0;
    j().companion.ScrollHold = 1;
    EXPECT_EQ(shows(), u"000");
    // Lyr1 and Pict3 let go of the hold: the user asks for them.
    h.Click("Lyr1");
    h.Click("Pict3");
    EXPECT_TRUE(CompanionVisible(f(), 3) && CompanionVisible(f(), 4));
    j().settings.ShowLyricsAtPlay = j().settings.ShowPictureAtPlay = 0;
    EXPECT_EQ(shows(), u"000");
    j().settings.ShowLyricsAtPlay = j().settings.ShowPictureAtPlay = 1;
    f().setWindowState(Qt::WindowMinimized);
    EXPECT_EQ(shows(), u"000");
}

TEST_F(CompanionsTest, AKeyInTheLyricsTakesOverUnlessTheUserIsEditing) {
    Write(lyricsDir + QStringLiteral("/s.sng"), "one\ntwo\nthree\nfour");
    Picture(picturesDir + QStringLiteral("/A.jpg"), 30);
    Picture(backsDir + QStringLiteral("/B.jpg"), 30);
    Start({Song("s", "A", "B", "/m/s.mp3")});
    LyricsOfRow(1);
    ShowArtistPicture(f(), grid());
    ShowAlbumBack(f(), grid());
    QTest::keyClick(form3().Text1, Qt::Key_Down);  // moving through the text is no take-over
    EXPECT_EQ(j().companion.ScrollHold, 0);
    QTest::keyClick(form3().Text1, Qt::Key_X);
    EXPECT_EQ(j().companion.ScrollHold, 1);
    for (int n : {3, 4, 19}) EXPECT_FALSE(CompanionVisible(f(), n)) << n;
    EXPECT_EQ(ShownLyrics(), QStringLiteral("one\ntwo\nthree\nfour"));
    // Scrolling moves the caret one line at a time.
    ShowLyricsWindow(f());
    form3().Text1->moveCursor(QTextCursor::Start);
    ScrollLyricsDown(f());
    EXPECT_EQ(form3().Text1->textCursor().blockNumber(), 1);
    // While editing the keys type, and only the album windows go.
    j().companion.ScrollHold = 0;
    ShowAlbumBack(f(), grid());
    h.Click("Edit3");
    QTest::keyClicks(form3().Text1, "!");
    EXPECT_EQ(j().companion.ScrollHold, 1);
    EXPECT_TRUE(CompanionVisible(f(), 3) && !CompanionVisible(f(), 19));
    EXPECT_TRUE(form3().Text1->toPlainText().contains(u'!'));
}

TEST_F(CompanionsTest, NewLyricsAreSavedUnderTheSongFileNameAndAGoneDirectoryIsReported) {
    Start({Song("Let It Be", "The Beatles", "", "/music/Let It Be.mp3"), Song("x", "y", "", "/a")});
    grid().SetRow(1);
    h.Click("Edit2");
    EXPECT_TRUE(form3().isVisible() && form3().Command1->isVisible());
    EXPECT_EQ(j().companion.LyricsEditing, 1);
    form3().Text1->setPlainText(QStringLiteral("Mother Mary\ncomes to me €"));
    form3().Command1->click();
    const QString saved = lyricsDir + QStringLiteral("/Let It Be.txt");
    EXPECT_EQ(FileBytes(saved), QByteArray("Mother Mary\r\ncomes to me \x80\r\n"));
    EXPECT_EQ(j().companion.LyricsEditing, 0);
    h.Click("Lyr6");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Mother Mary\ncomes to me €"));
    // Save As through the dialog; Cancel writes nothing.
    const QString other = h.inst.home + QStringLiteral("/other.txt");
    h.inst.tp.dialog.names = {other, QString()};
    h.Click("Lyr3");
    h.Click("Lyr3");
    EXPECT_EQ(QDir(h.inst.home).entryList({QStringLiteral("*.txt")}), QStringList{QStringLiteral("other.txt")});
    // A path of under four characters writes nothing, and an empty window
    // never blanks a saved text.
    grid().SetRow(2);
    h.Click("Lyr2");
    EXPECT_EQ(QDir(lyricsDir).entryList(QDir::Files), QStringList({"Let It Be.txt"}));
    grid().SetRow(1);
    h.Click("Edit2");
    h.Click("Lyr2");
    EXPECT_EQ(QFileInfo(saved).size(), 28);
    // A lyrics directory that is gone is reported, and the edit stays open.
    form3().Text1->setPlainText(QStringLiteral("keep me"));
    QDir(lyricsDir).removeRecursively();
    h.Click("Edit3");
    h.Click("Lyr2");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error '76':")));
    EXPECT_EQ(j().companion.LyricsEditing, 1);
}

TEST_F(CompanionsTest, ThePictureListMaximizesShowsTrueSizeAndHides) {
    Picture(picturesDir + QStringLiteral("/A.bmp"), 30);
    Start({Song("s", "A", "", "/m/s.mp3")});
    EXPECT_EQ(ArtistPicture(1), 30);
    auto choose = [&](int entry) {
        QTest::mouseClick(form4().Picture1, Qt::LeftButton);
        QListWidget* list = form4().List1;
        ASSERT_TRUE(list->isVisible());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(entry)).center());
        EXPECT_FALSE(list->isVisible());
    };
    auto cyanAt = [&](int x) { return form4().Picture1->pixmap().toImage().pixelColor(x, 400) == QColor(Qt::darkCyan); };
    choose(ArtistPictureForm::Maximize);
    EXPECT_EQ(form4().geometry(), QRect(0, 0, 1280, 800));
    EXPECT_EQ(j().settings.MaximizePicture, 1);
    EXPECT_TRUE(cyanAt(2));  // fitted: the 30 x 10 picture fills the full width
    choose(ArtistPictureForm::TrueSizeEntry);
    EXPECT_EQ(j().companion.TrueSizePicture, 1);
    EXPECT_FALSE(cyanAt(2));
    EXPECT_TRUE(cyanAt(640));
    choose(ArtistPictureForm::Normal);
    EXPECT_EQ(j().companion.TrueSizePicture, 0);
    EXPECT_EQ(j().settings.MaximizePicture, 0);
    choose(ArtistPictureForm::Hide);
    EXPECT_FALSE(form4().isVisible());
}

TEST_F(CompanionsTest, TheSeamHidesAllFourAndFollowsANewMainWindow) {
    Picture(h.inst.File(QStringLiteral("ZORjuke1.jpg")), 40);
    Start({});
    // The start picture: nearly the full width in the normal skin.
    j().ShowStartPicture();
    EXPECT_TRUE(form4().isVisible());
    EXPECT_EQ(form4().geometry(), QRect(10, 152, 1260, 610));
    EXPECT_EQ(CompanionWidthTwips(f(), 4), 1260 * 15);
    form3().show();
    f().companions->Form18().show();
    j().HidePictureForms();
    for (int n : {3, 4, 18, 19}) EXPECT_FALSE(CompanionVisible(f(), n)) << n;
    // A reload makes new windows before the old ones go; the old ones
    // leave the new seam in place.
    auto old = std::move(f().companions);
    f().companions = std::make_unique<Companions>(f());
    old.reset();
    ASSERT_TRUE(j().HidePictureForms);
    form3().show();
    j().HidePictureForms();
    EXPECT_FALSE(form3().isVisible());
}

}  // namespace
}  // namespace zor::testing
