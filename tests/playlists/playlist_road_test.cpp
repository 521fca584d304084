// Playlists the whole way through the menus: marked, saved, cleared, opened
// and played, as the fake player's opens show; then the list's loop: its
// buttons and clicks, random order, and a list whose songs are all missing.
#include "playlists/ui/playlist_mode.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_test.h"
#include "tests/support/grid_columns.h"
#include "tests/support/song_bytes.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

#include <map>

namespace zor::testing {
namespace {

struct PlaylistRoadTest : FormTest {
    QStringList paths;
    QStringList opened;  // the songs the player opened, in order
    int stopAfter = 0;   // Halt1 once this many songs have started
    std::map<int, std::function<void()>> onSong;  // runs when song n (from 1) has started
    // Songs on disk under these names, the catalogue in their order.
    void StartWith(const QStringList& names) {
        std::vector<SongFields> songs;
        for (const QString& name : names) {
            paths << h.inst.home + u'/' + name;
            ASSERT_TRUE(WriteFileBytes(paths.last(), SilentSong96(65)));
            songs.push_back({name.section(u'-', 1).chopped(4).trimmed(), name.section(u'-', 0, 0).trimmed(), "", "1979",
                             "Pop", paths.last()});
        }
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), songs);
        h.inst.EditSettings([](Settings& s) {
            s.SortAtStart = 0;  // the catalogue in table order
            s.DirectPlay = 2;   // a list is shown; Open2 starts it
            s.LogActivity = 1;
            s.PlayerChoice = 4;
            s.FastPc = 1;
            s.ShowLyricsAtPlay = s.ShowPictureAtPlay = 0;
        });
        ASSERT_TRUE(h.Start());
        for (const QString& path : paths) h.inst.tp.players.durations[path] = 65;
        h.inst.tp.events.onDoEvents = [this](int) { Watch(); };
    }
    // n songs, all marked in the catalogue's order, the list shown.
    void MakeList(int n) {
        QStringList names;
        for (int i = 1; i <= n; ++i) names << QStringLiteral("Band - Song %1.mp3").arg(i);
        StartWith(names);
        for (int r = 1; r <= n; ++r) MarkForPlaylist(f(), {r});
        h.Click("Playlist2");
    }
    // The scratch file that frees a song is not a song.
    void Watch() {
        QStringList now;
        for (FakeMediaPlayer* p : h.inst.tp.players.made)
            for (const QString& call : p->calls)
                if (call.startsWith(QStringLiteral("Open ")) && !call.endsWith(QStringLiteral("ZOR3.mp3")))
                    now << call.mid(5);
        while (opened.size() < now.size()) {
            opened << now[opened.size()];
            auto action = onSong.find(int(opened.size()));
            if (action != onSong.end()) action->second();
        }
        if (stopAfter > 0 && opened.size() >= stopAfter && j().PlayStopped == 0) h.Click("Halt1");
    }
    QList<int> PlayedRows() {
        QList<int> rows;
        for (const QString& p : opened) rows << int(paths.indexOf(p)) + 1;
        return rows;
    }
    // The user picks this name, and this filter, in the dialog the control opens.
    void Choose(const char* control, const QString& name, int filter = 1) {
        h.inst.tp.dialog.names = {name};
        h.inst.tp.dialog.filterChoices = {filter};
        h.Click(control);
    }
};

TEST_F(PlaylistRoadTest, AZplPlaylistSavedClearedOpenedAndStartedPlaysItsSongs) {
    StartWith({"ABBA - Waterloo.mp3", "Queen - Bohemian Rhapsody.mp3", "Cher - Believe.mp3"});
    MarkForPlaylist(f(), {3, 1});
    h.Click("Playlist2");
    // Typed without an extension: the dialog's filter gives it ".zpl",
    // so that the open dialog's filter shows it.
    Choose("Save4", h.inst.File(QStringLiteral("mylist")));
    ASSERT_TRUE(QFile::exists(h.inst.File(QStringLiteral("mylist.zpl"))));
    h.Click("Playlist3");
    h.Click("Playlist4");
    ASSERT_EQ(j().PlaylistActive, 0);
    stopAfter = 2;
    Choose("Open2", h.inst.File(QStringLiteral("mylist.zpl")));
    EXPECT_EQ(opened, (QStringList{paths[2], paths[0]}));
    EXPECT_TRUE(h.boxes().shown.empty());
    // The cells keep their fields' blanks; the screen does not show them.
    EXPECT_EQ(f().MFgrid2.TextMatrix(1, 4), QStringLiteral("1979 "));
    EXPECT_EQ(f().MFgrid2View->model()->index(0, 4).data().toString(), QStringLiteral("1979"));
    // A name typed with an extension keeps it; the filter of every file adds none.
    Choose("Save4", h.inst.File(QStringLiteral("other.list")));
    Choose("Save4", h.inst.File(QStringLiteral("plain")), 2);
    EXPECT_TRUE(QFile::exists(h.inst.File(QStringLiteral("other.list"))));
    EXPECT_TRUE(QFile::exists(h.inst.File(QStringLiteral("plain"))));
}

TEST_F(PlaylistRoadTest, AnM3uWrittenFromAReopenedListCarriesNoPaddingReadsBackAsNoListAndItsEntriesPlay) {
    StartWith({"Caf\u00e9 Trio - Zo\u00eb.mp3", "ABBA - Waterloo.mp3"});
    MarkForPlaylist(f(), {2, 1});
    h.Click("Playlist2");
    Choose("Save4", h.inst.File(QStringLiteral("two.zpl")));
    Choose("Command3", h.inst.File(QStringLiteral("two.zpl")));  // the playlist's OPEN
    ASSERT_EQ(f().MFgrid2.TextMatrix(1, 6).size(), 100);  // padded, as read
    const QString m3u = h.inst.File(QStringLiteral("two.m3u"));
    Choose("Save5", m3u);
    EXPECT_EQ(h.inst.tp.dialog.calls.back().title, QStringLiteral("ZOR JUKEBOX: Save Playlist in m3u format"));
    EXPECT_EQ(h.inst.tp.dialog.calls.back().filter,
              QStringLiteral("WinAmp, Live365 etc. Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*"));
    const QByteArray bytes = FileBytes(m3u);
    QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray& line : lines)  // the lengths are the analyser's
        if (line.startsWith("#EXTINF:")) line = "#EXTINF:" + line.mid(line.indexOf(','));
    // UTF-8, as the names are on this system's disk.
    EXPECT_EQ(lines, (QList<QByteArray>{"#EXTM3U\r", "#EXTINF:,Waterloo\r", paths[1].toUtf8() + '\r', "#EXTINF:,Zo\xC3\xAB\r",
                                        paths[0].toUtf8() + '\r', ""}));
    EXPECT_EQ(f().ProgressBar1->value(), f().ProgressBar1->maximum());
    // Read back, its header is a path that cannot be split: no list, and not a word.
    h.Click("Playlist4");
    Choose("Open2", m3u);
    EXPECT_EQ(j().PlaylistActive, 0);
    EXPECT_EQ(f().MFGrid1.Rows(), 1);
    EXPECT_TRUE(f().MFGrid1.Visible() && h.boxes().shown.empty() && opened.isEmpty());
    // Without the header line, as another player's list: read and played.
    const QString foreign = h.inst.File(QStringLiteral("foreign.m3u"));
    ASSERT_TRUE(WriteFileBytes(foreign, bytes.mid(bytes.indexOf('\n') + 1)));
    stopAfter = 2;
    Choose("Open2", foreign);
    EXPECT_EQ(opened, (QStringList{paths[1], paths[0]}));
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 2), (QStringList{"ABBA", "Caf\u00e9 Trio"}));
    EXPECT_EQ(f().MFGrid1.Rows(), 3);  // the list's rows in place of the catalogue's
}

TEST_F(PlaylistRoadTest, AZplFromWindowsFindsItsDriveLetterSongsInTheHomeDirectoryAndHandsThemOnSo) {
    StartWith({"ABBA - Waterloo.mp3"});
    MarkForPlaylist(f(), {1});
    h.Click("Playlist2");
    const QString zpl = h.inst.File(QStringLiteral("old.zpl"));
    Choose("Save4", zpl);
    h.Click("Playlist4");
    // The list as the jukebox wrote it on Windows: the song on drive D.
    QByteArray record = FileBytes(zpl);
    const QByteArray windowsPath = "D:\\ABBA - Waterloo.mp3";
    record.replace(140, 100, windowsPath + QByteArray(100 - windowsPath.size(), ' '));
    ASSERT_TRUE(WriteFileBytes(zpl, record));

    stopAfter = 1;
    Choose("Open2", zpl);
    EXPECT_EQ(opened, (QStringList{paths[0]}));
    EXPECT_TRUE(h.boxes().shown.empty());
    // Another program gets the song where it lies on this machine.
    const QString m3u = h.inst.File(QStringLiteral("old.m3u"));
    Choose("Save5", m3u);
    EXPECT_TRUE(FileBytes(m3u).contains("\r\n" + paths[0].toUtf8() + "\r\n"));
}

TEST_F(PlaylistRoadTest, AListOfMissingSongsLetsEventsThroughAndEndsAfterAWholePassInEitherOrder) {
    StartWith({"ABBA - Waterloo.mp3", "Cher - Believe.mp3", "Queen - Bohemian Rhapsody.mp3"});
    MarkForPlaylist(f(), {1, 2, 3});
    h.Click("Playlist2");
    for (const QString& path : paths) QFile::remove(path);
    const QString log = h.inst.File(QStringLiteral("ZORjuke.log"));
    for (const int16_t order : {0, 4}) {
        SCOPED_TRACE(order);
        QFile::remove(log);
        const int eventsBefore = h.inst.tp.events.calls;
        // A list that does not end by itself is stopped here, and fails.
        h.inst.tp.events.onDoEvents = [this](int calls) {
            if (calls > 10000) j().PlayStopped = 1;
        };
        j().SkipCommand = order;
        j().PlaylistPosition = 1;
        j().PlayStopped = 0;
        f().Run(RunPlaylist);
        EXPECT_EQ(f().Text1->text(), QStringLiteral("None of the songs of the Playlist could be played; the Playlist has been "
                                                    "stopped."));
        EXPECT_EQ(FileBytes(log).count("\r\n"), 3);  // one try a song
        EXPECT_GE(h.inst.tp.events.calls - eventsBefore, 3);
    }
    // Stop reaches the loop between two missing songs; Dutch says why it ended.
    h.inst.tp.events.onDoEvents = [this](int) { h.Click("Halt1"); };
    j().SkipCommand = 4;
    j().PlayStopped = 0;
    f().ShowMessage(kYellow, QString());
    f().Run(RunPlaylist);
    EXPECT_EQ(f().Text1->text(), QString());
    h.inst.tp.events.onDoEvents = nullptr;
    j().Language = QStringLiteral("0");
    j().PlayStopped = 0;
    f().Run(RunPlaylist);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Geen enkele song van de Playlist kon worden gespeeld; de Playlist is gestopt."));
}

TEST_F(PlaylistRoadTest, TheListPlaysInOrderAndAfterTheLastStartsAgainWithABeep) {
    MakeList(3);
    stopAfter = 5;
    h.Click("Command9");  // NEXT starts a list that stood still
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 3, 1, 2}));
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(f().Text2->text(), QStringLiteral("2"));
}

TEST_F(PlaylistRoadTest, TheTransportButtonsSteerTheSongAfterTheOneThatPlays) {
    MakeList(3);
    onSong[1] = [this] { h.Click("Command9"); };  // NEXT
    onSong[2] = [this] { h.Click("Command1"); };  // BACK
    onSong[3] = [this] { h.Click("Command8"); };  // REPEAT
    onSong[4] = [this] { h.Click("Command1"); };  // BACK at row 1: a beep
    stopAfter = 6;
    j().PlaylistPosition = 1;
    j().PlayStopped = 0;
    f().Run(RunPlaylist);
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 1, 1, 1, 2}));
    EXPECT_EQ(h.inst.tp.beeper.beeps, 1);
}

TEST_F(PlaylistRoadTest, AOneSongListWrapsToItselfBeepsOnBackAndIgnoresRandomAndEarlyButtonsDoNotCut) {
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

TEST_F(PlaylistRoadTest, RandomOrderDrawsEveryRowOnceStaysOnAndAClickOnThePlayingRowDoesNotBringItAgain) {
    MakeList(3);
    onSong[1] = [this] { h.Click("SelArt1"); };
    onSong[2] = [this] {
        // In order the clicked row would come next; the draw has had it.
        f().MFgrid2.SetRow(PlayedRows().last());
        ClickPlaylistGrid(f());
    };
    stopAfter = 4;
    h.Click("Command9");
    ASSERT_EQ(opened.size(), 4);
    const QList<int> rows = PlayedRows();
    // The three picks after the first song are the three rows, each once.
    EXPECT_EQ(QSet<int>(rows.begin() + 1, rows.end()), (QSet<int>{1, 2, 3}));
    EXPECT_EQ(j().SkipCommand, 4);
}

TEST_F(PlaylistRoadTest, ADoubleClickPlaysRowOneUnlessTheMixerTakesTheRowAndAClickPlaysItsRowNext) {
    MakeList(5);
    QStringList mixer;
    j().LoadRowIntoMixer = [&](SongGrid& g) { mixer << QStringLiteral("load %1").arg(g.Row()); };
    j().BringUpMixer = [&] { mixer << QStringLiteral("up"); };
    j().engine.MixerOpen = 1;
    f().MFgrid2.SetRow(5);
    emit f().MFgrid2View->DblClick();
    ClickPlaylistGrid(f());
    EXPECT_EQ(mixer, (QStringList{QStringLiteral("load 5"), QStringLiteral("up")}));
    EXPECT_TRUE(opened.isEmpty());
    j().engine.MixerOpen = 0;
    onSong[1] = [this] {
        f().MFgrid2.SetRow(4);
        ClickPlaylistGrid(f());
    };
    stopAfter = 2;
    emit f().MFgrid2View->DblClick();
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 4}));
}

TEST_F(PlaylistRoadTest, EscCutsOnlyTheSongThatPlaysAndTheListGoesOn) {
    MakeList(3);
    onSong[1] = [this] { QTest::keyClick(&f(), Qt::Key_Escape); };
    stopAfter = 3;
    const double start = h.inst.tp.clock.timer;
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 3}));
    EXPECT_LT(h.inst.tp.clock.timer - start, 65 + 10);  // the first song was cut
    EXPECT_EQ(h.inst.tp.process.ends, 0);
}

TEST_F(PlaylistRoadTest, ALoopStartedInsideAnotherEndsItWhenStopped) {
    MakeList(3);
    // A double click while song 2 plays starts a second loop from row 1.
    onSong[2] = [this] { emit f().MFgrid2View->DblClick(); };
    stopAfter = 4;
    h.Click("Command9");
    EXPECT_EQ(PlayedRows(), (QList<int>{1, 2, 1, 2}));
    EXPECT_EQ(j().PlayStopped, 1);
}

TEST_F(PlaylistRoadTest, TheRandomPickAfterTheThousandAndFirstEndsInARunTimeErrorBox) {
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
