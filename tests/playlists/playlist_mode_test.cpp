// The playlist mode: the random history and the field walks on their own,
// then the mode's change and the making of the list through the main window.
// The list's loop is in playlist_road_test.cpp.
#include "playlists/field_selection.h"
#include "playlists/random_history.h"
#include "playlists/ui/playlist_mode.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/form_test.h"
#include "tests/support/grid_columns.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

#include <deque>

namespace zor::testing {
namespace {

// ---- The random history ------------------------------------------------------

// Candidates from a script, as the seeded generator would give them.
struct ScriptedDraw {
    std::deque<int32_t> values;
    int calls = 0;
    int32_t operator()() {
        ++calls;
        const int32_t v = values.front();
        if (values.size() > 1) values.pop_front();
        return v;
    }
};

TEST(RandomHistory, RowsAlreadyDrawnAreDrawnAgainUntilEveryRowHadItsTurn) {
    RandomHistory history;
    RandomCounters counters;
    // Three rows (PlaylistEnd 4). Row 1 counts as played at the start.
    ScriptedDraw draw{{1, 3, 3, 2, 1}};
    auto pick = [&] { return PickRandomRow(history, counters, 4, std::ref(draw)); };
    EXPECT_EQ(pick(), 3);  // 1 is in the history, drawn again
    EXPECT_EQ(pick(), 2);  // 3 was played
    // Row 1's place was overwritten by the first pick, so 1 may come now.
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(counters.played, 3);
    // Every row is in the history: after 1000 comparisons the last candidate
    // is taken as it stands, and the pick after it starts a new round.
    draw.values = {2};
    EXPECT_EQ(pick(), 2);
    EXPECT_EQ(counters.played, 4);
    EXPECT_EQ(pick(), 2);
    EXPECT_EQ(counters.played, 1);
}

// ---- The walks of the field selection ----------------------------------------

SongGrid GridOfArtists(const QStringList& artists) {
    SongGrid g;
    g.SetRows(artists.size() + 1);
    for (int r = 1; r <= artists.size(); ++r) g.SetTextMatrix(r, 2, artists[r - 1]);
    return g;
}

TEST(FieldSelection, TheScanComparesTrimmedLowerCaseWholeCellsAndNumbersFromOne) {
    SongGrid g = GridOfArtists({"Abba", "  ABBA ", "Abbacadabra", "abba", "Queen", "abba"});
    g.SetTextMatrix(3, 0, QStringLiteral("7"));  // an earlier mark stays
    const int32_t end = MarkMatchingRows(g, 2, FieldKey(QStringLiteral(" Abba")), 6, {});
    // The last song row is not looked at.
    EXPECT_EQ(ColumnTexts(g, 0), (QStringList{"1", "2", "7", "3", "", ""}));
    EXPECT_EQ(ColumnTexts(g, 12), (QStringList{"1", "2", "", "3", "", ""}));
    EXPECT_EQ(end, 4);
    // Blanks are trimmed, a tab is text.
    EXPECT_EQ(FieldKey(QStringLiteral("  ABBA ")), QStringLiteral("abba"));
    EXPECT_NE(FieldKey(QStringLiteral("Abba\t")), FieldKey(QStringLiteral("Abba")));
}

TEST(FieldSelection, OnASortedColumnOnlyTheGroupAroundTheCurrentRowIsMarked) {
    SongGrid g = GridOfArtists({"Abba", "Blondie", "blondie ", "Blondie", "Cher", "Blondie"});
    g.SetRow(3);
    EXPECT_EQ(MarkGroupAroundRow(g, 2, QStringLiteral("blondie"), 6), 4);
    EXPECT_EQ(ColumnTexts(g, 0), (QStringList{"", "1", "2", "3", "", ""}));
    // A group that starts at row 1 stops at the heading.
    SongGrid top = GridOfArtists({"Cher", "Cher", "Abba"});
    top.SetRow(2);
    EXPECT_EQ(MarkGroupAroundRow(top, 2, QStringLiteral("cher"), 3), 3);
    EXPECT_EQ(ColumnTexts(top, 0), (QStringList{"1", "2", ""}));
}

// ---- The mode through the main window ----------------------------------------

SongFields Song(int n, const QString& artist, const QString& year, const QString& path) {
    return {QStringLiteral("Song %1").arg(n, 2, 10, QLatin1Char('0')), artist, "Album", year, "", path};
}

struct PlaylistModeTest : FormTest {
    // A catalogue of ten songs sorted on the title, which is table order.
    void StartWith(const QString& language = QStringLiteral("1")) {
        std::vector<SongFields> songs;
        for (int n = 1; n <= 10; ++n)
            songs.push_back(Song(n, n % 3 == 0 ? QStringLiteral("Cher") : QStringLiteral("Abba"),
                                 n <= 4 ? QStringLiteral("1975") : QStringLiteral("1980"), QStringLiteral("/music/%1.mp3").arg(n)));
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), songs);
        h.inst.EditSettings([&](Settings& s) {
            s.SortAtStart = 1;
            s.SortDirection = 1;
            s.DirectPlay = 2;
            s.Language = language == QStringLiteral("0") ? 0 : 1;
        });
        ASSERT_TRUE(h.Start());
        j().Language = language;
        // The songs are not on disk: a list that starts passes over them
        // once and stops.
    }
    QAction* Action(const char* name) { return f().findChild<QAction*>(QString::fromLatin1(name)); }
    QString Titles(const SongGrid& g) { return ColumnTexts(g, 1).join(u','); }
};

TEST_F(PlaylistModeTest, ShowingThePlaylistCopiesTheMarksInTheirOrderTurnsTheBarAndSaysWhetherItStarted) {
    StartWith();
    MarkForPlaylist(f(), {7, 2, 9});
    h.Click("Playlist2");
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 07,Song 02,Song 09"));
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 12), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(f().MFgrid2.TextMatrix(0, 1), QStringLiteral("PLAYLIST: SONG"));
    // The catalogue is back in its own order, the marks still in its rows.
    EXPECT_EQ(f().MFGrid1.TextMatrix(1, 1), QStringLiteral("Song 01"));
    EXPECT_EQ(f().MFGrid1.TextMatrix(9, 12), QStringLiteral("3"));
    // Side by side: the list at the left, the catalogue at the right.
    EXPECT_LT(f().MFgrid2View->geometry().right(), f().MFGrid1View->x());
    EXPECT_TRUE(f().Frame2->title().contains(QStringLiteral("REPEAT")));
    EXPECT_TRUE(f().Command8->isEnabled());
    EXPECT_EQ(Action("SelArt1")->text(), QStringLiteral("Play all songs by this artist at random"));
    // Direct help off and on again brings the playlist's tips, not the catalogue's.
    h.Click("DHelp1");
    h.Click("DHelp1");
    EXPECT_EQ(f().Command7->toolTip(), QStringLiteral("Press this button to go back to normal operation of the Database!"));
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist has been made."));
    EXPECT_EQ(f().Text2->text(), QStringLiteral("3"));
    EXPECT_EQ(j().PlayStopped, 1);
    // A mark set now joins the list at once, as grid_ops_test.cpp clicks it.
    EXPECT_EQ(f().playlist.PlaylistBuilding, 1);
    // Shown only, with PlayMode 0: not started, and PlayMode stays.
    j().PlayMode = 0;
    EnterPlaylistMode(f());
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Songs selected, but Playlist not yet started."));
    EXPECT_EQ(j().PlayMode, 0);
}

TEST_F(PlaylistModeTest, WithoutMarksTheWindowStaysSplitUntilLeftAndLeavingRestoresTheCatalogueBar) {
    StartWith(QStringLiteral("0"));
    const QString catalogueLegend = f().Frame2->title();
    h.Click("Playlist1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].flags, vbCritical);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(
        QStringLiteral("ATTENTIE!\n\nU heeft geen Playlist samengesteld!             \n\nMarkeer eerst")));
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_TRUE(f().MFgrid2View->isVisibleTo(&f()));
    EXPECT_EQ(f().Frame2->title(), catalogueLegend);
    h.Click("Command7");
    EXPECT_EQ(j().PlaylistActive, 0);
    EXPECT_FALSE(f().MFgrid2View->isVisibleTo(&f()));
    EXPECT_EQ(f().MFGrid1View->width(), j().shell.ScreenWidthPx - 16);
    // Leaving a list restores the catalogue's bar in its language and clears the marks.
    MarkForPlaylist(f(), {5, 6});
    h.Click("Playlist2");
    EXPECT_TRUE(f().Frame2->title().contains(QStringLiteral("HERHAAL")));
    h.Click("Playlist4");
    EXPECT_EQ(f().Frame2->title(), catalogueLegend);
    // Their catalogue roles are not here yet: disabled again.
    EXPECT_FALSE(f().Command8->isEnabled());
    EXPECT_EQ(Action("SelArt1")->text(), QStringLiteral("Selecteer alle songs van deze &Artiest"));
    EXPECT_EQ(j().PlaylistEnd, 1);
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(f().MFgrid2.Rows(), 1);
    EXPECT_EQ(ColumnTexts(f().MFGrid1, 0).join(QString()), QString());
}

TEST_F(PlaylistModeTest, ArtistSelectionMarksEverySongOfTheArtistAndInThePlaylistTurnsOnRandom) {
    StartWith();
    f().MFGrid1.SetRow(3);  // Cher
    h.Click("Command6");
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 03,Song 06,Song 09"));
    EXPECT_EQ(j().PlaylistEnd, 4);
    EXPECT_EQ(j().PlayMode, j().settings.DirectPlay);
    // It started at once, whatever DirectPlay says, and went over the list once.
    EXPECT_EQ(f().Text1->text(), QStringLiteral("None of the songs of the Playlist could be played; the Playlist has been "
                                                "stopped."));
    // In the playlist the same button and the menus only turn on random.
    j().Mp3Info.DurationSeconds = 200;
    h.Click("SelYear");
    EXPECT_EQ(j().SkipCommand, 4);
    EXPECT_EQ(j().Mp3Info.DurationSeconds, 2);
    EXPECT_EQ(j().PlaylistEnd, 4);
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 03,Song 06,Song 09"));
}

TEST_F(PlaylistModeTest, YearSelectionOnAGridSortedByYearMarksTheGroupAroundTheRow) {
    StartWith();
    // Sorted on the year; the group of 1975 is rows 1 to 4.
    f().MFGrid1.Select(1, 4, 10, 4);
    f().MFGrid1.Sort(1);
    j().grid.SortAtStartCopy = 4;
    f().MFGrid1.SetRow(2);
    h.Click("SelYear");
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 01,Song 02,Song 03,Song 04"));
}

}  // namespace
}  // namespace zor::testing
