// The playlist mode: the random history and the field walks on their own,
// then the mode's change, the making of the list and its clicks through the
// main window on a real catalogue.
#include "playlists/field_selection.h"
#include "playlists/random_history.h"
#include "playlists/ui/playlist_mode.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"
#include "tests/support/song_bytes.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

#include <deque>
#include <map>

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

struct PlaylistModeTest : ::testing::Test {
    FormHarness h;
    Form1& f() { return h.form(); }
    Jukebox& j() { return h.j(); }
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
        // and lets events through at its end, where this stops it.
        h.inst.tp.events.onDoEvents = [this](int) { j().PlayStopped = 1; };
    }
    // Marks the rows in this order, as the PLAY column's click writes them.
    void Mark(std::initializer_list<int> rows) {
        for (int r : rows) {
            const QString mark = QString::number(j().PlaylistEnd++);
            f().MFGrid1.SetTextMatrix(r, 0, mark);
            f().MFGrid1.SetTextMatrix(r, 12, mark);
        }
    }
    QAction* Action(const char* name) { return f().findChild<QAction*>(QString::fromLatin1(name)); }
    QString Titles(const SongGrid& g) { return ColumnTexts(g, 1).join(u','); }
};

TEST_F(PlaylistModeTest, ShowingThePlaylistCopiesTheMarksInTheirOrderAndTurnsTheBar) {
    StartWith();
    Mark({7, 2, 9});
    h.Click("Playlist2");
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 07,Song 02,Song 09"));
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 12), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(f().MFgrid2.TextMatrix(0, 1), QStringLiteral("PLAYLIST: SONG"));
    EXPECT_EQ(f().MFgrid2.TextMatrix(0, 12), QStringLiteral("#"));
    // The catalogue is back in its own order, the marks still in its rows.
    EXPECT_EQ(f().MFGrid1.TextMatrix(0, 1), QStringLiteral("DATABASE: SONG"));
    EXPECT_EQ(f().MFGrid1.TextMatrix(1, 1), QStringLiteral("Song 01"));
    EXPECT_EQ(f().MFGrid1.TextMatrix(7, 0), QStringLiteral("1"));
    EXPECT_EQ(f().MFGrid1.TextMatrix(9, 12), QStringLiteral("3"));
    // Side by side: the list at the left, the catalogue at the right.
    EXPECT_TRUE(f().MFgrid2View->isVisibleTo(&f()));
    EXPECT_LT(f().MFgrid2View->geometry().right(), f().MFGrid1View->x());
    EXPECT_TRUE(f().Frame2->title().contains(QStringLiteral("REPEAT")));
    EXPECT_EQ(f().Command1->text(), QStringLiteral("<<<"));
    EXPECT_EQ(f().Command8->text(), QStringLiteral(" ||||||"));
    EXPECT_TRUE(f().Command8->isEnabled());
    EXPECT_EQ(f().Command7->toolTip(), QStringLiteral("Press this button to go back to normal operation of the Database!"));
    EXPECT_EQ(Action("SelArt1")->text(), QStringLiteral("Play all songs by this artist at random"));
    // Direct help off and on again brings the playlist's tips, not the catalogue's.
    h.Click("DHelp1");
    EXPECT_EQ(f().Command7->toolTip(), QString());
    h.Click("DHelp1");
    EXPECT_EQ(f().Command7->toolTip(), QStringLiteral("Press this button to go back to normal operation of the Database!"));
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist has been made."));
    EXPECT_EQ(f().Text2->text(), QStringLiteral("3"));
    EXPECT_EQ(j().PlayStopped, 1);
    // A mark set now joins the list at once.
    SongGridView& view = *f().MFGrid1View;
    const QModelIndex cell = view.model()->index(4 - 1, 12);
    view.scrollTo(cell);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(cell).center());
    EXPECT_EQ(Titles(f().MFgrid2), QStringLiteral("Song 07,Song 02,Song 09,Song 04"));
}

TEST_F(PlaylistModeTest, ShowOnlyReportsNotStartedAndKeepsPlayModeAtZero) {
    StartWith();
    Mark({3});
    j().PlayMode = 0;
    EnterPlaylistMode(f());
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Songs selected, but Playlist not yet started."));
    EXPECT_EQ(j().PlayMode, 0);
}

TEST_F(PlaylistModeTest, WithoutMarksTheWindowStaysSplitUntilCommand7LeavesIt) {
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
    EXPECT_TRUE(f().Command1->text().isEmpty());

    h.Click("Command7");
    EXPECT_EQ(j().PlaylistActive, 0);
    EXPECT_FALSE(f().MFgrid2View->isVisibleTo(&f()));
    EXPECT_EQ(f().MFGrid1View->width(), j().shell.ScreenWidthPx - 16);
    EXPECT_TRUE(f().Frame2->title().contains(QStringLiteral("ARTIEST")));
}

TEST_F(PlaylistModeTest, LeavingRestoresTheCatalogueBarInItsLanguageAndClearsTheMarks) {
    StartWith(QStringLiteral("0"));
    Mark({5, 6});
    h.Click("Playlist2");
    EXPECT_TRUE(f().Frame2->title().contains(QStringLiteral("HERHAAL")));
    h.Click("Playlist4");
    EXPECT_EQ(f().Frame2->title(),
              QStringLiteral("     OPEN           BEWAAR          ERBIJ            ZOEK           BEWERK     INSTELLINGEN  "
                             "PLAYLIST     ARTIEST             EINDE        "));
    EXPECT_TRUE(f().Command9->text().isEmpty());
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
    // It started at once, whatever DirectPlay says, and went round once.
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);

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

// ---- The loop ------------------------------------------------------------------

struct RunPlaylistTest : PlaylistModeTest {
    QStringList paths;
    QStringList played;  // the songs the player opened, in order
    std::map<int, std::function<void()>> onSong;  // runs when song n (from 1) has started

    // n songs on disk, all marked in the catalogue's order, the list shown.
    void MakeList(int n) {
        std::vector<SongFields> songs;
        for (int i = 1; i <= n; ++i) {
            paths << h.inst.home + QStringLiteral("/song%1.mp3").arg(i);
            ASSERT_TRUE(WriteFileBytes(paths.last(), SilentSong96(65)));
            songs.push_back(Song(i, QStringLiteral("Band"), QStringLiteral("1980"), paths.last()));
        }
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), songs);
        h.inst.EditSettings([](Settings& s) {
            s.SortAtStart = 1;
            s.DirectPlay = 2;
            s.PlayerChoice = 4;  // the internal player
        });
        ASSERT_TRUE(h.Start());
        for (int r = 1; r <= n; ++r) Mark({r});
        h.Click("Playlist2");
        for (const QString& path : paths) h.inst.tp.players.durations[path] = 65;
        h.inst.tp.events.onDoEvents = [this](int) { Watch(); };
    }
    // Follows the player's opens; the scratch file that frees a song is not
    // a song.
    void Watch() {
        QStringList opened;
        for (FakeMediaPlayer* p : h.inst.tp.players.made)
            for (const QString& call : p->calls)
                if (call.startsWith(QStringLiteral("Open ")) && !call.endsWith(QStringLiteral("ZOR3.mp3")))
                    opened << call.mid(5);
        while (played.size() < opened.size()) {
            played << opened[played.size()];
            auto action = onSong.find(int(played.size()));
            if (action != onSong.end()) action->second();
        }
    }
    QList<int> PlayedRows() {
        QList<int> rows;
        for (const QString& p : played) rows << int(paths.indexOf(p)) + 1;
        return rows;
    }
    void StopAt(int song) { onSong[song] = [this] { h.Click("Halt1"); }; }
};

TEST_F(RunPlaylistTest, TheListPlaysInOrderAndAfterTheLastStartsAgainWithABeep) {
    MakeList(3);
    StopAt(5);
    h.Click("Command9");  // NEXT starts a list that stood still
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 3, 1, 2}));
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(f().Text2->text(), QStringLiteral("2"));
}

TEST_F(RunPlaylistTest, TheTransportButtonsSteerTheSongAfterTheOneThatPlays) {
    MakeList(3);
    onSong[1] = [this] { h.Click("Command9"); };  // NEXT
    onSong[2] = [this] { h.Click("Command1"); };  // BACK
    onSong[3] = [this] { h.Click("Command8"); };  // REPEAT
    onSong[4] = [this] { h.Click("Command1"); };  // BACK at row 1: a beep
    StopAt(6);
    j().PlaylistPosition = 1;
    j().PlayStopped = 0;
    f().Run(RunPlaylist);
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 1, 1, 1, 2}));
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
}

TEST_F(RunPlaylistTest, RandomOrderDrawsEveryRowOnceBeforeAnyComesAgainAndStaysOn) {
    MakeList(3);
    onSong[1] = [this] { h.Click("SelArt1"); };
    StopAt(4);
    h.Click("Command9");
    ASSERT_EQ(played.size(), 4);
    const QList<int> rows = PlayedRows();
    // The three picks after the first song are the three rows, each once.
    EXPECT_EQ(QSet<int>(rows.begin() + 1, rows.end()), (QSet<int>{1, 2, 3}));
    EXPECT_EQ(j().SkipCommand, 4);
}

TEST_F(RunPlaylistTest, AOneSongListWrapsToItselfBeepsOnBackAndIgnoresRandomAndEarlyButtonsDoNotCut) {
    MakeList(1);
    std::vector<double> starts;
    auto at = [&](const char* control) {
        return [this, &starts, control] {
            starts.push_back(h.inst.tp.clock.timer);
            h.Click(control);
        };
    };
    onSong[1] = at("Command9");  // NEXT, in the song's first second
    onSong[2] = at("Command1");  // BACK
    onSong[3] = at("SelArt1");   // random order
    onSong[4] = at("Halt1");
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(h.inst.tp.beeper.beeps, 2);  // the wrap after NEXT, BACK at row 1; random draws nothing
    EXPECT_EQ(j().SkipCommand, 4);
    // A button in the first seconds is overtaken by the player's length:
    // each song still plays its minute.
    ASSERT_EQ(starts.size(), 4u);
    for (size_t i = 1; i < starts.size(); ++i) EXPECT_GT(starts[i] - starts[i - 1], 60) << i;
}

TEST_F(RunPlaylistTest, InRandomOrderAClickCutsTheSongButTheNextIsStillDrawn) {
    MakeList(5);
    onSong[1] = [this] { h.Click("SelArt1"); };
    int clicked = 0;
    onSong[2] = [&] {
        // The row that plays: in order it would come next, but the
        // random draw has had it in this run and passes it over.
        clicked = PlayedRows().last();
        f().MFgrid2.SetRow(clicked);
        ClickPlaylistGrid(f());
    };
    StopAt(3);
    h.Click("Command9");
    ASSERT_EQ(played.size(), 3);
    EXPECT_NE(PlayedRows()[2], clicked);
    EXPECT_EQ(j().SkipCommand, 4);
}

TEST_F(RunPlaylistTest, AClickOnARowCutsTheSongAndPlaysThatRowNext) {
    MakeList(5);
    onSong[1] = [this] {
        f().MFgrid2.SetRow(4);
        ClickPlaylistGrid(f());
    };
    StopAt(2);
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 4}));
}

TEST_F(RunPlaylistTest, ADoubleClickOnRowFivePlaysRowOneUnlessTheMixerTakesTheRow) {
    MakeList(5);
    QStringList mixer;
    j().LoadRowIntoMixer = [&](SongGrid& g) { mixer << QStringLiteral("load %1").arg(g.Row()); };
    j().BringUpMixer = [&] { mixer << QStringLiteral("up"); };
    j().engine.MixerOpen = 1;
    f().MFgrid2.SetRow(5);
    emit f().MFgrid2View->DblClick();
    ClickPlaylistGrid(f());
    EXPECT_EQ(mixer, (QStringList{QStringLiteral("load 5"), QStringLiteral("up")}));
    EXPECT_TRUE(played.isEmpty());

    j().engine.MixerOpen = 0;
    StopAt(1);
    emit f().MFgrid2View->DblClick();
    EXPECT_EQ(PlayedRows(), (QList<int>{1}));
}

TEST_F(RunPlaylistTest, EscCutsOnlyTheSongThatPlaysAndTheListGoesOn) {
    MakeList(3);
    onSong[1] = [this] { QTest::keyClick(&f(), Qt::Key_Escape); };
    StopAt(3);
    const double start = h.inst.tp.clock.timer;
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 3}));
    EXPECT_LT(h.inst.tp.clock.timer - start, 65 + 10);  // the first song was cut
    EXPECT_EQ(h.inst.tp.process.ends, 0);
}

TEST_F(RunPlaylistTest, ALoopStartedInsideAnotherEndsItWhenStopped) {
    MakeList(3);
    // A double click while song 2 plays starts a second loop from row 1.
    onSong[2] = [this] { emit f().MFgrid2View->DblClick(); };
    StopAt(4);
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 1, 2}));
    EXPECT_EQ(j().PlayStopped, 1);
}

TEST_F(RunPlaylistTest, TheRandomPickAfterTheThousandAndFirstEndsInARunTimeErrorBox) {
    MakeList(1);
    // A list of 1,100 rows whose songs are not on disk: each is passed over
    // at once and the next drawn.
    SongGrid& list = f().MFgrid2;
    list.SetRows(1101);
    for (int r = 1; r <= 1100; ++r) list.SetTextMatrix(r, 6, QStringLiteral("/nowhere/%1.mp3").arg(r));
    j().PlaylistEnd = 1101;
    j().SkipCommand = 4;
    j().PlaylistPosition = 1;
    j().PlayStopped = 0;
    h.boxes().shown.clear();
    f().Run(RunPlaylist);
    ASSERT_FALSE(h.boxes().shown.empty());
    EXPECT_EQ(h.boxes().shown.back().text, QStringLiteral("Run-time error '9':\n\nSubscript out of range"));
    EXPECT_EQ(j().SkipCommand, 4);
}

}  // namespace
}  // namespace zor::testing
