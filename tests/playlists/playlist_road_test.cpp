// Playlists followed the whole way through the program's own operations:
// songs marked in MFGrid1, saved through the menu, the playlist cleared,
// the file opened through the menu and the list played, as the fake player's
// opens show. Then the lists that cannot play: every song missing, and the
// program's own M3U read back.
#include "playlists/ui/playlist_files.h"
#include "playlists/ui/playlist_mode.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"
#include "tests/support/song_bytes.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

struct PlaylistRoadTest : ::testing::Test {
    FormHarness h;
    QStringList paths;
    QStringList opened;  // the songs the player opened, in order
    int stopAfter = 0;   // Halt1 once this many songs have started
    Form1& f() { return h.form(); }
    Jukebox& j() { return h.j(); }

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
    void Watch() {
        opened.clear();
        for (FakeMediaPlayer* p : h.inst.tp.players.made)
            for (const QString& call : p->calls)
                if (call.startsWith(QStringLiteral("Open ")) && !call.endsWith(QStringLiteral("ZOR3.mp3")))
                    opened << call.mid(5);
        if (stopAfter > 0 && opened.size() >= stopAfter && j().PlayStopped == 0) h.Click("Halt1");
    }
    // The PLAY column's click on catalogue rows, in this order.
    void Mark(std::initializer_list<int> rows) {
        for (int r : rows) {
            const QString mark = QString::number(j().PlaylistEnd++);
            f().MFGrid1.SetTextMatrix(r, 0, mark);
            f().MFGrid1.SetTextMatrix(r, 12, mark);
        }
    }
    void ChooseInDialog(const QString& name, int filter = 1) {
        h.inst.tp.dialog.names = {name};
        h.inst.tp.dialog.filterChoices = {filter};
    }
    QString DisplayOf(const SongGridView& view, int row, int col) {
        return view.model()->index(row - 1, col).data().toString();
    }
};

TEST_F(PlaylistRoadTest, AZplPlaylistSavedClearedOpenedAndStartedPlaysItsSongs) {
    StartWith({"ABBA - Waterloo.mp3", "Queen - Bohemian Rhapsody.mp3", "Cher - Believe.mp3"});
    Mark({3, 1});
    h.Click("Playlist2");
    // Typed without an extension: the dialog's filter gives it ".zpl",
    // so that the open dialog's filter shows it.
    ChooseInDialog(h.inst.File(QStringLiteral("mylist")));
    h.Click("Save4");
    ASSERT_TRUE(QFile::exists(h.inst.File(QStringLiteral("mylist.zpl"))));
    h.Click("Playlist3");
    h.Click("Playlist4");
    ASSERT_EQ(j().PlaylistActive, 0);

    stopAfter = 3;
    ChooseInDialog(h.inst.File(QStringLiteral("mylist.zpl")));
    h.Click("Open2");
    EXPECT_EQ(opened, (QStringList{paths[2], paths[0], paths[2]}));
    EXPECT_TRUE(h.boxes().shown.empty());
    // The cells keep their fields' blanks; the screen does not show them.
    EXPECT_EQ(f().MFgrid2.TextMatrix(1, 4), QStringLiteral("1979 "));
    EXPECT_EQ(DisplayOf(*f().MFgrid2View, 1, 4), QStringLiteral("1979"));
    EXPECT_EQ(DisplayOf(*f().MFgrid2View, 2, 1), QStringLiteral("Waterloo"));
    EXPECT_EQ(f().MFgrid2.TextMatrix(2, 1).size(), 40);

    // A name typed with an extension keeps it; the filter of every file adds none.
    ChooseInDialog(h.inst.File(QStringLiteral("other.list")));
    h.Click("Save4");
    ChooseInDialog(h.inst.File(QStringLiteral("plain")), 2);
    h.Click("Save4");
    EXPECT_TRUE(QFile::exists(h.inst.File(QStringLiteral("other.list"))));
    EXPECT_TRUE(QFile::exists(h.inst.File(QStringLiteral("plain"))));
}

TEST_F(PlaylistRoadTest, AnM3uWrittenFromAReopenedListCarriesNoPaddingAndItsEntriesPlayBack) {
    StartWith({"Caf\u00e9 Trio - Zo\u00eb.mp3", "ABBA - Waterloo.mp3"});
    Mark({1, 2});
    h.Click("Playlist2");
    ChooseInDialog(h.inst.File(QStringLiteral("two.zpl")));
    h.Click("Save4");
    ChooseInDialog(h.inst.File(QStringLiteral("two.zpl")));
    f().Run(OpenPlaylistFile);
    ASSERT_EQ(f().MFgrid2.TextMatrix(1, 6).size(), 100);  // padded, as read

    const QString m3u = h.inst.File(QStringLiteral("two.m3u"));
    ChooseInDialog(m3u);
    h.Click("Save5");
    const QByteArray bytes = FileBytes(m3u);
    QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray& line : lines)
        if (line.startsWith("#EXTINF:")) line = "#EXTINF:" + line.mid(line.indexOf(','));
    // UTF-8, as the names are on this system's disk.
    EXPECT_EQ(lines, (QList<QByteArray>{"#EXTM3U\r", "#EXTINF:,Zo\xC3\xAB\r", paths[0].toUtf8() + '\r', "#EXTINF:,Waterloo\r",
                                        paths[1].toUtf8() + '\r', ""}));

    // The entries as another player's list, without the header line, are
    // read into the playlist and played.
    h.Click("Playlist4");
    const QString foreign = h.inst.File(QStringLiteral("foreign.m3u"));
    ASSERT_TRUE(WriteFileBytes(foreign, bytes.mid(bytes.indexOf('\n') + 1)));
    stopAfter = 2;
    ChooseInDialog(foreign);
    h.Click("Open2");
    EXPECT_EQ(opened, paths);
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 2), (QStringList{"Caf\u00e9 Trio", "ABBA"}));
}

TEST_F(PlaylistRoadTest, AZplFromWindowsFindsItsDriveLetterSongsInTheHomeDirectoryAndHandsThemOnSo) {
    StartWith({"ABBA - Waterloo.mp3"});
    Mark({1});
    h.Click("Playlist2");
    const QString zpl = h.inst.File(QStringLiteral("old.zpl"));
    ChooseInDialog(zpl);
    h.Click("Save4");
    h.Click("Playlist4");
    // The list as the jukebox wrote it on Windows: the song on drive D.
    QByteArray record = FileBytes(zpl);
    const QByteArray windowsPath = "D:\\ABBA - Waterloo.mp3";
    record.replace(140, 100, windowsPath + QByteArray(100 - windowsPath.size(), ' '));
    ASSERT_TRUE(WriteFileBytes(zpl, record));

    stopAfter = 1;
    ChooseInDialog(zpl);
    h.Click("Open2");
    EXPECT_EQ(opened, (QStringList{paths[0]}));
    EXPECT_TRUE(h.boxes().shown.empty());
    // Another program gets the song where it lies on this machine.
    const QString m3u = h.inst.File(QStringLiteral("old.m3u"));
    ChooseInDialog(m3u);
    h.Click("Save5");
    EXPECT_TRUE(FileBytes(m3u).contains("\r\n" + paths[0].toUtf8() + "\r\n"));
}

TEST_F(PlaylistRoadTest, ReadingTheProgramsOwnM3uEndsSilentlyWithNoPlaylist) {
    StartWith({"ABBA - Waterloo.mp3", "Cher - Believe.mp3"});
    Mark({2, 1});
    h.Click("Playlist2");
    const QString m3u = h.inst.File(QStringLiteral("own.m3u"));
    ChooseInDialog(m3u);
    h.Click("Save5");
    h.Click("Playlist4");
    Mark({1});  // a mark left in the catalogue is no playlist either
    ChooseInDialog(m3u);
    h.Click("Open2");
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(j().PlaylistActive, 0);
    EXPECT_EQ(j().PlaylistEnd, 1);
    EXPECT_EQ(f().MFGrid1.Rows(), 1);  // no row holds the header line
    EXPECT_TRUE(f().MFGrid1.Visible());
}

TEST_F(PlaylistRoadTest, AListOfMissingSongsLetsEventsThroughAndEndsAfterAWholePassInEitherOrder) {
    StartWith({"ABBA - Waterloo.mp3", "Cher - Believe.mp3", "Queen - Bohemian Rhapsody.mp3"});
    Mark({1, 2, 3});
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
        EXPECT_EQ(j().PlayStopped, 1);
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

}  // namespace
}  // namespace zor::testing
