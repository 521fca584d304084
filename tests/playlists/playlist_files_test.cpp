// The playlist files through the main window: saving MFgrid2 as .zpl,
// opening both kinds, the boxes of the dialogs' Cancel and the refused
// saves, and a real player reading the M3U files the jukebox writes. The
// M3U writer's road through the menus is in playlist_road_test.cpp.
#include "playlists/ui/playlist_files.h"
#include "platform/cp1252.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QByteArray Padded(const QString& text, int width) { return cp1252::Encode(text).leftJustified(width, ' ', true); }

// Every field filled, so a record shows each one in its place.
SongFields Song(const QString& title, const QString& artist, const QString& path) {
    return {title, artist, QStringLiteral("Album of ") + artist, "1979", "Pop", path, "ID3", "lyrics.txt", "picture.jpg", "run.sh"};
}

// The record of a song as the file must hold it, laid out by hand.
QByteArray Record(const SongFields& s, const QByteArray& reserved = QByteArray(60, '\0')) {
    return Padded(s[0], 40) + Padded(s[1], 40) + Padded(s[2], 40) + Padded(s[3], 5) + Padded(s[6], 5) +
           Padded(s[4], 10) + Padded(s[5], 100) + Padded(s[8], 100) + Padded(s[7], 100) + Padded(s[9], 100) + reserved;
}

struct PlaylistFilesTest : ::testing::Test {
    FormHarness h;
    std::vector<SongFields> songs;
    Form1& f() { return h.form(); }
    Jukebox& j() { return h.j(); }
    FakeCommonDialog& dialog() { return h.inst.tp.dialog; }
    QString File(const char* name) { return h.inst.File(QString::fromLatin1(name)); }
    void StartWith(std::vector<SongFields> catalogue) {
        songs = std::move(catalogue);
        TestInstallation::AddSongs(File("Mp3data1.mdb"), songs);
        h.inst.EditSettings([&](Settings& s) {
            s.SortAtStart = 1;
            s.SortDirection = 1;
            s.DirectPlay = 2;  // a playlist is shown, never started
        });
        ASSERT_TRUE(h.Start());
    }
    void StartWithFive() {
        std::vector<SongFields> five;
        for (int n = 1; n <= 5; ++n)
            five.push_back(Song(QStringLiteral("Song %1").arg(n), QStringLiteral("Artist %1").arg(n),
                                QStringLiteral("/music/Artist %1 - Song %1.mp3").arg(n)));
        StartWith(five);
    }
    // Marks catalogue rows in this order and shows them as the playlist.
    void ShowPlaylistOf(std::initializer_list<int> rows) {
        for (int r : rows) {
            const QString mark = QString::number(j().PlaylistEnd++);
            f().MFGrid1.SetTextMatrix(r, 0, mark);
            f().MFGrid1.SetTextMatrix(r, 12, mark);
        }
        h.Click("Playlist2");
        ASSERT_EQ(j().PlaylistActive, 1);
    }
    void SaveAs(const QString& path) {
        dialog().names = {path};
        h.Click("Save4");
    }
    void Open(const QString& path) {
        dialog().names = {path};
        f().Run(OpenPlaylistFile);
    }
    static void WriteFile(const QString& path, const QByteArray& bytes) { ASSERT_TRUE(WriteFileBytes(path, bytes)); }
    QString LastBox() { return h.boxes().shown.empty() ? QString() : h.boxes().shown.back().text; }
};

TEST_F(PlaylistFilesTest, SaveAsWritesEachPlaylistRowAsItsRecordAndSaysSoInGreen) {
    StartWithFive();
    ShowPlaylistOf({4, 2, 5});
    const QString path = File("three.zpl");
    SaveAs(path);
    ASSERT_EQ(dialog().calls.size(), 1u);
    EXPECT_EQ(dialog().calls[0].title, QStringLiteral("ZOR JUKEBOX: Save Playlist As...."));
    EXPECT_EQ(dialog().calls[0].filter, QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|All Files (*.*)|*.*"));
    EXPECT_EQ(dialog().calls[0].initDir, h.inst.programDir + u'/');
    EXPECT_EQ(FileBytes(path), Record(songs[3]) + Record(songs[1]) + Record(songs[4]));
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now saved."));
    EXPECT_EQ(f().MessageColour(), QColor(0, 255, 0));
}

TEST_F(PlaylistFilesTest, AShorterSaveLeavesTheOldTailAndTheReadCarriesReservedBytesIntoTheNextWrite) {
    StartWithFive();
    // Five records whose reserved fields hold text, as another writer left them.
    const QByteArray reserved = Padded(QStringLiteral("RES10"), 10) + Padded(QStringLiteral("RES50"), 50);
    QByteArray five;
    for (const SongFields& s : songs) five += Record(s, reserved);
    const QString path = File("five.zpl");
    WriteFile(path, five + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
    EXPECT_EQ(j().SongCount, 5);
    EXPECT_EQ(f().MFgrid2.Rows(), 6);
    // Three songs over the five: records 4 and 5 stay and come back.
    f().MFgrid2.SetRows(4);
    j().PlaylistEnd = 4;
    SaveAs(path);
    const QByteArray saved = FileBytes(path);
    EXPECT_EQ(saved.size(), five.size() + 26);
    EXPECT_EQ(saved.left(1800), Record(songs[0], reserved) + Record(songs[1], reserved) + Record(songs[2], reserved));
    EXPECT_EQ(saved.mid(1800), five.mid(1800) + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
}

TEST_F(PlaylistFilesTest, OpeningAZplFileTurnsTheWindowToThePlaylistWithTheFieldsBlanksAndAll) {
    StartWithFive();
    const QString path = File("two.zpl");
    WriteFile(path, Record(songs[2]) + Record(songs[0]));
    Open(path);
    EXPECT_EQ(dialog().calls.at(0).filter,
              QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|WinAmp M3U Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*"));
    const SongGrid& list = f().MFgrid2;
    ASSERT_EQ(list.Rows(), 3);
    EXPECT_EQ(list.TextMatrix(1, 1), QString::fromLatin1(Padded(songs[2][0], 40)));
    EXPECT_EQ(list.TextMatrix(2, 6), QString::fromLatin1(Padded(songs[0][5], 100)));
    // The tag flag before the style, the picture before the lyrics.
    EXPECT_EQ(list.TextMatrix(1, 7).trimmed(), QStringLiteral("ID3"));
    EXPECT_EQ(list.TextMatrix(1, 9).trimmed(), QStringLiteral("picture.jpg"));
    EXPECT_EQ(ColumnTexts(list, 12), (QStringList{"1", "2"}));
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(j().PlayMode, 1);
    EXPECT_EQ(j().SongCount, 2);
    EXPECT_TRUE(f().MFGrid1.Visible() && list.Visible());
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now loaded. "));
    EXPECT_EQ(f().Text2->text(), QStringLiteral("3"));  // PlaylistEnd itself
    EXPECT_EQ(j().PlayStopped, 1);  // not started
}

TEST_F(PlaylistFilesTest, EmptyOddAndJunkZplFilesGiveTheirWholeRecordsOnly) {
    StartWithFive();
    const QString empty = File("empty.zpl");
    WriteFile(empty, {});
    Open(empty);
    EXPECT_EQ(j().PlaylistEnd, 1);
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(f().MFgrid2.Rows(), 1);
    // Binary junk of one record and a half, NUL bytes included.
    QByteArray junk(900, '\0');
    for (int i = 0; i < junk.size(); ++i) junk[i] = char((i * 131 + 7) % 256);
    const QString odd = File("junk.zpl");
    WriteFile(odd, junk);
    Open(odd);
    EXPECT_EQ(j().PlaylistEnd, 2);
    EXPECT_EQ(f().MFgrid2.TextMatrix(1, 1), cp1252::Decode(junk.left(40)));
    EXPECT_TRUE(LastBox().isEmpty());
    // A name ending in capitals M3U is read as records too.
    const QString capitals = File("LIST.M3U");
    WriteFile(capitals, Record(songs[0]) + Record(songs[1]) + Record(songs[2]));
    Open(capitals);
    EXPECT_EQ(j().PlaylistEnd, 4);
    // A missing file ends the work with the catalogue hidden, and no box.
    Open(File("gone.zpl"));
    EXPECT_FALSE(f().MFGrid1.Visible());
    EXPECT_TRUE(LastBox().isEmpty());
}

TEST_F(PlaylistFilesTest, AnM3uFileReplacesTheCatalogueRowsAndBecomesThePlaylist) {
    StartWithFive();
    const QString path = File("list.m3u");
    WriteFile(path, "#EXTINF:100,x\r\n/m/Queen - Bohemian Rhapsody.mp3\r\n/m/ABBA - Waterloo.mp3\r\n");
    j().PlayMode = 2;
    Open(path);
    EXPECT_TRUE(f().MFGrid1.Visible());
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(j().PlaylistEnd, 3);
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 2), (QStringList{"Queen", "ABBA"}));
    EXPECT_EQ(ColumnTexts(f().MFgrid2, 1), (QStringList{"Bohemian Rhapsody", "Waterloo"}));
    EXPECT_EQ(f().MFGrid1.Rows(), 3);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist has been made."));
}

TEST_F(PlaylistFilesTest, CancelAndRefusedSavesShowTheirBoxes) {
    StartWithFive();
    const auto expectBox = [&](const char* what, const QString& text) {
        EXPECT_EQ(LastBox(), text) << what;
        EXPECT_EQ(h.boxes().shown.back().flags, vbCritical | vbOKOnly) << what;
    };
    f().Run(OpenPlaylistFile);
    expectBox("open", QStringLiteral("ATTENTION!\n\nYou have not selected a valid   \nPlaylist to be opened!\n\nPlease try again. \n"));
    h.Click("Save4");
    expectBox("save as", QStringLiteral("ATTENTION!\n\nYou have not selected a valid  \nPlaylist name to be saved!     \n\n"
                                        "Please try again.              \n"));
    h.Click("Save5");
    expectBox("m3u", QStringLiteral("ATTENTION!\n\nYou have not selected a valid M3U  \nPlaylist name to be saved!     \n\n"
                                    "Please try again.              \n"));
    h.Click("Save3");
    expectBox("not in playlist", QStringLiteral("ATTENTION!\n\nYou are NOT in Playlist mode!     \n\n"
                                                "Please first make a playlist and  \nthen click the Playlist button.   \n"));
    EXPECT_FALSE(QFile::exists(File("MP3play1.zpl")));
    j().PlaylistActive = 1;
    j().Language = QStringLiteral("0");
    h.Click("Save3");
    expectBox("too short", QStringLiteral("ATTENTIE!\n\nDe Playlist is te kort! \n\nEen normale playlist bestaat minstens  \n"
                                          "uit 2 songs. \nAdvies: voeg songs toe aan de playlist. \n"));
    EXPECT_FALSE(QFile::exists(File("MP3play1.zpl")));
}

TEST_F(PlaylistFilesTest, SavePlaylistWritesTheDefaultFileAndOneSongIsEnough) {
    StartWithFive();
    ShowPlaylistOf({3});
    h.Click("Save3");
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(FileBytes(File("MP3play1.zpl")), Record(songs[2]));
    // In the playlist the open and save buttons work on playlist files.
    const QString path = File("button.zpl");
    dialog().names = {path};
    f().Command4->click();
    EXPECT_EQ(FileBytes(path), Record(songs[2]));
    dialog().names = {File("MP3play1.zpl")};
    f().Command3->click();
    EXPECT_EQ(dialog().calls.back().kind, QStringLiteral("open"));
    EXPECT_EQ(j().PlaylistEnd, 2);
}

// ---- A real player -----------------------------------------------------------

// What an M3U player on this system does with the file: lines in UTF-8,
// comments skipped, each other line a song to play.
QStringList EntriesOf(const QByteArray& m3u) {
    QStringList out;
    for (QByteArray line : m3u.split('\n')) {
        if (line.endsWith('\r')) line.chop(1);
        if (!line.isEmpty() && !line.startsWith('#')) out << QString::fromUtf8(line);
    }
    return out;
}

TEST_F(PlaylistFilesTest, GStreamersPlayerPlaysEverySongOfTheM3uWeWrite) {
    const QString player = QStandardPaths::findExecutable(QStringLiteral("gst-play-1.0"));
    const AudioTools tools;
    if (player.isEmpty() || !tools.Usable()) GTEST_SKIP() << "gst-play-1.0, sox and lame are needed; not found";
    QTemporaryDir music;
    std::vector<SongFields> catalogue;
    for (const QString& name : {QStringLiteral("ABBA - Waterloo.mp3"), QStringLiteral("Zo\u00eb - Caf\u00e9.mp3")}) {
        ASSERT_TRUE(tools.Mp3(music.filePath(name), 0.5));
        catalogue.push_back(Song(name, name, music.filePath(name)));
    }
    StartWith(catalogue);
    ShowPlaylistOf({2, 1});
    const QString path = music.filePath(QStringLiteral("party.m3u"));
    dialog().names = {path};
    h.Click("Save5");
    const QStringList entries = EntriesOf(FileBytes(path));
    ASSERT_EQ(entries.size(), 2);
    QProcess play;
    play.setProcessChannelMode(QProcess::MergedChannels);
    play.start(player, QStringList{"--no-interactive", "--audiosink=fakesink", "--videosink=fakesink"} + entries);
    ASSERT_TRUE(play.waitForFinished(120000));
    const QString out = QString::fromUtf8(play.readAll());
    EXPECT_EQ(play.exitCode(), 0) << out.toStdString();
    EXPECT_FALSE(out.contains(QStringLiteral("ERROR"))) << out.toStdString();
    EXPECT_EQ(out.count(QStringLiteral("Now playing")), 2) << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("Reached end of play list"))) << out.toStdString();
}

}  // namespace
}  // namespace zor::testing
