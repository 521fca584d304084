// The main window's menus in both languages and the entries of its own:
// Browse1 and Insert1, Nieuw, and the Help entries.
#include "shell/ui/path_selector.h"
#include "tests/support/form_harness.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QStringList Captions(const QList<QAction*>& actions) {
    QStringList out;
    for (const QAction* a : actions) out << a->text();
    return out;
}

// The File menu entry by entry with its separators; in Dutch a caption with
// the runtime's escapes and one that falls back to the English.
TEST(MainWindowMenus, TheMenusShowTheCaptionsOfTheLanguage) {
    for (const int language : {1, 0}) {
        SCOPED_TRACE(language);
        FormHarness h;
        h.inst.EditSettings([&](Settings& s) { s.Language = language; });
        ASSERT_TRUE(h.Start());
        const auto action = [&](const char* name) { return h.form().findChild<QAction*>(QString::fromLatin1(name)); };
        if (language == 1) {
            EXPECT_EQ(Captions(h.form().menuBar()->actions()[0]->menu()->actions()),
                      (QStringList{"&New", "", "&Open Database", "&Save Database", "Save Database &As", "",
                                   "Open &Playlist", "Save P&laylist", "Save Pla&ylist As", "Save Playlist in M3U format",
                                   "", "Show &LOG file", "Show Statistics", "", "E&xit"}));
        } else {
            EXPECT_EQ(action("Mover4")->text(), "&Verplaats Songs A\\,B\\,C\\ t/m Z\\ en Artiesten-dir's");
            EXPECT_EQ(action("Save5")->text(), "Save Playlist in M3U format");
        }
        EXPECT_TRUE(action("Slog1")->isEnabled());
        EXPECT_FALSE(action("SStat1")->isEnabled());
    }
}

// Browse1 lists the files without regard to case; Insert1 puts the chosen
// path into the cell clicked before, and nowhere without one. Nieuw then
// empties the window but leaves the file.
TEST(MainWindow, BrowseAndInsertFillTheCellClickedBeforeAndNieuwEmptiesTheWindowOnly) {
    FormHarness h;
    TestInstallation::AddSongs(h.inst.File("Mp3data1.mdb"), {SongFields{"A song", "An artist"}});
    const QString dir = h.inst.home + "/Lyrics";
    QDir().mkpath(dir + "/sub");
    for (const char* name : {"b.txt", "A.sng", "c.TXT"}) QFile(dir + u'/' + QLatin1String(name)).open(QIODevice::WriteOnly);
    ASSERT_TRUE(h.Start());
    h.Click("Browse1");
    PathSelector& p = *h.form().Frame3;
    EXPECT_TRUE(p.isVisible());
    EXPECT_FALSE(p.Command16->isVisible());
    p.SetPath(dir);
    ASSERT_EQ(p.filList->count(), 3);
    EXPECT_EQ(p.filList->item(0)->text(), "A.sng");
    EXPECT_EQ(p.dirList->item(1)->text(), "sub");  // after ".."
    p.filList->setCurrentRow(1);
    h.j().grid.GridRow = 1;
    h.j().grid.GridCol = 8;
    h.Click("Insert1");
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(1, 8), dir + "/b.txt");
    h.j().grid.GridRow = 0;
    p.filList->setCurrentRow(2);
    p.Command15->click();
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(1, 8), dir + "/b.txt");

    h.j().PlaylistEnd = 5;
    h.Click("Nieuw");
    EXPECT_TRUE(h.form().MFGrid1.TextMatrix(1, 1).isEmpty());
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_EQ(h.j().PlaylistEnd, 1);
    EXPECT_EQ(h.form().ProgressBar1->value(), 0);
    EXPECT_EQ(TestInstallation::ReadSongs(h.inst.File("Mp3data1.mdb")).size(), 1u);
}

TEST(MainWindow, TheHelpEntriesSpeakTheLanguageAndOpenOnlyWhatTheyShould) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    auto& shown = h.boxes().shown;
    auto& opened = h.inst.tp.desktop.opened;
    h.Click("About");
    EXPECT_TRUE(shown.back().text.startsWith("ZOR JUKEBOX\n\nVersion 7.0\n"));
    h.j().Language = "0";
    h.Click("About");
    EXPECT_TRUE(shown.back().text.startsWith("ZOR JUKEBOX\n\nVersie 7.0\n"));
    shown.clear();

    // The user guide of the language, with the desktop's program; a guide
    // that is gone, or no program to show it, and the user is told.
    for (const char* name : {"ZORjukeUK.HTM", "ZORjukeNL.HTM"}) QFile(h.inst.File(name)).open(QIODevice::WriteOnly);
    h.Click("User1");
    h.j().Language = "1";
    h.Click("User1");
    EXPECT_EQ(opened, QStringList({h.inst.File("ZORjukeNL.HTM"), h.inst.File("ZORjukeUK.HTM")}));
    EXPECT_TRUE(shown.empty());
    QFile::remove(h.inst.File("ZORjukeUK.HTM"));
    h.Click("User1");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_TRUE(shown[0].text.startsWith("ATTENTION!\n\n"));
    h.j().Language = "0";
    h.inst.tp.desktop.succeed = false;
    h.Click("User1");
    EXPECT_EQ(shown.size(), 2u);

    // The mail program opens only on Yes.
    h.inst.tp.desktop.succeed = true;
    opened.clear();
    h.boxes().answers = {vbNo, vbYes};
    h.Click("Email1");
    EXPECT_TRUE(opened.isEmpty());
    h.Click("Email1");
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0].startsWith("mailto:"));
}

}  // namespace
}  // namespace zor::testing
