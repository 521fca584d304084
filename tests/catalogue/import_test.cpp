// The import: a real directory tree scanned into a real catalogue through
// the main window's path selector, and the road on from there.
#include "catalogue/ui/import_ops.h"
#include "shell/ui/path_selector.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace zor::testing {
namespace {

QByteArray Padded(const char* text, int width = 30) {
    QByteArray b(text);
    b.resize(width, '\0');
    return b;
}

// A song file: some audio-like bytes and, when asked, a tag at the end.
QByteArray SongBytes(const char* title = nullptr, const char* artist = "", unsigned char style = 13) {
    QByteArray b(400, '\x55');
    if (!title) return b;
    return b + "TAG" + Padded(title) + Padded(artist) + Padded("An album") + "1999" + Padded("") + char(style);
}

struct ImportTest : ::testing::Test {
    FormHarness h;
    QString root = h.inst.home + QStringLiteral("/music");
    void Write(const QString& relative, const QByteArray& bytes) {
        ASSERT_TRUE(WriteFileBytes(root + u'/' + relative, bytes));
    }
    void Start(int swap = 0) {
        h.inst.EditSettings([&](Settings& s) {
            s.ArtistSongSwap = int16_t(swap);
            s.AddAllFileTypes = s.AddWma = s.AddWav = s.SortAtStart = 0;
            s.AddMp3 = s.AddExtra1 = 1;
            s.ExtraExtension1 = QStringLiteral("OGG");
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
    Write(QStringLiteral("Abba/Queen - Bohemian Rhapsody.mp3"), SongBytes());
    Write(QStringLiteral("Beatles/Help/y.MP3"), SongBytes("Help", "The Beatles"));
    Write(QStringLiteral("Beatles/z.mp3"), SongBytes("Yesterday", "The Beatles"));
    Write(QStringLiteral("Beatles/zz short.mp3"), "tiny");  // too short for a tag: keeps the one before
    Write(QStringLiteral("Beatles/notes.txt"), "not a song");
    Write(QStringLiteral("Beatles/w.ogg"), SongBytes("Extra", "Other", 255));
    Start();
    Import(root);
    EXPECT_EQ(Field(0), QStringList({Padded("Help"), Padded("Extra"), Padded("Yesterday"), Padded("Yesterday"), "Bohemian Rhapsody",
                                     QStringLiteral("Waterloo").leftJustified(30), Padded("Root song")}));
    EXPECT_EQ(Field(1)[4], QStringLiteral("Queen "));
    EXPECT_EQ(Field(10), QStringList({"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(Field(4).mid(0, 2), QStringList({"Pop", "Unknown"}));  // style bytes 13 and 255
    EXPECT_EQ(Field(6), QStringList({" Y", " Y", " Y", " Y", " N", " Y", " Y"}));
    EXPECT_EQ(Field(5)[3], root + QStringLiteral("/Beatles/zz short.mp3"));
    EXPECT_EQ(h.form().MFGrid1.Rows(), 8);

    // Scanning again adds the songs again; "clear and fill" empties first.
    Import(root);
    EXPECT_EQ(Field(10).last(), QStringLiteral("14"));
    Import(root, "ClearFill");
    EXPECT_EQ(Rows().size(), 7u);
    EXPECT_EQ(h.j().SongCount, 7);
}

TEST(ImportNames, CuttingTheFileName) {
    const QString a40 = QString(40, u'a'), b40 = QString(40, u'b');
    const struct {
        QString name, first, second;
    } cases[] = {{"Artist - Title.mp3", "Artist ", "Title"}, {"a-b-c.mp3", "a", "b-c"}, {"-.mp3", "", ""},
                 {"", "", ""}, {"x", "", ""}, {"NoHyphenHere.mp3", "NoHyphenHere.mp", ""}, {a40 + " - " + b40 + ".mp3", a40.left(30), b40.left(30)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        EXPECT_EQ(CutFileName(c.name).first, c.first);
        EXPECT_EQ(CutFileName(c.name).second, c.second);
    }
}

// Each way a tree can be awkward, once: a swapped name in another script, a
// long path, a link loop, a locked directory, a dangling link, a name not in
// UTF-8, files either side of a tag's 128 bytes, and a file that goes while
// the scan runs. The import finishes and takes in every file it can still
// read. (Tags of any bytes are the tag record's fuzz target.)
TEST_F(ImportTest, AnAwkwardTreeFinishesTheImport) {
    Write(QStringLiteral("Кино - Группа крови.mp3"), SongBytes());
    const QString deep = QString(60, u'd') + u'/' + QString(60, u'e') + u'/' + QString(60, u'f');
    Write(deep + QStringLiteral("/Long - Path.mp3"), SongBytes());
    QFile::link(root, root + QStringLiteral("/loop"));
    Write(QStringLiteral("locked/hidden - away.mp3"), SongBytes());
    QFile::setPermissions(root + QStringLiteral("/locked"), QFileDevice::Permissions());
    QFile::link(root + QStringLiteral("/gone.mp3"), root + QStringLiteral("/dangling.mp3"));
    const QByteArray badName = QFile::encodeName(root) + "/bad\xff\xfe - name.mp3";
    ASSERT_EQ(::close(::open(badName.constData(), O_CREAT | O_WRONLY, 0644)), 0);
    for (int size : {0, 127, 128}) Write(QStringLiteral("size/s%1.mp3").arg(size), QByteArray(size, 'T'));
    Write(QStringLiteral("size/zz gone.mp3"), SongBytes("Gone", "Away"));
    Start(1);
    h.j().scanner.ShowScannedFiles = 1;
    // The last file of the size folder is deleted as the scan shows the first.
    bool deleted = false;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (!deleted) deleted = QFile::remove(root + QStringLiteral("/size/zz gone.mp3"));
    };
    Import(root);
    QFile::setPermissions(root + QStringLiteral("/locked"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(h.boxes().shown.empty());

    QStringList songs;
    int fromSizes = 0;
    for (const auto& r : Rows()) {
        songs << r[0];
        fromSizes += r[5].contains(QStringLiteral("/size/")) ? 1 : 0;
        EXPECT_LE(r[5].size(), 150);
        if (r[1] == QStringLiteral("Path")) EXPECT_EQ(r[5], (root + u'/' + deep).left(150));
    }
    const std::string all = songs.join(u'|').toStdString();
    // Swapped, and the loop walked once.
    EXPECT_EQ(songs.count(QString::fromUtf8("Кино ")), 1) << all;
    // The three files of the size folder: the deleted one is not among them.
    EXPECT_EQ(fromSizes, 3);
    EXPECT_FALSE(songs.contains(QStringLiteral("dangling.mp"))) << all;  // no file behind the link
    // The locked directory lists nothing, unless the tests run with the
    // rights to read it anyway.
    EXPECT_EQ(songs.contains(QStringLiteral("hidden ")), geteuid() == 0) << all;
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
    p.filList->setCurrentRow(1);
    p.Command16->click();
    EXPECT_EQ(Field(0), QStringList({Padded("Two")}));

    p.SetPath(root + QStringLiteral("/nowhere"));
    p.Command16->click();
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("No Directory (Path) selected; ADD aborted!"));
}

// A click during the import that would start a second task is refused,
// with a word in the message line in the language of the moment; the
// import's songs all land.
TEST_F(ImportTest, ASecondTaskDuringTheImportIsRefusedAndNoSongIsLost) {
    for (const char* dir : {"a", "b", "c"}) Write(QString::fromLatin1(dir) + QStringLiteral("/x - y.mp3"), SongBytes());
    Start();
    h.inst.tp.dialog.names = {h.inst.home + QStringLiteral("/elsewhere.mdb")};
    const char* const clicks[] = {"Refresh1", "Open1", "Save1", "Save2", "Clear1", "Compact1", "DelRec2",
                                  "Nieuw",    "AddSongs", "ClearFill", "Sorter3", "CleSel1", "Command16"};
    QStringList refusals;
    // At the first chance the import gives: its running text.
    h.inst.tp.events.onDoEvents = [&](int) {
        if (!refusals.isEmpty() || h.form().Text1->text() != QStringLiteral("Loading the Database - Please Wait .....")) return;
        for (const char* name : clicks) {
            h.j().Language = refusals.size() % 2 ? QStringLiteral("0") : QStringLiteral("1");
            h.Click(name);
            refusals << h.form().Text1->text();
        }
        h.j().Language = QStringLiteral("1");
    };
    Import(root);
    ASSERT_EQ(refusals.size(), int(std::size(clicks)));
    for (int i = 0; i < refusals.size(); ++i)
        EXPECT_EQ(refusals[i], i % 2 ? QStringLiteral("Bezig met een andere taak; deze wordt niet gestart - Wacht s.v.p. ....")
                                     : QStringLiteral("Busy with another task; this one is not started - Please Wait ...."))
            << clicks[i];
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(Field(10), QStringList({"1", "2", "3"}));
    EXPECT_EQ(h.form().MFGrid1.Rows(), 4);
    EXPECT_FALSE(QFile::exists(h.inst.home + QStringLiteral("/elsewhere.mdb")));
}

// A skin change during the import waits until the import is over: the new
// window then opens the catalogue with every song in it. The way out during
// the import stops the walk at its next point; what it had scanned is kept,
// numbered.
TEST_F(ImportTest, ASkinChangeComesWhenTheImportIsOverTheWayOutStopsTheWalk) {
    for (const char* dir : {"a", "b", "c"}) Write(QString::fromLatin1(dir) + QStringLiteral("/x - y.mp3"), SongBytes());
    Start();
    Form1* first = &h.form();
    bool asked = false;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (asked || &h.form() != first) return;
        asked = true;
        h.Click("Ascreen");
        EXPECT_EQ(&h.form(), first);  // still the importing window
    };
    Import(root);
    ASSERT_NE(&h.form(), first);
    EXPECT_EQ(h.form().MFGrid1.Rows(), 4);

    bool left = false;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (left || h.form().Text2->text() != QStringLiteral("4")) return;
        left = true;
        h.Click("Exit1");
    };
    Import(root);
    EXPECT_EQ(h.inst.tp.process.ends, 1);
    EXPECT_EQ(Field(5).mid(3), QStringList({root + QStringLiteral("/c/x - y.mp3")}));
    EXPECT_EQ(Field(10), QStringList({"1", "2", "3", "4"}));
}

// A directory that can't be listed ends the import with its error, and
// everything is as before it: the file, the grid's rows, the count. The next
// import works. (A file that can't be read is passed over: the awkward tree.)
TEST_F(ImportTest, AListingFailureMidScanUndoesTheImport) {
    TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), std::vector<SongFields>(2));
    Write(QStringLiteral("a/1 - one.mp3"), SongBytes("One", "A"));
    Write(QStringLiteral("b/3 - three.mp3"), SongBytes("Three", "B"));
    Start();
    const auto before = Rows();
    h.inst.tp.files.FailOn(QStringLiteral("Subdirectories"), root + QStringLiteral("/a"), 57);
    Import(root);  // b is read, then a fails
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error '57'")));
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(h.j().SongCount, 2);
    EXPECT_EQ(h.form().MFGrid1.Rows(), 3);
    EXPECT_EQ(h.form().Text2->text(), QStringLiteral("2"));
    EXPECT_TRUE(h.form().MFGrid1.Redraw());

    Import(root + QStringLiteral("/b"));
    EXPECT_EQ(Field(10), QStringList({"1", "2", "3"}));
    EXPECT_EQ(h.form().MFGrid1.Rows(), 4);
}

// One road with real MP3 files made by an encoder: imported, saved under
// another name, compacted, and opened anew through the program's own
// entries; the grid shows the same songs all the way.
TEST_F(ImportTest, EncodedSongsSurviveSaveAsCompactionAndAReopen) {
    const AudioTools tools;
    if (!tools.Usable()) GTEST_SKIP() << "sox or lame missing";
    QDir().mkpath(root);
    ASSERT_TRUE(tools.Mp3(root + "/one.mp3", 0.5, {"--id3v1-only", "--tt", "First Light", "--ta", "The Encoders"}));
    ASSERT_TRUE(tools.Mp3(root + "/Lame Band - Untagged Tune.mp3", 0.5));
    // Each row's title, artist, ID3 mark and path, in the order of the titles.
    const auto songs = [&] {
        const SongGrid& g = h.form().MFGrid1;
        QStringList out;
        for (int r = 1; r < g.Rows(); ++r)
            out << QStringList{g.TextMatrix(r, 1), g.TextMatrix(r, 2), g.TextMatrix(r, 7), g.TextMatrix(r, 6)}.join(u'|');
        out.sort();
        return out;
    };
    Start();
    Import(root);
    const QStringList imported = songs();
    ASSERT_EQ(imported.size(), 2);
    EXPECT_TRUE(imported[0].startsWith(QStringLiteral("First Light"))) << imported.join(u'\n').toStdString();
    EXPECT_TRUE(imported[0].contains(QStringLiteral("| Y|") + root + QStringLiteral("/one.mp3")));
    EXPECT_EQ(imported[1], QStringLiteral("Untagged Tune|Lame Band | N|") + root + QStringLiteral("/Lame Band - Untagged Tune.mp3"));

    const QString party = h.inst.home + QStringLiteral("/party.mdb");
    h.inst.tp.dialog.names = {party};
    h.Click("Save2");
    h.Click("Compact1");
    // Away to the default catalogue and back again.
    h.inst.tp.dialog.names = {h.inst.File(QStringLiteral("Mp3data1.mdb")), party};
    h.Click("Open1");
    h.form().MFGrid1.Clear();
    h.Click("Open1");
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(h.j().DatabaseFile, party);
    EXPECT_EQ(songs(), imported);
}

}  // namespace
}  // namespace zor::testing
