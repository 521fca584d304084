// The main window's menus in both languages, and the entries of its own:
// Nieuw, Browse1 and Insert1, About, the user guide, the links and e-mail.
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

struct MenuItem {
    QString name, text;
    bool separator, enabled;
};

// The menu bar as the user sees it: each menu's title, then its entries.
std::vector<std::vector<MenuItem>> MenuBarContents(Form1& f) {
    std::vector<std::vector<MenuItem>> menus;
    for (QAction* top : f.menuBar()->actions()) {
        QMenu* m = top->menu();
        std::vector<MenuItem> items{{m->objectName(), m->title(), false, true}};
        for (QAction* a : m->actions()) items.push_back({a->objectName(), a->text(), a->isSeparator(), a->isEnabled()});
        menus.push_back(items);
    }
    return menus;
}

void ExpectMenusFollowTheTable(Form1& f, bool dutch) {
    const auto bar = MenuBarContents(f);
    size_t m = 0, i = 0;
    for (const MenuEntry& e : MenuTable()) {
        if (e.kind == MenuEntry::Menu) {
            ASSERT_LT(m, bar.size());
            i = 0;
            ++m;
        } else {
            ++i;
        }
        ASSERT_LT(i, bar[m - 1].size()) << e.name;
        const MenuItem& item = bar[m - 1][i];
        if (e.kind == MenuEntry::Separator) {
            EXPECT_TRUE(item.separator) << "after " << bar[m - 1][i - 1].name.toStdString();
            continue;
        }
        EXPECT_EQ(item.name, QString::fromLatin1(e.name));
        EXPECT_EQ(item.text, QString::fromUtf8(dutch && e.dutch ? e.dutch : e.english)) << e.name;
        EXPECT_EQ(item.enabled, e.kind == MenuEntry::Menu || e.operation != nullptr) << e.name;
    }
    EXPECT_EQ(m, bar.size());
}

TEST(MainWindowMenus, EveryEntryStandsInItsPlaceWithTheCaptionOfTheLanguage) {
    for (const bool dutch : {false, true}) {
        FormHarness h;
        h.inst.EditSettings([dutch](Settings& s) { s.Language = dutch ? 0 : 1; });
        ASSERT_TRUE(h.Start());
        ExpectMenusFollowTheTable(h.form(), dutch);
    }
}

TEST(MainWindowMenus, TheTableHasTheMenusInOrderAndNamesOnce) {
    QStringList tops;
    std::set<QString> names;
    int entries = 0, unbuilt = 0;
    for (const MenuEntry& e : MenuTable()) {
        if (e.kind == MenuEntry::Separator) continue;
        EXPECT_TRUE(names.insert(QString::fromLatin1(e.name)).second) << e.name;
        if (e.kind == MenuEntry::Menu) tops << QString::fromLatin1(e.english);
        if (e.kind != MenuEntry::Entry) continue;
        ++entries;
        unbuilt += e.operation == nullptr;
        // An accelerator mark always stands before a character.
        EXPECT_FALSE(QString::fromUtf8(e.english).endsWith(u'&')) << e.name;
    }
    EXPECT_EQ(tops, QStringList({"&File", "&Edit", "&Action", "&Settings", "P&laylist", "&Print", "Spe&cial", "&ID3",
                                 "&Lyrics", "&Pictures", "&Help", "&ZOR"}));
    EXPECT_GT(entries, 120);
    EXPECT_GT(unbuilt, 0);
}

TEST(MainWindowMenus, SomeCaptionsThatAreEasyToGetWrong) {
    FormHarness h;
    h.inst.EditSettings([](Settings& s) { s.Language = 0; });
    ASSERT_TRUE(h.Start());
    const auto text = [&](const char* name) { return h.form().findChild<QAction*>(QString::fromLatin1(name))->text(); };
    EXPECT_EQ(text("Sorter4"), QStringLiteral("Sorteer op Albu&m en Song!"));
    EXPECT_EQ(text("Mover4"), QStringLiteral("&Verplaats Songs A\\,B\\,C\\ t/m Z\\ en Artiesten-dir's"));
    EXPECT_EQ(text("Edit3"), QStringLiteral("&Edit Lyrics text"));  // no Dutch caption
    EXPECT_EQ(text("ZOR5"), QStringLiteral("Markeer &Dubbele (vooral die met \"?\")"));
    EXPECT_EQ(text("Tag4"), QStringLiteral("&Bewerk/Maak ID3-TAG(s)"));
}

TEST(MainWindow, NieuwEmptiesTheWindowAndLeavesTheFile) {
    FormHarness h;
    TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), {SongFields{"A song", "An artist"}});
    ASSERT_TRUE(h.Start());
    h.j().PlaylistEnd = 5;
    h.Click("Nieuw");
    EXPECT_TRUE(h.form().MFGrid1.TextMatrix(1, 1).isEmpty());
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_EQ(h.j().PlaylistEnd, 1);
    EXPECT_EQ(h.form().ProgressBar1->value(), 0);
    EXPECT_EQ(TestInstallation::ReadSongs(h.inst.File(QStringLiteral("Mp3data1.mdb"))).size(), 1u);
}

TEST(MainWindow, BrowseFindsAFileAndInsertPutsItsPathIntoTheCellClickedBefore) {
    FormHarness h;
    TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), {SongFields{"A song", "An artist"}});
    const QString dir = h.inst.home + QStringLiteral("/Lyrics");
    QDir().mkpath(dir + QStringLiteral("/sub"));
    for (const char* name : {"b.txt", "A.sng", "c.TXT"}) QFile(dir + u'/' + QLatin1String(name)).open(QIODevice::WriteOnly);
    ASSERT_TRUE(h.Start());
    h.Click("Browse1");
    PathSelector& p = *h.form().Frame3;
    EXPECT_TRUE(p.isVisible());
    EXPECT_FALSE(p.Command16->isVisible());
    p.SetPath(dir);
    ASSERT_EQ(p.filList->count(), 3);
    EXPECT_EQ(p.filList->item(0)->text(), QStringLiteral("A.sng"));  // without regard to case
    EXPECT_EQ(p.dirList->item(1)->text(), QStringLiteral("sub"));   // after ".."
    p.filList->setCurrentRow(1);

    h.j().GridRow = 1;
    h.j().GridCol = 8;
    h.Click("Insert1");
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(1, 8), dir + QStringLiteral("/b.txt"));
    // With no cell chosen nothing is written.
    h.j().GridRow = 0;
    p.filList->setCurrentRow(2);
    p.Command15->click();
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(1, 8), dir + QStringLiteral("/b.txt"));

    // A directory that can't be read lists nothing.
    p.SetPath(h.inst.home + QStringLiteral("/no such place"));
    EXPECT_EQ(p.filList->count(), 0);
}

TEST(MainWindow, AboutTellsTheVersionInTheLanguage) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.Click("About");
    EXPECT_TRUE(h.boxes().shown.back().text.startsWith(QStringLiteral("ZOR JUKEBOX\n\nVersion 7.0\n")));
    h.j().Language = QStringLiteral("0");
    h.Click("About");
    EXPECT_TRUE(h.boxes().shown.back().text.contains(QStringLiteral("Versie 7.0\n")));
    EXPECT_EQ(h.boxes().shown.back().title, QStringLiteral("ZOR JUKEBOX"));
}

TEST(MainWindow, TheUserGuideOfTheLanguageOpensWithTheDesktopsProgram) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    for (const char* name : {"ZORjukeUK.HTM", "ZORjukeNL.HTM"}) QFile(h.inst.File(QLatin1String(name))).open(QIODevice::WriteOnly);
    h.Click("User1");
    h.j().Language = QStringLiteral("0");
    h.Click("User1");
    EXPECT_EQ(h.inst.tp.desktop.opened,
              QStringList({h.inst.File(QStringLiteral("ZORjukeUK.HTM")), h.inst.File(QStringLiteral("ZORjukeNL.HTM"))}));
    EXPECT_TRUE(h.boxes().shown.empty());

    // A guide that is gone, or no program to show it: the user is told.
    QFile::remove(h.inst.File(QStringLiteral("ZORjukeNL.HTM")));
    h.Click("User1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("ATTENTIE!\n\n")));
    h.j().Language = QStringLiteral("1");
    h.inst.tp.desktop.succeed = false;
    h.Click("User1");
    EXPECT_EQ(h.boxes().shown.size(), 2u);
}

TEST(MainWindow, TheEmailBoxOpensTheMailProgramOnlyOnYes) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    h.boxes().answers = {vbNo, vbYes};
    h.Click("Email1");
    EXPECT_TRUE(h.inst.tp.desktop.opened.isEmpty());
    h.Click("Email1");
    ASSERT_EQ(h.inst.tp.desktop.opened.size(), 1);
    EXPECT_TRUE(h.inst.tp.desktop.opened[0].startsWith(QStringLiteral("mailto:")));
    h.Click("Links0");
    EXPECT_TRUE(h.boxes().shown.back().text.contains(QStringLiteral("https://")));
}

}  // namespace
}  // namespace zor::testing

namespace zor::testing {

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

}  // namespace zor::testing
