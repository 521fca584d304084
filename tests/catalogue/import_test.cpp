// The import: a real directory tree scanned into a real catalogue through
// the main window's path selector.
#include "catalogue/ui/import_ops.h"
#include "shell/ui/path_selector.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace zor::testing {
namespace {

QByteArray Padded(const char* text, int width) {
    QByteArray b(text);
    b.resize(width, '\0');
    return b;
}

// A song file: some audio-like bytes and, when asked, a tag at the end.
QByteArray SongBytes(const char* title, const char* artist, const char* year = "1999", unsigned char style = 13) {
    QByteArray b(400, '\x55');
    if (!title) return b;
    b += "TAG" + Padded(title, 30) + Padded(artist, 30) + Padded("An album", 30) + QByteArray(year, 4) +
         Padded("", 30) + char(style);
    return b;
}

struct ImportTest : ::testing::Test {
    FormHarness h;
    QString root;
    void SetUp() override {
        root = h.inst.home + QStringLiteral("/music");
        QDir().mkpath(root);
    }
    void Write(const QString& relative, const QByteArray& bytes) {
        const QString path = root + u'/' + relative;
        QDir().mkpath(QFileInfo(path).path());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    void Start(int swap = 0, int allTypes = 0) {
        h.inst.EditSettings([&](Settings& s) {
            s.ArtistSongSwap = int16_t(swap);
            s.AddAllFileTypes = int16_t(allTypes);
            s.AddMp3 = 1;
            s.AddWma = 0;
            s.AddWav = 0;
            s.AddExtra1 = 1;
            s.ExtraExtension1 = QStringLiteral("OGG");
            s.SortAtStart = 0;
        });
        ASSERT_TRUE(h.Start());
    }
    std::vector<std::array<QString, 11>> Rows() { return TestInstallation::ReadSongs(h.inst.File(QStringLiteral("Mp3data1.mdb"))); }
    QStringList Field(int n) {
        QStringList out;
        for (const auto& r : Rows()) out << r[size_t(n)];
        return out;
    }
    void Import(const QString& dir, const char* entry = "AddSongs") {
        h.Click(entry);
        h.form().Frame3->SetPath(dir);
        h.form().Frame3->Command16->click();
    }
};

TEST_F(ImportTest, SubdirectoriesFromTheLastDownComeBeforeTheFilesAndAllIsNumbered) {
    Write(QStringLiteral("b.mp3"), SongBytes("Root song", "Root artist"));
    // Blanks around a tag's text go; the zero bytes of other taggers stay.
    Write(QStringLiteral("Abba/x.mp3"), SongBytes("  Waterloo                    ", "ABBA"));
    Write(QStringLiteral("Beatles/Help/y.MP3"), SongBytes("Help", "The Beatles"));
    Write(QStringLiteral("Beatles/z.mp3"), SongBytes("Yesterday", "The Beatles"));
    Write(QStringLiteral("Beatles/notes.txt"), "not a song");
    Write(QStringLiteral("Beatles/w.ogg"), SongBytes("Extra", "Other", "2001", 255));
    Start();
    Import(root);
    EXPECT_EQ(Field(0), QStringList({Padded("Help", 30), Padded("Extra", 30), Padded("Yesterday", 30),
                                     QStringLiteral("Waterloo").leftJustified(30), Padded("Root song", 30)}));
    EXPECT_EQ(Field(10), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(Field(4)[1], QStringLiteral("Unknown"));  // style byte 255
    EXPECT_EQ(Field(4)[0], QStringLiteral("Pop"));
    EXPECT_EQ(Field(3)[0], QStringLiteral("1999"));
    EXPECT_EQ(Field(6), QStringList(5, QStringLiteral(" Y")));
    EXPECT_EQ(Field(5)[4], root + QStringLiteral("/b.mp3"));
    EXPECT_EQ(h.j().SongCount, 5);
    EXPECT_EQ(h.form().MFGrid1.Rows(), 6);

    // Scanning again adds the songs again.
    Import(root);
    EXPECT_EQ(Rows().size(), 10u);
    EXPECT_EQ(Field(10).last(), QStringLiteral("10"));
}

TEST_F(ImportTest, AnUntaggedNameIsCutAtTheFirstHyphenAndAShortFileKeepsTheTagBefore) {
    Write(QStringLiteral("a/Queen - Bohemian Rhapsody.mp3"), SongBytes(nullptr, nullptr));
    Write(QStringLiteral("b/NoHyphenHere.mp3"), SongBytes(nullptr, nullptr));
    Write(QStringLiteral("c/1 tagged.mp3"), SongBytes("Tagged", "Someone"));
    Write(QStringLiteral("c/2 short.mp3"), "tiny");
    Start();
    Import(root);
    // Directories from the last down: c (tagged, then short), b, a.
    const auto rows = Rows();
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0][0], Padded("Tagged", 30));
    EXPECT_EQ(rows[1][0], Padded("Tagged", 30));  // the previous file's tag
    EXPECT_EQ(rows[1][5], root + QStringLiteral("/c/2 short.mp3"));
    EXPECT_EQ(rows[2][0], QString());
    EXPECT_EQ(rows[2][1], QStringLiteral("NoHyphenHere.mp"));  // all but the last character
    EXPECT_EQ(rows[3][1], QStringLiteral("Queen "));
    EXPECT_EQ(rows[3][0], QStringLiteral("Bohemian Rhapsody"));
    EXPECT_EQ(rows[3][6], QStringLiteral(" N"));
}

TEST(ImportNames, CuttingTheFileName) {
    EXPECT_EQ(CutFileName(QStringLiteral("Artist - Title.mp3")).first, QStringLiteral("Artist "));
    EXPECT_EQ(CutFileName(QStringLiteral("Artist - Title.mp3")).second, QStringLiteral("Title"));
    EXPECT_EQ(CutFileName(QStringLiteral("a-b-c.mp3")).second, QStringLiteral("b-c"));
    EXPECT_EQ(CutFileName(QStringLiteral("-.mp3")).first, QString());
    EXPECT_EQ(CutFileName(QStringLiteral("")).first, QString());
    EXPECT_EQ(CutFileName(QStringLiteral("x")).second, QString());
    const QString longName = QString(40, u'a') + QStringLiteral(" - ") + QString(40, u'b') + QStringLiteral(".mp3");
    EXPECT_EQ(CutFileName(longName).first, QString(30, u'a'));
    EXPECT_EQ(CutFileName(longName).second, QString(30, u'b'));
}

TEST_F(ImportTest, SwappedNamesLongPathsLinksAndOddFilesFinishTheImport) {
    Write(QStringLiteral("Artist - Song.mp3"), SongBytes(nullptr, nullptr));
    const QString deep = QString(60, u'd') + u'/' + QString(60, u'e') + u'/' + QString(60, u'f');
    Write(deep + QStringLiteral("/Long - Path.mp3"), SongBytes(nullptr, nullptr));
    Write(QStringLiteral("empty.mp3"), "");
    QFile::link(root, root + QStringLiteral("/loop"));  // a link back to the top
    QDir().mkpath(root + QStringLiteral("/locked"));
    Write(QStringLiteral("locked/hidden - away.mp3"), SongBytes(nullptr, nullptr));
    QFile::setPermissions(root + QStringLiteral("/locked"), QFileDevice::Permissions());
    QFile::link(root + QStringLiteral("/gone.mp3"), root + QStringLiteral("/dangling.mp3"));
    Start(1);
    Import(root);
    QFile::setPermissions(root + QStringLiteral("/locked"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    const auto rows = Rows();
    QStringList songs;
    for (const auto& r : rows) songs << r[0];
    EXPECT_TRUE(songs.contains(QStringLiteral("Artist "))) << songs.join(u'|').toStdString();  // swapped
    for (const auto& r : rows) {
        EXPECT_LE(r[5].size(), 150);
        if (r[1] == QStringLiteral("Path")) EXPECT_EQ(r[5], (root + u'/' + deep).left(150));
    }
    // The loop is walked once; the locked directory lists nothing (unless
    // the tests run with the rights to read it anyway); the dangling link
    // is no file.
    const size_t locked = geteuid() == 0 ? 1 : 0;
    EXPECT_EQ(rows.size(), 3u + locked) << songs.join(u'|').toStdString();
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(ImportTest, AddOneTakesTheChosenFileOrSaysThereIsNone) {
    Write(QStringLiteral("one.mp3"), SongBytes("One", "Single"));
    Write(QStringLiteral("two.mp3"), SongBytes("Two", "Single"));
    Start();
    h.Click("AddOne");
    PathSelector& p = *h.form().Frame3;
    p.SetPath(root);
    p.Command16->click();
    ASSERT_EQ(h.boxes().shown.size(), 1u);  // no file chosen
    EXPECT_EQ(h.boxes().shown[0].text, QStringLiteral("ATTENTION!\n\nYou have not selected a valid path  \n"
                                                       "or filename to be added!\nPlease try again. \n"));
    EXPECT_EQ(h.boxes().shown[0].flags, vbCritical);
    p.filList->setCurrentRow(1);
    p.Command16->click();
    EXPECT_EQ(Field(0), QStringList({Padded("Two", 30)}));

    // No directory at all.
    p.SetPath(root + QStringLiteral("/nowhere"));
    p.Command16->click();
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("No Directory (Path) selected; ADD aborted!"));
}

TEST_F(ImportTest, ClearFillEmptiesTheCatalogueFirst) {
    Write(QStringLiteral("one.mp3"), SongBytes("One", "Single"));
    Start();
    Import(root);
    Import(root, "ClearFill");
    EXPECT_EQ(Rows().size(), 1u);
    EXPECT_EQ(h.form().Text1->text().left(20), QStringLiteral("Number of songs is: "));
}

}  // namespace
}  // namespace zor::testing

namespace zor::testing {
namespace {

// Names in other scripts, a name that is not UTF-8, files of every awkward
// size, and a file that goes while the scan runs: the import finishes and
// takes in every file it can still read.
TEST_F(ImportTest, OddNamesSizesAndAVanishingFileFinishTheImport) {
    Write(QStringLiteral("Björk - Jóga.mp3"), SongBytes(nullptr, nullptr));
    Write(QStringLiteral("Кино - Группа крови.mp3"), SongBytes(nullptr, nullptr));
    const QByteArray badName = QFile::encodeName(root) + "/bad\xff\xfe - name.mp3";
    {
        const int fd = ::open(badName.constData(), O_CREAT | O_WRONLY, 0644);
        ASSERT_GE(fd, 0);
        ::close(fd);
    }
    QRandomGenerator random(7);
    QByteArray noise(5000, '\0');
    for (char& c : noise) c = char(random.bounded(256));
    const int sizes[] = {0, 1, 127, 128, 3000, 3001};
    for (int size : sizes) Write(QStringLiteral("size/s%1.mp3").arg(size, 4, 10, QChar(u'0')), QByteArray(size, 'T'));
    Write(QStringLiteral("size/z noise.mp3"), noise);
    Write(QStringLiteral("size/zz gone.mp3"), SongBytes("Gone", "Away"));
    Start();
    h.j().ShowScannedFiles = 1;
    // The last file of the size folder is deleted as the scan shows the first.
    bool deleted = false;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (!deleted) deleted = QFile::remove(root + QStringLiteral("/size/zz gone.mp3"));
    };
    Import(root);
    EXPECT_TRUE(deleted);
    QStringList artists;
    for (const auto& r : Rows()) artists << r[1];
    EXPECT_TRUE(artists.contains(QStringLiteral("Björk "))) << artists.join(u'|').toStdString();
    EXPECT_TRUE(artists.contains(QStringLiteral("Кино "))) << artists.join(u'|').toStdString();
    // Seven files of the size folder; the deleted one is not among them.
    int fromSizes = 0;
    for (const auto& r : Rows()) fromSizes += r[5].contains(QStringLiteral("/size/")) ? 1 : 0;
    EXPECT_EQ(fromSizes, 7);
    EXPECT_TRUE(h.boxes().shown.empty());
}

}  // namespace
}  // namespace zor::testing
