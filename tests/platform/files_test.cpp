// Files as the jukebox sees them: the single-byte text of the record files,
// Dir and the other file statements, the registry of files held open, binary
// record access and the mapping of Windows paths.
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"
#include "platform/binary_file.h"
#include "platform/cp1252.h"
#include "platform/file_system.h"
#include "platform/paths.h"
#include "platform/runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace zor {
namespace {

using testing::ErrorOf;
using testing::FileBytes;

struct Scratch : QTemporaryDir {
    QString Path(const char* name) const { return path() + u'/' + QString::fromUtf8(name); }
    QString Make(const char* name, const QByteArray& bytes = "x") const {
        EXPECT_TRUE(testing::WriteFileBytes(Path(name), bytes));
        return Path(name);
    }
};

// (That every byte comes back as itself is the runtime rules' fuzz target.)
TEST(Cp1252, TheCodePagesOwnLettersAndForeignCharactersBecomeQuestionMarks) {
    // 0x81 is undefined in the code page: the C1 control.
    EXPECT_EQ(cp1252::Decode("\x80\x81"), QString(QChar(0x20AC)) + QChar(0x0081));
    EXPECT_EQ(cp1252::Encode(QStringLiteral("€ “q” – 日本 Ω ÿ")), QByteArray("\x80 \x93q\x94 \x96 ?? ? \xFF"));
    // U+0080 is not the euro sign's byte: that byte stands for U+20AC.
    EXPECT_EQ(cp1252::Encode(QString(QChar(0x0080))), QByteArray("?"));
    // Fields are cut or padded to their width in UTF-16 units, as a fixed
    // string counts them: a character beyond the BMP is two "?".
    EXPECT_EQ(cp1252::Field(QStringLiteral("€日"), 4), QByteArray("\x80?  "));
    EXPECT_EQ(cp1252::Field(QStringLiteral("a\U0001F600b"), 3), QByteArray("a??"));
}

TEST(FileSystemDir, WildcardsIgnoreCaseAndListSortedWithoutRegardToCaseExactNamesDoNot) {
    Scratch d;
    for (const char* n : {"b.MP3", "A.mp3", "c.mp3x", "a.wav", ".hidden.mp3", "[1] a+b.mp3", "X", "x", "C"}) d.Make(n);
    QDir().mkdir(d.Path("d.mp3"));
    FileSystem fs;
    EXPECT_EQ(fs.DirList(d.Path("*.mp3")), QStringList({"[1] a+b.mp3", "A.mp3", "b.MP3"}));
    EXPECT_EQ(fs.DirList(d.Path("*.MP3"), vbDirectory), QStringList({"[1] a+b.mp3", "A.mp3", "b.MP3", "d.mp3"}));
    EXPECT_EQ(fs.DirList(d.Path("*.mp3"), vbHidden), QStringList({".hidden.mp3", "[1] a+b.mp3", "A.mp3", "b.MP3"}));
    EXPECT_EQ(fs.DirList(d.Path("[1]*")), QStringList({"[1] a+b.mp3"}));
    EXPECT_EQ(fs.DirList(d.Path("?")), QStringList({"C", "X", "x"}));
    EXPECT_EQ(fs.Dir(d.Path("a*")), QStringLiteral("A.mp3"));
    EXPECT_EQ(fs.DirNext(), QStringLiteral("a.wav"));
    EXPECT_EQ(fs.DirNext(), QString());

    // Exact names are case-sensitive; missing places give nothing.
    const QString file = d.Make("ZORjuke.ini");
    QDir().mkdir(d.Path("sub"));
    EXPECT_EQ(fs.Dir(d.Path("ZORjuke.ini")), QStringLiteral("ZORjuke.ini"));
    EXPECT_EQ(fs.Dir(d.Path("sub"), vbDirectory), QStringLiteral("sub"));
    for (const QString& none : {d.Path("ZORjuke.INI"), d.Path("sub"), d.Path("sub/."), d.Path("missing/*.mp3"),
                                d.Path("missing/song.mp3"), file + QStringLiteral("/*")})
        EXPECT_EQ(fs.Dir(none), QString()) << none.toStdString();
}

// What a wildcard lists must be a file the other statements accept: a
// dangling or looping link is no file (FileLen would stop a scan with error
// 53), and opening a FIFO for reading would wait for a writer for ever.
TEST(FileSystemDir, OnlyRealFilesAreListedAmongLinksLoopsAndPipes) {
    Scratch d;
    d.Make("song.mp3", "ID3");
    QFile::link(d.Path("song.mp3"), d.Path("alias.mp3"));
    QFile::link(d.Path("gone"), d.Path("dangling.mp3"));
    QFile::link(d.Path("loop.mp3"), d.Path("loop.mp3"));
    QFile::link(d.Path("."), d.Path("self"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(d.Path("pipe.mp3")).constData(), 0600), 0);
    FileSystem fs;
    const QStringList listed = fs.DirList(d.Path("*.mp3"));
    EXPECT_EQ(listed, QStringList({"alias.mp3", "song.mp3"}));
    for (const QString& n : listed) EXPECT_EQ(fs.FileLen(d.Path(n.toUtf8().constData())), 3);
    EXPECT_EQ(fs.DirList(d.Path("s*"), vbDirectory), QStringList({"self", "song.mp3"}));
}

TEST(FileSystemFiles, HeldFilesRefuseDeleteRenameAndOverwriteUntilReleased) {
    Scratch d;
    const QString a = d.Make("a.mdb", "catalogue");
    const QString c = d.Make("c.mdb", "other");
    const QString src = d.Make("src", "copy");
    QDir().mkdir(d.Path("sub"));
    FileSystem fs;
    const QString key = fs.HoldOpen(a);
    EXPECT_EQ(ErrorOf([&] { fs.Kill(d.Path("sub/../a.mdb")); }), 75);
    EXPECT_EQ(ErrorOf([&] { fs.Name(a, d.Path("b.mdb")); }), 75);
    EXPECT_EQ(ErrorOf([&] { fs.SetAttr(a, vbReadOnly); }), 75);
    EXPECT_EQ(ErrorOf([&] { fs.FileCopy(src, a); }), 70);
    // A wildcard that takes in a held file deletes none of its matches.
    EXPECT_EQ(ErrorOf([&] { fs.Kill(d.Path("*.mdb")); }), 75);
    EXPECT_EQ(FileBytes(a), "catalogue");
    EXPECT_EQ(FileBytes(c), "other");
    EXPECT_FALSE(QFile::exists(d.Path("b.mdb")));
    EXPECT_FALSE(QFile::exists(a + QStringLiteral(".zorcopy")));

    // Holds count: the file is free after the last one goes, and a moved
    // FileHold gives its hold back once.
    {
        FileHold first(fs, a);
        FileHold second = std::move(first);
        first.Reset();
        fs.Release(key);
        EXPECT_EQ(ErrorOf([&] { fs.Kill(a); }), 75);
    }
    fs.FileCopy(src, a);
    EXPECT_EQ(FileBytes(a), "copy");
    fs.Kill(d.Path("*.mdb"));
    EXPECT_FALSE(QFile::exists(a) || QFile::exists(c));
    EXPECT_EQ(ErrorOf([&] { fs.Kill(d.Path("*.mdb")); }), 53);
    EXPECT_EQ(ErrorOf([&] { fs.Name(src, d.Path("sub")); }), 58);
}

// A replacement is made beside the target and renamed over it: until then
// the target is whole, and a write or rename that fails leaves it so, with
// no scratch behind.
TEST(FileSystemFiles, AReplacedFileIsTheOldOneWholeUntilTheNewOneIsInPlace) {
    Scratch s;
    const QString target = s.Make("song.mp3", "old bytes"), kept = target + QStringLiteral(".kept");
    const QString scratchName = target + QStringLiteral(".zorcopy");
    FileSystem fs;
    EXPECT_FALSE(fs.ReplaceFile(target, [](const QString& scratch) { return QFile(scratch).open(QIODevice::WriteOnly) && false; }));
    EXPECT_FALSE(QFile::exists(scratchName));
    EXPECT_EQ(ErrorOf([&] { fs.ReplaceFile(target, [](const QString&) -> bool { throw RuntimeError(61, QStringLiteral("Disk full")); }); }), 61);
    EXPECT_FALSE(QFile::exists(scratchName));
    EXPECT_EQ(ErrorOf([&] {
                  fs.ReplaceFile(target, [&](const QString& scratch) {
                      EXPECT_EQ(QFileInfo(scratch).path(), QFileInfo(target).path());
                      EXPECT_EQ(FileBytes(target), "old bytes");
                      // The rename will find a directory in the target's place.
                      QFile::rename(target, kept);
                      QDir().mkdir(target);
                      return QFile::copy(kept, target + QStringLiteral("/x")) && testing::WriteFileBytes(scratch, "new");
                  });
              }),
              75);
    EXPECT_EQ(FileBytes(target + QStringLiteral("/x")), "old bytes");
    EXPECT_FALSE(QFile::exists(scratchName));
    QDir(target).removeRecursively();
    QFile::rename(kept, target);
    EXPECT_TRUE(fs.ReplaceFile(target, [](const QString& scratch) { return QFile::copy(QStringLiteral("/etc/hostname"), scratch); }));
    EXPECT_EQ(FileBytes(target), FileBytes(QStringLiteral("/etc/hostname")));
    FileHold hold(fs, target);
    EXPECT_EQ(ErrorOf([&] { fs.ReplaceFile(target, [](const QString&) { return true; }); }), 70);
}

TEST(FileSystemFiles, ReadBytesReadsFromEitherEndShortAtTheEndAndNamesItsFailures) {
    Scratch s;
    FileSystem fs;
    const QString file = s.Make("f.bin", "0123456789");
    EXPECT_EQ(fs.ReadBytes(file, 7, 128), "789");
    EXPECT_EQ(fs.ReadBytes(file, 0, 3), "012");
    EXPECT_EQ(fs.ReadBytes(file, 10, 1), "");
    EXPECT_EQ(fs.ReadBytes(file, -4, 128), "6789");  // from the end
    EXPECT_EQ(fs.ReadBytes(file, -128, 128), "0123456789");  // all of a shorter file
    EXPECT_EQ(ErrorOf([&] { fs.ReadBytes(s.Path("none"), 0, 1); }), 53);
    QFile(file).setPermissions(QFileDevice::Permissions());
    if (geteuid() != 0) EXPECT_EQ(ErrorOf([&] { fs.ReadBytes(file, 0, 0); }), 75);
    EXPECT_EQ(fs.Subdirectories(s.Path("")), QStringList());
    QDir().mkdir(s.Path("b"));
    QDir().mkdir(s.Path("A"));
    EXPECT_EQ(fs.Subdirectories(s.Path("")), QStringList({"A", "b"}));
}

TEST(BinaryFile, OneBasedPositionsGrowTheFileReadShortAtTheEndAndReadOnlyNeverWrites) {
    Scratch d;
    const QString p = d.Path("rec.bin");
    FileSystem fs;
    {
        BinaryFile f(fs, p);  // a missing file is made
        EXPECT_EQ(f.Length(), 0);
        f.Put(1, "abc");
        f.Put(7, "xy");
        EXPECT_EQ(f.Length(), 8);
        EXPECT_EQ(f.Get(1, 8), QByteArray("abc\0\0\0xy", 8));
        f.Put(2, "Z");
        EXPECT_EQ(f.Get(7, 100), "xy");
        EXPECT_TRUE(f.Get(9, 1).isEmpty());
        EXPECT_EQ(ErrorOf([&] { f.Get(0, 1); }), 5);
        EXPECT_EQ(ErrorOf([&] { fs.Kill(p); }), 75);  // open counts as held
    }
    EXPECT_EQ(FileBytes(p), QByteArray("aZc\0\0\0xy", 8));
    EXPECT_FALSE(fs.IsHeldOpen(p));

    // Read only never makes a file and never writes.
    const QString missing = d.Path("none.ini");
    EXPECT_EQ(ErrorOf([&] { BinaryFile f(fs, missing, BinaryFile::ReadOnly); }), 53);
    EXPECT_FALSE(QFile::exists(missing));
    {
        BinaryFile f(fs, p, BinaryFile::ReadOnly);
        EXPECT_EQ(ErrorOf([&] { f.Put(1, "XX"); }), 70);
    }
    EXPECT_EQ(FileBytes(p), QByteArray("aZc\0\0\0xy", 8));
    EXPECT_EQ(ErrorOf([&] { BinaryFile f(fs, d.Path("")); }), 75);  // a directory
    EXPECT_EQ(ErrorOf([&] { BinaryFile f(fs, d.Path("no/dir.bin")); }), 76);
}

TEST(Paths, DriveLettersStandForTheHomeDirectory) {
    const QString home = QStringLiteral("/home/ann");
    EXPECT_EQ(MapWindowsPath(QStringLiteral("d:\\Music\\Pop\\"), home + u'/'), QStringLiteral("/home/ann/Music/Pop/"));
    EXPECT_EQ(MapWindowsPath(QStringLiteral("C:\\"), home), home);
    EXPECT_EQ(MapWindowsPath(QStringLiteral("C:Lyrics"), home), QStringLiteral("/home/ann/Lyrics"));
    EXPECT_EQ(MapWindowsPath(QStringLiteral("C:\\Lyrics"), QStringLiteral("/")), QStringLiteral("/Lyrics"));
    // No drive: only the separators change.
    EXPECT_EQ(MapWindowsPath(QStringLiteral("Lyrics\\Pop"), home), QStringLiteral("Lyrics/Pop"));
    EXPECT_EQ(MapWindowsPath(QStringLiteral("É:\\x"), home), QStringLiteral("É:/x"));
}

}  // namespace
}  // namespace zor
