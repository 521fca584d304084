// Start-up, the empty-catalogue notice, the ways out and the skin reload,
// driven through the real main window on a temporary installation.
#include "playback/play_log.h"
#include "shell/ui/startup.h"
#include "shell/ui/path_selector.h"
#include "tests/support/form_harness.h"

#include <QAction>
#include <QCoreApplication>
#include <QTest>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

const QString kEmptyNotice = QStringLiteral(
    "THE DATABASE IS EMPTY ! \nAdd songs to the Database by pressing 'ADD'\n"
    "In case of problems (or other): Install and activate ODBC\n"
    "Do this by means of Windows-Help: 'ODBC - Overview'\n"
    "Click on 'Databases (ODBC)' and activate .mdb drivers!\n"
    "Alternatively: Install MS-ACCESS database program.\n");

int NoticesShown(FormHarness& h) {
    int n = 0;
    for (const auto& b : h.boxes().shown)
        if (b.text.contains(QStringLiteral("DATABASE IS EMPTY")) || b.text.contains(QStringLiteral("DATABASE IS LEEG"))) ++n;
    return n;
}

TEST(StartUp, EmptyCatalogueOpensAndTheNoticeComesOnceAtTheFirstCheck) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().SongCount, 0);
    EXPECT_EQ(h.form().Text1->text(),
              QStringLiteral("There are no songs in the Database! -> Please press ADD to fill the database now."));
    EXPECT_EQ(h.form().MessageColour(), kYellow);
    EXPECT_EQ(h.form().MFGrid1.Rows(), 1);
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(0, 1), QStringLiteral("SONG TITLE:"));
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(0, 11), QStringLiteral("[Reserved.]"));

    h.Tick(25);  // Timer1Ticks starts at 75: the first check is the 26th tick
    EXPECT_EQ(NoticesShown(h), 0);
    h.Tick(1);
    ASSERT_EQ(NoticesShown(h), 1);
    const auto& box = h.boxes().shown.back();
    EXPECT_EQ(box.title, QStringLiteral("ZOR JUKEBOX"));
    EXPECT_EQ(box.flags, vbExclamation);
    EXPECT_EQ(box.text, kEmptyNotice);
    h.Tick(500);
    EXPECT_EQ(NoticesShown(h), 1);
}

TEST(StartUp, NoticeWaitsWhileThePathSelectorIsOpen) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.form().Frame3->show();
    h.Tick(26 + 101);
    EXPECT_EQ(NoticesShown(h), 0);
    h.form().Frame3->hide();
    h.Tick(100);
    EXPECT_EQ(NoticesShown(h), 0);
    h.Tick(1);
    EXPECT_EQ(NoticesShown(h), 1);
}

TEST(StartUp, WithoutAutoLoadTheCatalogueStaysClosedAndNoNoticeComes) {
    FormHarness h;
    h.inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_FALSE(h.form().Data1.IsOpen());
    EXPECT_TRUE(h.form().Text1->text().startsWith(QStringLiteral("IN CASE OF OBJECT OR CLASS ERROR")));
    EXPECT_EQ(h.form().MessageColour(), kDestructive);
    h.Tick(1000);
    EXPECT_EQ(NoticesShown(h), 0);
}

TEST(StartUp, ProgramFoundNowhereShowsTheErrorAndEndsBeforeAnyWindow) {
    FormHarness h;
    const QString elsewhere = h.inst.home + QStringLiteral("/elsewhere");
    QDir().mkpath(elsewhere);
    h.inst.tp.environment.applicationPath = elsewhere;
    EXPECT_FALSE(h.Start());
    EXPECT_EQ(h.inst.tp.process.ends, 1);
    EXPECT_FALSE(h.form().isVisible());
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].flags, vbCritical);
    EXPECT_EQ(h.boxes().shown[0].title, QStringLiteral("ZOR JUKEBOX"));
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("ERROR! \n\nRegretably an error has occurred.\n"
                             "Please re-installeer the software and only use  \n"
                             "C:\\Program Files\\ZOR JUKEBOX' as directory.  \n"));
}

TEST(StartUp, ProgramInAForeignDirectoryUsesTheCopyInAnInstallationPlace) {
    FormHarness h;
    // "D:\ZOR JUKEBOX" on this machine: the drive stands for the home directory.
    const QString place = h.inst.home + QStringLiteral("/ZOR JUKEBOX");
    QDir().rename(h.inst.programDir, place);
    const QString elsewhere = h.inst.home + QStringLiteral("/elsewhere");
    QDir().mkpath(elsewhere);
    h.inst.tp.environment.applicationPath = elsewhere;
    TestInstallation::AddSongs(place + QStringLiteral("/Mp3data1.mdb"), {{QStringLiteral("Song"), QStringLiteral("Artist")}});
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().ProgramDir, place);
    EXPECT_EQ(h.j().DatabaseFile, place + QStringLiteral("/Mp3data1.mdb"));
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_TRUE(QFile::exists(place + QStringLiteral("/ZOR3.mp3")));
    EXPECT_EQ(QFile(place + QStringLiteral("/ZOR3.mp3")).size(), 1000);
}

TEST(StartUp, ADutchSettingsFileStartsTheSystemInDutch) {
    FormHarness h;
    h.inst.EditSettings([](Settings& s) { s.Language = 0; });
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().Language, QStringLiteral("0"));
    EXPECT_EQ(h.form().windowTitle(), QStringLiteral("ZOR JUKEBOX door ZOR electronics"));
    EXPECT_EQ(h.form().File->title(), QStringLiteral("&Bestand"));
    EXPECT_EQ(h.form().Exit1->text(), QStringLiteral("E&xit"));  // no Dutch caption of its own
    EXPECT_EQ(h.form().Text1->text(),
              QStringLiteral("Er zitten geen songs in de Database! -> Druk op ERBIJ om songs toe te voegen."));
    h.Tick(26);
    ASSERT_EQ(NoticesShown(h), 1);
    EXPECT_TRUE(h.boxes().shown.back().text.startsWith(QStringLiteral("DE DATABASE IS LEEG ! \n")));
}

TEST(StartUp, WithoutASettingsFileTheSystemRunsInEnglishAndMakesNoFile) {
    FormHarness h;
    QFile::remove(h.inst.File(QStringLiteral("ZORjuke.ini")));
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().Language, QStringLiteral("1"));
    EXPECT_EQ(h.j().settings.AutoLoad, 1);
    EXPECT_EQ(h.j().settings.ArtistSongSwap, 1);
    EXPECT_EQ(h.j().settings.LyricsPath.Trimmed(), h.inst.home + QStringLiteral("/Lyrics"));
    h.Click("Sett3");
    h.Click("Ascreen");
    EXPECT_FALSE(QFile::exists(h.inst.File(QStringLiteral("ZORjuke.ini"))));
}

TEST(StartUp, ASettingsFileUnderTheLowerCaseNameAloneIsOverwrittenByTheDefaults) {
    // The first-use test looks for "ZORjuke.INI"; on a disk that keeps case,
    // "ZORjuke.ini" alone counts as missing for that test.
    FormHarness h;
    QFile::remove(h.inst.File(QStringLiteral("ZORjuke.INI")));
    h.inst.EditSettings([](Settings& s) {
        s.Language = 0;
        s.FastPc = 1;
    });
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().settings.Language, 1);
    EXPECT_EQ(h.inst.ReadSettings().Language, 1);
    EXPECT_EQ(h.inst.ReadSettings().FastPc, 0);
}

TEST(StartUp, TheInstalledSettingsSurviveARestart) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.j().settings.Language = 0;
    h.j().settings.SortAtStart = 3;
    h.Click("Sett3");
    h.app.reset();
    ASSERT_TRUE(h.Start());
    EXPECT_EQ(h.j().Language, QStringLiteral("0"));
    EXPECT_EQ(h.j().SortAtStartCopy, 3);
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
    EXPECT_EQ(h.j().SkinReload, 0);
    EXPECT_EQ(h.j().PictureTopPx, 171);
    EXPECT_EQ(h.j().SortAtStartCopy, 1);
    EXPECT_FALSE(h.form().Frame7->isHidden());
    h.Tick(300);
    EXPECT_EQ(NoticesShown(h), 1);

    // Picture6 leads back to the normal skin the same way.
    QTest::mouseClick(h.form().Picture6, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(h.inst.ReadSettings().ArtisticScreen, 0);
    EXPECT_EQ(h.j().SkinSwitching, 0);
    EXPECT_TRUE(h.form().Frame7->isHidden());
    EXPECT_EQ(h.inst.tp.process.ends, 0);
}

TEST(LeavingTheProgram, EveryWayOutWritesTheStopLinesAndEndsTheProcess) {
    for (const char* way : {"Exit1", "Command5", "Esc", "CloseBox"}) {
        SCOPED_TRACE(way);
        FormHarness h;
        h.inst.EditSettings([](Settings& s) { s.LogActivity = 1; });
        ASSERT_TRUE(h.Start());
        const QString w = QString::fromLatin1(way);
        if (w == u"Esc") QTest::keyClick(&h.form(), Qt::Key_Escape);
        else if (w == u"CloseBox") h.form().close();
        else h.Click(way);
        EXPECT_EQ(h.inst.tp.process.ends, 1);
        QFile log(h.inst.File(QStringLiteral("ZORjuke.log")));
        ASSERT_TRUE(log.open(QIODevice::ReadOnly));
        const QByteArray bytes = log.readAll();
        // Start: three lines; stop: two more, except through the close box.
        const int lines = w == u"CloseBox" ? 3 : 5;
        EXPECT_EQ(bytes.size(), lines * kLogLineBytes);
        if (lines == 5) EXPECT_EQ(bytes.mid(3 * kLogLineBytes + 22, 17), QByteArray("ZOR JUKEBOX STOP."));
    }
}

TEST(LeavingTheProgram, AReloadForANewLanguageKeepsTheProcessAndAClosedWindowEndsIt) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    // As the settings screen does it: the new language saved, then a reload.
    h.j().settings.Language = 0;
    h.j().Language = QStringLiteral("0");
    h.Click("Sett3");
    h.j().LanguageChanged = 1;
    h.j().ReloadMainWindow();
    EXPECT_EQ(h.inst.tp.process.ends, 0);
    EXPECT_EQ(h.form().File->title(), QStringLiteral("&Bestand"));
    // Leaving afterwards leaves no window, so the process ends.
    h.Click("Exit1");
    EXPECT_EQ(h.inst.tp.process.ends, 1);
}

TEST(Inspector, WritesItsEightLinesOnWhiteWithPausesBetween) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    QFile::remove(h.inst.File(QStringLiteral("Mp3data1.mdb")));
    QStringList lines;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (lines.isEmpty() || lines.back() != h.form().Text1->text()) lines << h.form().Text1->text();
    };
    const double start = h.inst.tp.clock.Timer();
    h.Click("Inspect1");
    const QString dir = h.inst.programDir;
    lines << h.form().Text1->text();
    EXPECT_EQ(lines, QStringList({QStringLiteral("Starting Directory is:  ") + dir,
                                  QStringLiteral("Current Directory is:  ") + dir,
                                  QStringLiteral("Program ZORjuke.exe found in ") + dir,
                                  QStringLiteral("Initialisation file ZORjuke.ini found in ") + dir,
                                  QStringLiteral("Default Database MP3data1.mdb NOT found in ") + dir,
                                  QStringLiteral("The Windows directory is: /etc"),
                                  QStringLiteral("The Windows System directory is: /usr/lib"),
                                  QStringLiteral("The Inspector has completed its task")}));
    EXPECT_EQ(h.form().MessageColour(), kWhite);
    EXPECT_GE(h.inst.tp.clock.Timer() - start, 21.0);
}

}  // namespace
}  // namespace zor::testing
