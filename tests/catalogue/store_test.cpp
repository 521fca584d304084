// The catalogue store against real SQLite files in a temporary directory:
// what it writes is checked in the file itself, byte for byte where it counts.
#include "catalogue/catalogue_store.h"
#include "catalogue/schema.h"
#include "platform/runtime_error.h"
#include "platform/testing/test_installation.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace zor::testing {
namespace {

// Every row as SQLite keeps it: each field's storage class and exact bytes,
// so a change of type or encoding shows as well as a change of text. With
// `sql`, runs that on the file instead and returns nothing.
std::vector<QStringList> RawRows(const QString& path, const char* sql = nullptr) {
    std::vector<QStringList> out;
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    sqlite3_stmt* s = nullptr;
    if (sql) {
        EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    } else if (sqlite3_prepare_v2(db, "SELECT * FROM MP3DATA ORDER BY rowid", -1, &s, nullptr) == SQLITE_OK) {
        while (sqlite3_step(s) == SQLITE_ROW) {
            QStringList& row = out.emplace_back();
            for (int f = 0; f < sqlite3_column_count(s); ++f) {
                const QByteArray bytes(static_cast<const char*>(sqlite3_column_blob(s, f)), sqlite3_column_bytes(s, f));
                row << QString::number(sqlite3_column_type(s, f)) + u':' + QString::fromLatin1(bytes.toHex());
            }
        }
    }
    sqlite3_finalize(s);
    sqlite3_close(db);
    return out;
}

QString RawText(const QString& text) { return QStringLiteral("3:") + QString::fromLatin1(text.toUtf8().toHex()); }

// Songs whose fields carry what must survive untouched: blanks at both ends,
// letters outside ASCII and outside the BMP, the " Y" marks.
std::vector<SongFields> Songs(int n) {
    std::vector<SongFields> out;
    for (int i = 1; i <= n; ++i)
        out.push_back({QStringLiteral("S%1").arg(i), " Beyoncé & Sigur Rós ", "Ålbum \xF0\x9D\x84\x9E ☃  ", "", "",
                       QStringLiteral("/music/%1/").arg(i) + QString(120, u'x') + ".mp3", " Y"});
    return out;
}

struct StoreTest : ::testing::Test {
    QTemporaryDir dir;
    FileSystem files;
    CatalogueStore store{files};
    QString path = dir.filePath(QStringLiteral("Mp3data1.mdb"));

    void SetUp() override { ASSERT_TRUE(MakeEmptyCatalogue(path)); }
    void Open(const QString& p) {
        store.DatabaseName = p;
        store.Refresh();
    }
    QString Title() const { return store.Field(0).toString(); }
    void SetNumber(int position, int number) {
        store.SetAbsolutePosition(position);
        store.Edit();
        store.SetField(kRecordNumberField, number);
        store.Update();
    }
    QStringList Numbers() {
        QStringList out;
        for (const auto& row : TestInstallation::ReadSongs(path)) out << row[kRecordNumberField];
        return out;
    }
};

// Table order across many adds is the walks' test and the import's.
TEST_F(StoreTest, AnAddedRowLandsInTheFileInItsTypesAndComesBack) {
    Open(path);
    const QString title = QString::fromUtf8("Café – Ünïcødé \xF0\x9F\x8E\xB5 ½");
    store.AddNew();
    store.SetField(0, title);
    store.SetField(kRecordNumberField, 1);
    store.Update();
    store.Close();
    const auto raw = RawRows(path);
    ASSERT_EQ(raw.size(), 1u);
    EXPECT_EQ(raw[0][0], RawText(title));
    EXPECT_EQ(raw[0][kRecordNumberField], QStringLiteral("1:31"));  // an INTEGER, shown as its text
    EXPECT_EQ(raw[0][3], QStringLiteral("5:"));  // never set: NULL, not ""
    Open(path);
    EXPECT_EQ(Title(), title);
    EXPECT_EQ(store.Field(3).toString(), QString());
}

TEST_F(StoreTest, EditWritesOnlyTheFieldsItSet) {
    TestInstallation::AddSongs(path, Songs(3));
    const auto before = RawRows(path);
    const QByteArray bytes = FileBytes(path);

    Open(path);
    store.SetAbsolutePosition(1);
    store.Edit();
    store.Update();  // nothing set: nothing written
    EXPECT_EQ(FileBytes(path), bytes);

    store.Edit();
    store.SetField(7, QStringLiteral("Naïve lyrics.txt"));
    // Reading other fields between the set and the update must not undo the set.
    EXPECT_EQ(Title(), QStringLiteral("S2"));
    store.Update();

    // An edit left without Update is dropped by the move, in the file and
    // in what the next row reads.
    store.SetAbsolutePosition(0);
    store.Edit();
    store.SetField(0, QStringLiteral("never saved"));
    store.MoveNext();
    EXPECT_EQ(Title(), QStringLiteral("S2"));
    store.Close();

    auto expected = before;
    expected[1][7] = RawText(QStringLiteral("Naïve lyrics.txt"));
    EXPECT_EQ(RawRows(path), expected);
}

TEST_F(StoreTest, WalksAndPositionsFollowTableOrderAcrossADelete) {
    TestInstallation::AddSongs(path, Songs(5));
    Open(path);
    EXPECT_EQ(store.AbsolutePosition(), 0);  // a fresh open stands on the first row
    QStringList walked;
    for (store.MoveFirst(); !store.Eof(); store.MoveNext()) walked << Title() + u'@' + QString::number(store.AbsolutePosition());
    EXPECT_EQ(walked, QStringList({"S1@0", "S2@1", "S3@2", "S4@3", "S5@4"}));
    EXPECT_EQ(store.AbsolutePosition(), -1);
    EXPECT_EQ(ErrorOf([&] { store.MoveNext(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { store.Field(0); }), 3021);
    EXPECT_EQ(ErrorOf([&] { store.SetAbsolutePosition(5); }), 3001);
    EXPECT_EQ(ErrorOf([&] { store.SetAbsolutePosition(-1); }), 3001);

    store.SetAbsolutePosition(2);
    store.Delete();
    EXPECT_EQ(store.RecordCount(), 4);
    store.SetAbsolutePosition(2);
    EXPECT_EQ(Title(), QStringLiteral("S4"));
    store.Close();
    EXPECT_EQ(ErrorOf([&] { store.RecordCount(); }), 91);
    EXPECT_EQ(TestInstallation::ReadSongs(path)[2][0], QStringLiteral("S4"));
}

TEST_F(StoreTest, NumberingSetsPlacesInTableOrderAndNeverHalfway) {
    TestInstallation::AddSongs(path, Songs(5));
    Open(path);
    store.SetAbsolutePosition(1);
    store.Delete();  // a hole in the rowids
    store.NumberRows(kRecordNumberField, 3);
    EXPECT_EQ(Numbers(), QStringList({"1", "2", "3", "5"}));  // the last row left as it was
    store.NumberRows(kRecordNumberField, 4);
    SetNumber(3, 40);
    EXPECT_EQ(ErrorOf([&] { store.NumberRows(kRecordNumberField, 5); }), 3021);
    EXPECT_EQ(Numbers(), QStringList({"1", "2", "3", "40"}));
    EXPECT_EQ(store.Field(kRecordNumberField).toInt(), 40);
}

TEST_F(StoreTest, FilesThatAreNoCatalogueAreRefusedAndLeftAlone) {
    const QString text = dir.filePath(QStringLiteral("notes.mdb"));
    ASSERT_TRUE(WriteFileBytes(text, QByteArray("Standard Jet DB\0\x01\x02 this is no SQLite file", 42)));
    const QString index = dir.filePath(QStringLiteral("Mp3find1.mdb"));
    ASSERT_TRUE(MakeEmptyWordIndex(index));
    const QString narrow = dir.filePath(QStringLiteral("narrow.mdb"));
    RawRows(narrow, "CREATE TABLE MP3DATA (Song, Artist, Album, Year, Style, Path, ID3, Lyrics, Picture, Execute);"
                    "INSERT INTO MP3DATA VALUES ('a','b','c','d','e','f','g','h','i','j');");
    const QString locked = dir.filePath(QStringLiteral("locked.mdb"));
    ASSERT_TRUE(MakeEmptyCatalogue(locked));
    TestInstallation::AddSongs(locked, Songs(2));
    ASSERT_TRUE(QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther));
    const QString missing = dir.filePath(QStringLiteral("missing.mdb"));

    for (const QString& p : {text, index, narrow, locked, missing}) {
        SCOPED_TRACE(p.toStdString());
        Open(path);  // a good catalogue open before: a refused open lets go of it
        const QByteArray before = FileBytes(p);
        EXPECT_THROW(Open(p), EngineFailure);
        EXPECT_FALSE(store.IsOpen());
        EXPECT_FALSE(files.IsHeldOpen(path));
        EXPECT_FALSE(files.IsHeldOpen(p));
        EXPECT_EQ(FileBytes(p), before);
        EXPECT_FALSE(QFile::exists(p + QStringLiteral("-journal")));
    }
    EXPECT_EQ(QFileInfo(locked).permissions() & QFileDevice::WriteOwner, 0);
}

TEST_F(StoreTest, CompactedCopyHoldsTheSameRowsAndNeverOverwrites) {
    TestInstallation::AddSongs(path, Songs(60));
    Open(path);
    for (int i = 0; i < 30; ++i) {
        store.SetAbsolutePosition(i);  // every other row goes
        store.Delete();
    }
    store.Close();
    const auto rows = RawRows(path);
    ASSERT_EQ(rows.size(), 30u);

    const QString target = dir.filePath(QStringLiteral("Mp3comp1.mdb"));
    ASSERT_TRUE(CatalogueStore::CompactFile(path, target));
    EXPECT_EQ(RawRows(target), rows);
    EXPECT_LT(QFileInfo(target).size(), QFileInfo(path).size());

    const QByteArray kept = FileBytes(target);
    EXPECT_FALSE(CatalogueStore::CompactFile(path, target));
    EXPECT_EQ(FileBytes(target), kept);

    // A missing or foreign source leaves no target behind.
    const QString text = dir.filePath(QStringLiteral("text.mdb"));
    ASSERT_TRUE(WriteFileBytes(text, QByteArray(4096, 'z')));
    for (const QString& source : {dir.filePath(QStringLiteral("missing.mdb")), text}) {
        const QString out = source + QStringLiteral(".out");
        EXPECT_FALSE(CatalogueStore::CompactFile(source, out));
        EXPECT_FALSE(QFile::exists(out));
    }
}

// Only the outermost commit counts: a transaction left without one leaves
// the file as it was, nested commits included. Closing or reopening the
// store under an open transaction is refused and drops nothing. An inner
// rollback takes the outer transaction's writes, whose commit then says so.
TEST_F(StoreTest, TransactionsLandWholeAtTheOutermostCommitOrNotAtAll) {
    TestInstallation::AddSongs(path, Songs(3));
    const QByteArray before = FileBytes(path);
    Open(path);
    {
        CatalogueStore::Transaction outer(store);
        {
            CatalogueStore::Transaction inner(store);
            for (int i = 0; i < 3; ++i) SetNumber(i, 100 + i);
            inner.Commit();
        }
        store.SetAbsolutePosition(0);
        store.Delete();
    }
    EXPECT_EQ(store.RecordCount(), 3);
    store.Close();
    EXPECT_EQ(FileBytes(path), before);

    Open(path);
    {
        CatalogueStore::Transaction transaction(store);
        store.AddNew();
        store.SetField(0, QStringLiteral("Kept"));
        store.Update();
        EXPECT_EQ(ErrorOf([&] { store.Close(); }), 3246);
        EXPECT_EQ(ErrorOf([&] { store.Refresh(); }), 3246);
        EXPECT_TRUE(store.IsOpen());
        transaction.Commit();
    }
    store.Close();
    ASSERT_EQ(TestInstallation::ReadSongs(path).size(), 4u);

    Open(path);
    CatalogueStore::Transaction outer(store);
    store.SetAbsolutePosition(0);
    store.Delete();
    {
        CatalogueStore::Transaction inner(store);
        inner.Rollback();
    }
    EXPECT_EQ(ErrorOf([&] { outer.Commit(); }), 3034);
    EXPECT_EQ(store.RecordCount(), 4);
    store.Close();
    EXPECT_EQ(TestInstallation::ReadSongs(path).size(), 4u);
}

}  // namespace
}  // namespace zor::testing
