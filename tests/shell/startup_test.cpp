// Start-up, the empty-catalogue notice, the ways out and the reloads for a
// new skin or language, driven through the real main window on a temporary
// installation.
#include "playback/play_log.h"
#include "shell/ui/path_selector.h"
#include "shell/ui/startup.h"
#include "catalogue/ui/song_grid_view.h"
#include "platform/runtime_error.h"
#include "playback/ui/companion_forms.h"
#include "playback/ui/companions.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QMouseEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QMenu>
#include <QTest>

#include <functional>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

int NoticesShown(FormHarness& h) {
    int n = 0;
    for (const auto& b : h.boxes().shown) n += b.text.contains("DATABASE IS EMPTY") || b.text.contains("DATABASE IS LEEG");
    return n;
}

// Timer1's count starts at 75 and a check comes when it passes 100, so the
// checks fall on ticks 26, 127, 228, …; none is made while the path
// selector is open, and the notice comes once.
TEST(StartUp, EmptyCatalogueOpensAndTheNoticeComesOnceAtACheckWithTheSelectorClosed) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    Form1& f = h.form();
    EXPECT_EQ(h.j().SongCount, 0);
    EXPECT_EQ(f.Text1->text(), "There are no songs in the Database! -> Please press ADD to fill the database now.");
    EXPECT_EQ(f.MessageColour(), kYellow);
    EXPECT_EQ(f.MFGrid1.Rows(), 1);

    h.Tick(25);
    f.Frame3->show();
    h.Tick(1 + 101);
    f.Frame3->hide();
    h.Tick(100);
    EXPECT_EQ(NoticesShown(h), 0);
    h.Tick(1);
    ASSERT_EQ(NoticesShown(h), 1);
    EXPECT_EQ(h.boxes().shown.back().flags, vbExclamation);
    EXPECT_EQ(h.boxes().shown.back().text,
              "THE DATABASE IS EMPTY ! \nAdd songs to the Database by pressing 'ADD'\n"
              "In case of problems (or other): Install and activate ODBC\n"
              "Do this by means of Windows-Help: 'ODBC - Overview'\n"
              "Click on 'Databases (ODBC)' and activate .mdb drivers!\n"
              "Alternatively: Install MS-ACCESS database program.\n");
    h.Tick(500);
    EXPECT_EQ(NoticesShown(h), 1);
}

TEST(StartUp, WithoutAutoLoadTheCatalogueStaysClosedAndNoNoticeComes) {
    FormHarness h;
    h.inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_FALSE(h.form().Data1.IsOpen());
    EXPECT_TRUE(h.form().Text1->text().startsWith("IN CASE OF OBJECT OR CLASS ERROR"));
    EXPECT_EQ(h.form().MessageColour(), kDestructive);
    h.Tick(1000);
    EXPECT_EQ(NoticesShown(h), 0);
}

// Started from a directory without the program: the copy in an installation
// place is used ("D:\ZOR JUKEBOX" here: the drive stands for the home
// directory), and without one the error ends the process before any window.
TEST(StartUp, ProgramOutsideItsDirectoryUsesAnInstalledCopyOrEnds) {
    for (const bool installed : {true, false}) {
        SCOPED_TRACE(installed ? "installed" : "nowhere");
        FormHarness h;
        const QString place = h.inst.home + "/ZOR JUKEBOX", elsewhere = h.inst.home + "/elsewhere";
        QDir().mkpath(elsewhere);
        h.inst.tp.environment.applicationPath = elsewhere;
        if (!installed) {
            EXPECT_FALSE(h.Start());
            EXPECT_EQ(h.inst.tp.process.ends, 1);
            EXPECT_FALSE(h.form().isVisible());
            ASSERT_EQ(h.boxes().shown.size(), 1u);
            EXPECT_EQ(h.boxes().shown[0].flags, vbCritical);
            EXPECT_EQ(h.boxes().shown[0].text, "ERROR! \n\nRegretably an error has occurred.\n"
                                               "Please re-installeer the software and only use  \n"
                                               "C:\\Program Files\\ZOR JUKEBOX' as directory.  \n");
            continue;
        }
        QDir().rename(h.inst.programDir, place);
        TestInstallation::AddSongs(place + "/Mp3data1.mdb", {SongFields{"Song", "Artist"}});
        ASSERT_TRUE(h.Start());
        EXPECT_EQ(h.j().DatabaseFile, place + "/Mp3data1.mdb");
        EXPECT_EQ(h.j().SongCount, 1);
        EXPECT_EQ(QFile(place + "/ZOR3.mp3").size(), 1000);
    }
}

// The settings screen's way: the new language saved, then a reload that keeps
// the process; a window closed afterwards ends it, and the next run starts
// in Dutch with the saved sort.
TEST(StartUp, ALanguageSavedAndReloadedCarriesIntoTheNextRun) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.j().settings.Language = 0;
    h.j().settings.SortAtStart = 3;
    h.j().Language = "0";
    h.Click("Sett3");
    h.j().shell.LanguageChanged = 1;
    h.j().ReloadMainWindow();
    EXPECT_EQ(h.inst.tp.process.ends, 0);
    EXPECT_EQ(h.form().File->title(), "&Bestand");
    h.Click("Exit1");
    EXPECT_EQ(h.inst.tp.process.ends, 1);

    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().Language, "0");
    EXPECT_EQ(h.j().grid.SortAtStartCopy, 3);
    EXPECT_EQ(h.form().Text1->text(), "Er zitten geen songs in de Database! -> Druk op ERBIJ om songs toe te voegen.");
    h.Tick(26);
    ASSERT_EQ(NoticesShown(h), 1);
    EXPECT_TRUE(h.boxes().shown.back().text.startsWith("DE DATABASE IS LEEG ! \n"));
}

// The first-use test looks for "ZORjuke.INI": without it the defaults are
// applied and saved, to "ZORjuke.ini" only if that file exists; a missing
// file is never made.
TEST(StartUp, WithoutTheCapitalisedSettingsFileTheDefaultsApply) {
    for (const bool lowerCaseFile : {false, true}) {
        SCOPED_TRACE(lowerCaseFile ? "ZORjuke.ini alone" : "no settings file");
        FormHarness h;
        QFile::remove(h.inst.File("ZORjuke.INI"));
        h.inst.EditSettings([](Settings& s) { s.Language = 0; s.FastPc = 1; });
        if (!lowerCaseFile) QFile::remove(h.inst.File("ZORjuke.ini"));
        ASSERT_TRUE(h.Start());
        EXPECT_EQ(h.j().Language, "1");
        EXPECT_EQ(h.j().settings.ArtistSongSwap, 1);
        if (lowerCaseFile) EXPECT_EQ(h.inst.ReadSettings().FastPc, 0);
        h.Click("Sett3");
        EXPECT_EQ(QFile::exists(h.inst.File("ZORjuke.ini")), lowerCaseFile);
    }
}

TEST(StartUp, ADamagedRecordStartsWithTheNearestUsableValues) {
    struct Damage {
        const char* what;
        std::function<void(Settings&)> damage;
        std::function<void(FormHarness&)> check;
    };
    const auto songs = [](FormHarness& h) { return ColumnTexts(h.form().MFGrid1, 1); };
    const QStringList asAdded{"Beta", "Gamma", "Alpha"};  // the empty column 12 keeps the order
    const Damage damages[] = {
        {"sort column past the last", [](Settings& s) { s.SortAtStart = 99; },
         [&](FormHarness& h) { EXPECT_EQ(h.j().grid.SortAtStartCopy, 12); EXPECT_EQ(songs(h), asAdded); }},
        {"negative sort column", [](Settings& s) { s.SortAtStart = -4; },
         [&](FormHarness& h) { EXPECT_EQ(h.j().grid.SortAtStartCopy, 0); EXPECT_EQ(songs(h), asAdded); }},
        {"sort direction neither way", [](Settings& s) { s.SortDirection = 7; },
         [&](FormHarness& h) { EXPECT_EQ(songs(h), QStringList({"Gamma", "Beta", "Alpha"})); }},
        {"language flag 5", [](Settings& s) { s.Language = 5; }, [](FormHarness& h) { EXPECT_EQ(h.j().Language, "1"); }},
        {"language flag -1", [](Settings& s) { s.Language = -1; },
         [](FormHarness& h) { EXPECT_EQ(h.form().File->title(), "&Bestand"); }},
        {"skin 3", [](Settings& s) { s.ArtisticScreen = 3; },
         [](FormHarness& h) { EXPECT_FALSE(h.form().Frame7->isHidden()); }},
        {"player 9", [](Settings& s) { s.PlayerChoice = 9; },
         [](FormHarness& h) { EXPECT_FALSE(h.form().Frame8->isHidden()); }},
        {"fonts and widths no grid can show",
         [](Settings& s) {
             s.GridLayoutUser = 1;
             s.GridFontSize = 1e300;
             s.GridFontName.clear();
             s.LyricsFontSize = std::numeric_limits<double>::infinity();
             s.GridColumnWidth = {400, -2200, 2147483647, 2000, 700, 1000, 4000, 400, 4000, 4000, 2000, 1500, 1000};
         },
         [](FormHarness& h) {
             const SongGrid& g = h.form().MFGrid1;
             EXPECT_EQ(g.FontSize, 72);
             EXPECT_EQ(g.FontName, "Arial");
             EXPECT_EQ(h.j().companion.LyricsFont.size, 72);
             EXPECT_TRUE(h.form().MFGrid1View->isColumnHidden(1));
             EXPECT_EQ(g.ColWidth(2), 30000);
         }},
    };
    for (const Damage& d : damages) {
        SCOPED_TRACE(d.what);
        FormHarness h;
        TestInstallation::AddSongs(h.inst.File("Mp3data1.mdb"),
                                   {SongFields{"Beta", "B"}, SongFields{"Gamma", "C"}, SongFields{"Alpha", "A"}});
        h.inst.EditSettings(d.damage);
        ASSERT_TRUE(h.Start());
        EXPECT_TRUE(h.boxes().shown.empty()) << h.boxes().shown[0].text.toStdString();
        EXPECT_EQ(h.j().SongCount, 3);
        d.check(h);
    }
}

// Message boxes that note whether a picture window was up when they showed:
// those windows stay on top of everything and would hide the box.
struct BoxesBehindPictures : FakeMessageBoxes {
    std::vector<bool> pictureUp;
    int MsgBox(const QString& prompt, int flags, const QString& title) override {
        bool up = false;
        for (QWidget* w : QApplication::topLevelWidgets())
            up |= QStringList({"Form3", "Form4", "Form18", "Form19"}).contains(w->objectName()) && w->isVisible();
        pictureUp.push_back(up);
        return FakeMessageBoxes::MsgBox(prompt, flags, title);
    }
};

// Start-up runs as every event does: the run-time error's box comes with the
// picture windows out of the way, in the load as in any later event.
TEST(StartUp, ARunTimeErrorInTheLoadShowsItsBoxAfterHidingThePicturesAndTheProgramLives) {
    TestInstallation inst;
    BoxesBehindPictures boxes;
    TestPlatform& tp = inst.tp;
    Platform platform{boxes, tp.dialog, tp.clock, tp.events, tp.beeper, tp.environment, tp.process, tp.files, tp.desktop, tp.players};
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::darkRed);
    ASSERT_TRUE(picture.save(inst.File("ZORjuke1.jpg")));
    bool fail = true;
    tp.events.onDoEvents = [&](int) {
        if (std::exchange(fail, false)) throw RuntimeError::Overflow();
    };
    {
        App app(platform);
        ASSERT_TRUE(app.Start());
        ASSERT_EQ(boxes.shown.size(), 1u);
        EXPECT_EQ(boxes.shown[0].text, "Run-time error '6':\n\nOverflow");
        EXPECT_EQ(boxes.pictureUp, std::vector<bool>{false});
        EXPECT_TRUE(app.MainWindow()->isVisible());
        EXPECT_EQ(tp.process.ends, 0);

        // An event's error with a picture window up.
        QWidget* form4 = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->objectName() == "Form4") form4 = w;
        ASSERT_TRUE(form4);
        form4->show();
        fail = true;
        app.MainWindow()->findChild<QAction*>("CleSel1")->trigger();
        ASSERT_EQ(boxes.shown.size(), 2u);
        EXPECT_EQ(boxes.pictureUp, (std::vector<bool>{false, false}));
        EXPECT_EQ(tp.process.ends, 0);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Settings the whole way: a column's width dragged by the user, saved with
// the settings, and shown at the next start; the installation's drive-letter
// defaults kept through that start and save, and the lyrics looked for where
// "C:\Lyrics" stands on this machine: the user's home.
TEST(SettingsRoad, AColumnDraggedWiderIsSavedAndShownAtTheNextStartAndDefaultPathsStayAsWritten) {
    FormHarness h;
    TestInstallation::AddSongs(h.inst.File("Mp3data1.mdb"), {SongFields{"Tune", "Band", "", "", "", "/music/Tune.mp3"}});
    ASSERT_TRUE(QDir().mkpath(h.inst.home + "/Lyrics"));
    ASSERT_TRUE(WriteFileBytes(h.inst.home + "/Lyrics/Tune.txt", "la la la\r\n"));
    ASSERT_TRUE(h.Start());
    QHeaderView* header = h.form().MFGrid1View->horizontalHeader();
    const int before = header->sectionSize(3);
    const int border = header->sectionViewportPosition(3) + before - 1;
    const int y = header->height() / 2;
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, QPoint(border, y));
    QMouseEvent move(QEvent::MouseMove, QPointF(border + 57, y), header->viewport()->mapToGlobal(QPointF(border + 57, y)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(header->viewport(), &move);
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, QPoint(border + 57, y));
    ASSERT_EQ(header->sectionSize(3), before + 57);
    h.Click("Sett3");
    EXPECT_EQ(h.inst.ReadSettings().LyricsPath.Trimmed(), "C:\\Lyrics");

    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.form().MFGrid1View->columnWidth(3), before + 57);
    h.form().MFGrid1.SetRow(1);
    h.Click("Lyr1");
    EXPECT_EQ(h.form().companions->Form3().Face()->toPlainText(), "la la la\n");
}

TEST(SkinChange, ReloadKeepsTheProcessAndSavesTheSkinWithoutRepeatingTheNotice) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.Tick(26);
    ASSERT_EQ(NoticesShown(h), 1);
    Form1* before = &h.form();
    h.Click("Ascreen");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(h.inst.tp.process.ends, 0);
    EXPECT_NE(&h.form(), before);
    EXPECT_EQ(h.inst.ReadSettings().ArtisticScreen, 1);
    EXPECT_EQ(h.j().companion.PictureTopPx, 171);
    EXPECT_FALSE(h.form().Frame7->isHidden());
    h.Tick(300);
    EXPECT_EQ(NoticesShown(h), 1);

    // Picture6 leads back to the normal skin the same way.
    QTest::mouseClick(h.form().Picture6, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(h.inst.ReadSettings().ArtisticScreen, 0);
    EXPECT_TRUE(h.form().Frame7->isHidden());
}

TEST(LeavingTheProgram, EveryWayOutWritesTheStopLinesAndEndsTheProcess) {
    for (const QString way : {"Exit1", "Command5", "Esc", "CloseBox"}) {
        SCOPED_TRACE(way.toStdString());
        FormHarness h;
        h.inst.EditSettings([](Settings& s) { s.LogActivity = 1; });
        ASSERT_TRUE(h.Start());
        if (way == u"Esc") QTest::keyClick(&h.form(), Qt::Key_Escape);
        else if (way == u"CloseBox") h.form().close();
        else h.Click(way.toLatin1().constData());
        EXPECT_EQ(h.inst.tp.process.ends, 1);
        const QByteArray bytes = FileBytes(h.inst.File("ZORjuke.log"));
        // Start: three lines; stop: two more, except through the close box.
        const int lines = way == u"CloseBox" ? 3 : 5;
        EXPECT_EQ(bytes.size(), lines * kLogLineBytes);
        if (lines == 5) EXPECT_EQ(bytes.mid(3 * kLogLineBytes + 22, 17), "ZOR JUKEBOX STOP.");
    }
}

// A skin change during one of the Inspector's pauses waits for the
// Inspector, which stops at the end of that pause; its window goes only
// then, and nothing more of the report is painted, in the old window or the
// new one.
TEST(Inspector, WritesItsEightLinesOnWhiteWithPausesBetweenAndStopsWhenASkinChangeTakesItsWindow) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    QFile::remove(h.inst.File("Mp3data1.mdb"));
    QStringList lines;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (lines.isEmpty() || lines.back() != h.form().Text1->text()) lines << h.form().Text1->text();
    };
    const double start = h.inst.tp.clock.Timer();
    h.Click("Inspect1");
    const QString dir = h.inst.programDir;
    lines << h.form().Text1->text();
    EXPECT_EQ(lines, QStringList({"Starting Directory is:  " + dir, "Current Directory is:  " + dir,
                                  "Program ZORjuke.exe found in " + dir, "Initialisation file ZORjuke.ini found in " + dir,
                                  "Default Database MP3data1.mdb NOT found in " + dir, "The Windows directory is: /etc",
                                  "The Windows System directory is: /usr/lib", "The Inspector has completed its task"}));
    EXPECT_EQ(h.form().MessageColour(), kWhite);
    EXPECT_GE(h.inst.tp.clock.Timer() - start, 21.0);

    Form1* first = &h.form();
    QPointer<QLineEdit> oldLine = first->Text1;
    QString atReload;
    h.inst.tp.events.onDoEvents = nullptr;
    h.inst.tp.events.onWait = [&](int ms) {
        h.inst.tp.clock.Advance(ms / 1000.0);
        if (&h.form() != first || !atReload.isNull()) return;
        atReload = first->Text1->text();
        h.Click("Ascreen");
        EXPECT_EQ(&h.form(), first);
    };
    h.Click("Inspect1");
    ASSERT_NE(&h.form(), first);
    EXPECT_EQ(atReload, "Starting Directory is:  " + dir);
    ASSERT_TRUE(oldLine);
    EXPECT_EQ(oldLine->text(), atReload);
    EXPECT_NE(h.form().Text1->text(), "The Inspector has completed its task");
    EXPECT_TRUE(h.boxes().shown.empty());
}

}  // namespace
}  // namespace zor::testing
