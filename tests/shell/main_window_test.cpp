// The main window's menus in both languages, its geometry, and the entries of
// its own: Browse1 and Insert1, Nieuw, and the Help entries.
#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/menus.h"
#include "shell/ui/path_selector.h"
#include "tests/support/form_harness.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

#include <gtest/gtest.h>

#include <set>

namespace zor::testing {
namespace {

// Dutch captions that are easy to get wrong.
const std::pair<const char*, QString> kDutchCaptions[] = {
    {"Sorter4", "Sorteer op Albu&m en Song!"},
    {"Mover4", "&Verplaats Songs A\\,B\\,C\\ t/m Z\\ en Artiesten-dir's"},
    {"Edit3", "&Edit Lyrics text"},  // no Dutch caption
    {"ZOR5", "Markeer &Dubbele (vooral die met \"?\")"},
    {"Tag4", "&Bewerk/Maak ID3-TAG(s)"},
};

// The menu bar as the user sees it follows the table entry by entry, with
// the caption of the language and the unbuilt entries disabled.
TEST(MainWindowMenus, EveryEntryStandsInItsPlaceWithTheCaptionOfTheLanguage) {
    for (const bool dutch : {false, true}) {
        SCOPED_TRACE(dutch ? "Dutch" : "English");
        FormHarness h;
        h.inst.EditSettings([dutch](Settings& s) { s.Language = dutch ? 0 : 1; });
        ASSERT_TRUE(h.Start());
        const QList<QAction*> bar = h.form().menuBar()->actions();
        QMenu* menu = nullptr;
        qsizetype m = 0, i = 0;
        std::set<QString> names;
        for (const MenuEntry& e : MenuTable()) {
            const char* caption = dutch && e.dutch ? e.dutch : e.english;
            if (e.kind != MenuEntry::Separator) EXPECT_TRUE(names.insert(QString::fromLatin1(e.name)).second) << e.name;
            if (e.kind == MenuEntry::Menu) {
                ASSERT_LT(m, bar.size());
                menu = bar[m++]->menu();
                i = 0;
                EXPECT_EQ(menu->objectName(), QString::fromLatin1(e.name));
                EXPECT_EQ(menu->title(), QString::fromUtf8(caption));
                continue;
            }
            ASSERT_LT(i, menu->actions().size()) << e.name;
            const QAction* a = menu->actions()[i++];
            EXPECT_EQ(a->isSeparator(), e.kind == MenuEntry::Separator) << "entry " << i << " of " << menu->objectName().toStdString();
            if (e.kind == MenuEntry::Separator) continue;
            EXPECT_EQ(a->objectName(), QString::fromLatin1(e.name));
            EXPECT_EQ(a->text(), QString::fromUtf8(caption)) << e.name;
            EXPECT_EQ(a->isEnabled(), e.operation != nullptr) << e.name;
        }
        EXPECT_EQ(m, bar.size());
        if (dutch) {
            for (const auto& [name, text] : kDutchCaptions)
                EXPECT_EQ(h.form().findChild<QAction*>(QString::fromLatin1(name))->text(), text) << name;
            continue;
        }
        QStringList tops;
        for (QAction* top : bar) tops << top->text();
        EXPECT_EQ(tops, QStringList({"&File", "&Edit", "&Action", "&Settings", "P&laylist", "&Print", "Spe&cial", "&ID3",
                                     "&Lyrics", "&Pictures", "&Help", "&ZOR"}));
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

// Below 1024 pixels the message line gives way, the player's frame keeps to
// the right edge and the panel beside the bar stays away; the artistic skin
// keeps its menus and count label readable on black.
TEST(MainWindow, GeometryFollowsTheScreenWidthAndTheSkin) {
    auto start = [](FormHarness& h, QSize screen, int artistic) {
        h.inst.tp.environment.screen = screen;
        h.inst.EditSettings([&](Settings& s) {
            s.PlayerChoice = 4;
            s.ArtisticScreen = artistic;
        });
        return h.Start();
    };
    FormHarness wide, narrow, dark;
    ASSERT_TRUE(start(wide, {1280, 800}, 0));
    ASSERT_TRUE(start(narrow, {800, 600}, 0));
    ASSERT_TRUE(start(dark, {800, 600}, 1));
    Form1& w = wide.form();
    Form1& n = narrow.form();
    EXPECT_LT(n.Text1->width(), w.Text1->width());
    EXPECT_EQ(n.MFGrid1View->width(), 800 - 15);
    EXPECT_EQ(n.Frame8->x(), 9240 / 15);
    EXPECT_TRUE(w.Frame4->isVisible());
    EXPECT_FALSE(n.Frame4->isVisible());
    EXPECT_GE(n.Frame8->x(), n.Frame2->geometry().right() - 4);

    Form1& d = dark.form();
    const QPalette menus = d.menuBar()->palette();
    EXPECT_NE(menus.color(QPalette::Window), menus.color(QPalette::ButtonText));
    EXPECT_NE(menus.color(QPalette::Window), QColor(Qt::black));
    EXPECT_NE(d.Lable1->palette().color(QPalette::WindowText), d.palette().color(QPalette::Window));
    EXPECT_GT(d.MFGrid1View->y(), 600 / 3);
}

}  // namespace
}  // namespace zor::testing
