// The playlist files through the main window: saving MFgrid2 as .zpl,
// opening both kinds, and the boxes of the dialogs' Cancel and the refused
// saves. The M3U files' road through the menus, and a list opened and
// played, are in playlist_road_test.cpp.
#include "playlists/ui/playlist_files.h"
#include "platform/cp1252.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_test.h"

#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QByteArray Padded(const QString& text, int width) { return cp1252::Encode(text).leftJustified(width, ' ', true); }

// Every field filled, so a record shows each one in its place.
SongFields Song(int n) {
    const QString artist = QStringLiteral("Artist %1").arg(n);
    return {QStringLiteral("Song %1").arg(n), artist, QStringLiteral("Album of ") + artist, "1979", "Pop",
            QStringLiteral("/music/Artist %1 - Song %1.mp3").arg(n), "ID3", "lyrics.txt", "picture.jpg", "run.sh"};
}

// The record of a song as the file must hold it, laid out by hand.
QByteArray Record(const SongFields& s, const QByteArray& reserved = QByteArray(60, '\0')) {
    return Padded(s[0], 40) + Padded(s[1], 40) + Padded(s[2], 40) + Padded(s[3], 5) + Padded(s[6], 5) +
           Padded(s[4], 10) + Padded(s[5], 100) + Padded(s[8], 100) + Padded(s[7], 100) + Padded(s[9], 100) + reserved;
}

struct PlaylistFilesTest : FormTest {
    std::vector<SongFields> songs;
    FakeCommonDialog& dialog() { return h.inst.tp.dialog; }
    QString File(const char* name) { return h.inst.File(QString::fromLatin1(name)); }
    // Five songs, sorted on the title: table order.
    void SetUp() override {
        for (int n = 1; n <= 5; ++n) songs.push_back(Song(n));
        TestInstallation::AddSongs(File("Mp3data1.mdb"), songs);
        h.inst.EditSettings([](Settings& s) {
            s.SortAtStart = 1;
            s.SortDirection = 1;
            s.DirectPlay = 2;  // a playlist is shown, never started
        });
        ASSERT_TRUE(h.Start());
    }
    // Marks catalogue rows in this order and shows them as the playlist.
    void ShowPlaylistOf(std::initializer_list<int> rows) {
        MarkForPlaylist(f(), rows);
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
    ShowPlaylistOf({4, 2, 5});
    const QString path = File("three.zpl");
    SaveAs(path);
    ASSERT_EQ(dialog().calls.size(), 1u);
    EXPECT_EQ(dialog().calls[0].initDir, h.inst.programDir + u'/');
    EXPECT_EQ(FileBytes(path), Record(songs[3]) + Record(songs[1]) + Record(songs[4]));
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now saved."));
    EXPECT_EQ(f().MessageColour(), QColor(0, 255, 0));
}

TEST_F(PlaylistFilesTest, AShorterSaveLeavesTheOldTailAndTheReadCarriesReservedBytesIntoTheNextWrite) {
    // Five records whose reserved fields hold text, as another writer left them.
    const QByteArray reserved = Padded(QStringLiteral("RES10"), 10) + Padded(QStringLiteral("RES50"), 50);
    QByteArray five;
    for (const SongFields& s : songs) five += Record(s, reserved);
    const QString path = File("five.zpl");
    WriteFile(path, five + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
    // Three songs over the five: records 4 and 5 stay and come back.
    f().MFgrid2.SetRows(4);
    j().PlaylistEnd = 4;
    SaveAs(path);
    const QByteArray saved = FileBytes(path);
    EXPECT_EQ(saved.left(1800), Record(songs[0], reserved) + Record(songs[1], reserved) + Record(songs[2], reserved));
    EXPECT_EQ(saved.mid(1800), five.mid(1800) + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
}

TEST_F(PlaylistFilesTest, OpeningAZplFileTurnsTheWindowToThePlaylistWithTheFieldsBlanksAndAll) {
    const QString path = File("two.zpl");
    WriteFile(path, Record(songs[2]) + Record(songs[0]));
    Open(path);
    EXPECT_EQ(dialog().calls.at(0).filter,
              QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|WinAmp M3U Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*"));
    const SongGrid& list = f().MFgrid2;
    ASSERT_EQ(list.Rows(), 3);
    EXPECT_EQ(list.TextMatrix(2, 6), QString::fromLatin1(Padded(songs[0][5], 100)));
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(j().PlayMode, 1);
    EXPECT_EQ(j().SongCount, 2);
    EXPECT_TRUE(f().MFGrid1.Visible() && list.Visible());
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now loaded. "));
    EXPECT_EQ(f().Text2->text(), QStringLiteral("3"));  // PlaylistEnd itself
    EXPECT_EQ(j().PlayStopped, 1);  // not started
}

TEST_F(PlaylistFilesTest, AnEmptyZplIsAnEmptyListCapitalsM3uAreRecordsAndAMissingFileEndsTheOpen) {
    const QString empty = File("empty.zpl");
    WriteFile(empty, {});
    Open(empty);
    EXPECT_EQ(j().PlaylistEnd, 1);
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(f().MFgrid2.Rows(), 1);
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

// Each box by the line that tells it apart, one whole in each language.
TEST_F(PlaylistFilesTest, CancelAndRefusedSavesShowTheirBoxesAndWriteNothing) {
    f().Run(OpenPlaylistFile);
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid   \nPlaylist to be opened!")));
    h.Click("Save4");
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid  \nPlaylist name to be saved!")));
    h.Click("Save5");
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid M3U  \nPlaylist name to be saved!")));
    h.Click("Save3");
    EXPECT_EQ(LastBox(), QStringLiteral("ATTENTION!\n\nYou are NOT in Playlist mode!     \n\n"
                                        "Please first make a playlist and  \nthen click the Playlist button.   \n"));
    j().PlaylistActive = 1;
    j().Language = QStringLiteral("0");
    h.Click("Save3");
    EXPECT_EQ(LastBox(), QStringLiteral("ATTENTIE!\n\nDe Playlist is te kort! \n\nEen normale playlist bestaat minstens  \n"
                                        "uit 2 songs. \nAdvies: voeg songs toe aan de playlist. \n"));
    ASSERT_EQ(h.boxes().shown.size(), 5u);
    for (const auto& box : h.boxes().shown) EXPECT_EQ(box.flags, vbCritical | vbOKOnly);
    EXPECT_FALSE(QFile::exists(File("MP3play1.zpl")));
}

TEST_F(PlaylistFilesTest, SavePlaylistWritesTheDefaultFileAndOneSongIsEnough) {
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

}  // namespace
}  // namespace zor::testing
