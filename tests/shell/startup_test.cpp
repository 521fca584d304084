// Start-up, the empty-catalogue notice, the ways out and the reloads for a
// new skin or language, driven through the real main window on a temporary
// installation.
#include "playback/play_log.h"
#include "shell/ui/path_selector.h"
#include "shell/ui/startup.h"
#include "tests/support/form_harness.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

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
    EXPECT_EQ(f.MFGrid1.TextMatrix(0, 1), "SONG TITLE:");
    EXPECT_EQ(f.MFGrid1.TextMatrix(0, 11), "[Reserved.]");

    h.Tick(25);
    f.Frame3->show();
    h.Tick(1 + 101);
    f.Frame3->hide();
    h.Tick(100);
    EXPECT_EQ(NoticesShown(h), 0);
    h.Tick(1);
    ASSERT_EQ(NoticesShown(h), 1);
    const auto& box = h.boxes().shown.back();
    EXPECT_EQ(box.title, "ZOR JUKEBOX");
    EXPECT_EQ(box.flags, vbExclamation);
    EXPECT_EQ(box.text,
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
            EXPECT_EQ(h.boxes().shown[0].title, "ZOR JUKEBOX");
            EXPECT_EQ(h.boxes().shown[0].text, "ERROR! \n\nRegretably an error has occurred.\n"
                                               "Please re-installeer the software and only use  \n"
                                               "C:\\Program Files\\ZOR JUKEBOX' as directory.  \n");
            continue;
        }
        QDir().rename(h.inst.programDir, place);
        TestInstallation::AddSongs(place + "/Mp3data1.mdb", {SongFields{"Song", "Artist"}});
        ASSERT_TRUE(h.Start());
        EXPECT_EQ(h.j().ProgramDir, place);
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
    EXPECT_EQ(h.form().windowTitle(), "ZOR JUKEBOX door ZOR electronics");
    EXPECT_EQ(h.form().Exit1->text(), "E&xit");  // no Dutch caption of its own
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
        EXPECT_EQ(h.j().settings.LyricsPath.Trimmed(), h.inst.home + "/Lyrics");
        if (lowerCaseFile) EXPECT_EQ(h.inst.ReadSettings().FastPc, 0);
        h.Click("Sett3");
        EXPECT_EQ(QFile::exists(h.inst.File("ZORjuke.ini")), lowerCaseFile);
    }
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
    EXPECT_EQ(h.j().shell.SkinReload, 0);
    EXPECT_EQ(h.j().companion.PictureTopPx, 171);
    EXPECT_FALSE(h.form().Frame7->isHidden());
    h.Tick(300);
    EXPECT_EQ(NoticesShown(h), 1);

    // Picture6 leads back to the normal skin the same way.
    QTest::mouseClick(h.form().Picture6, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(h.inst.ReadSettings().ArtisticScreen, 0);
    EXPECT_EQ(h.j().shell.SkinSwitching, 0);
    EXPECT_TRUE(h.form().Frame7->isHidden());
    EXPECT_EQ(h.inst.tp.process.ends, 0);
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
        QFile log(h.inst.File("ZORjuke.log"));
        ASSERT_TRUE(log.open(QIODevice::ReadOnly));
        const QByteArray bytes = log.readAll();
        // Start: three lines; stop: two more, except through the close box.
        const int lines = way == u"CloseBox" ? 3 : 5;
        EXPECT_EQ(bytes.size(), lines * kLogLineBytes);
        if (lines == 5) EXPECT_EQ(bytes.mid(3 * kLogLineBytes + 22, 17), "ZOR JUKEBOX STOP.");
    }
}

TEST(Inspector, WritesItsEightLinesOnWhiteWithPausesBetween) {
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
}

}  // namespace
}  // namespace zor::testing
