// The catalogue store against real SQLite files in a temporary directory:
// what it writes is checked in the file itself, byte for byte where it counts.
#include "tests/support/errors.h"
#include "catalogue/catalogue_store.h"
#include "catalogue/schema.h"
#include "platform/runtime_error.h"
#include "platform/testing/test_installation.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace zor::testing {
namespace {

QByteArray FileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

using testing::ErrorOf;

void Exec(const QString& path, const char* sql) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

// Every row as SQLite keeps it: each field's storage class and exact bytes,
// so a change of type or encoding shows as well as a change of text.
std::vector<QStringList> RawRows(const QString& path) {
    std::vector<QStringList> out;
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, "SELECT * FROM MP3DATA ORDER BY rowid", -1, &s, nullptr) == SQLITE_OK) {
        while (sqlite3_step(s) == SQLITE_ROW) {
            QStringList& row = out.emplace_back();
            for (int f = 0; f < sqlite3_column_count(s); ++f) {
                const int type = sqlite3_column_type(s, f);
                const auto* blob = static_cast<const char*>(sqlite3_column_blob(s, f));
                const QByteArray bytes(blob, sqlite3_column_bytes(s, f));
                row << QString::number(type) + u':' + QString::fromLatin1(bytes.toHex());
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
    for (int i = 1; i <= n; ++i) {
        SongFields s;
        s[0] = QStringLiteral("S%1").arg(i);
        s[1] = QStringLiteral(" Beyoncé & Sigur Rós ");
        s[2] = QString::fromUtf8("Ålbum \xF0\x9D\x84\x9E ☃  ");
        s[3] = QStringLiteral("1999");
        s[5] = QStringLiteral("/music/%1/").arg(i) + QString(120, u'x') + QStringLiteral(".mp3");
        s[6] = QStringLiteral(" Y");
        out.push_back(s);
    }
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
};

TEST_F(StoreTest, AddedRowsLandInTheFileAndComeBackInTableOrder) {
    Open(path);
    EXPECT_EQ(store.RecordCount(), 0);
    const QString odd = QString::fromUtf8("Café – Ünïcødé \xF0\x9F\x8E\xB5 ½");
    const QStringList titles = {odd, QStringLiteral("Second"), QStringLiteral("Third")};
    const QStringList artists = {QStringLiteral("ABBA"), QStringLiteral("ABBA"), QStringLiteral("Abba")};
    for (int r = 0; r < 3; ++r) {
        store.AddNew();
        store.SetField(0, titles[r]);
        store.SetField(1, artists[r]);
        store.SetField(6, QStringLiteral(" Y"));
        store.SetField(kRecordNumberField, r + 1);
        store.Update();
    }
    EXPECT_EQ(store.RecordCount(), 3);
    store.Close();

    const auto raw = RawRows(path);
    ASSERT_EQ(raw.size(), 3u);
    EXPECT_EQ(raw[0][0], RawText(odd));
    EXPECT_EQ(raw[0][kRecordNumberField], QStringLiteral("1:31"));  // an INTEGER, shown as its text
    EXPECT_EQ(raw[0][3], QStringLiteral("5:"));  // never set: NULL, not ""

    // Rows are appended after what the caller already has, e.g. its heading row.
    std::vector<GridRow> rows(1);
    rows[0].Set(1, QStringLiteral("kept"));
    GridRow heading;
    store.Refresh(rows, heading);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0][1], QStringLiteral("kept"));
    for (int f = 0; f < kSongFields; ++f) EXPECT_EQ(heading[f + 1], QString::fromLatin1(kCatalogueFieldNames[f]));
    for (int r = 0; r < 3; ++r) {
        EXPECT_EQ(rows[r + 1][1], titles[r]);
        EXPECT_EQ(rows[r + 1][2], artists[r]);
        EXPECT_EQ(rows[r + 1][7], QStringLiteral(" Y"));
        EXPECT_EQ(rows[r + 1][11], QString::number(r + 1));
        EXPECT_TRUE(rows[r + 1][0].isEmpty() && rows[r + 1][4].isEmpty() && rows[r + 1][12].isEmpty());
    }
    store.MoveFirst();
    EXPECT_EQ(Title(), odd);
    EXPECT_EQ(store.Field(kRecordNumberField).toInt(), 1);
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
    EXPECT_EQ(store.Field(7).toString(), QStringLiteral("Naïve lyrics.txt"));
    store.Update();

    // An edit left without Update is dropped by the move, in the file and
    // in what the next row reads.
    store.SetAbsolutePosition(0);
    store.Edit();
    store.SetField(0, QStringLiteral("never saved"));
    store.MoveNext();
    EXPECT_EQ(Title(), QStringLiteral("S2"));
    store.Close();

    const auto after = RawRows(path);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[2], before[2]);
    for (int f = 0; f < kSongFields; ++f) {
        if (f == 7) EXPECT_EQ(after[1][f], RawText(QStringLiteral("Naïve lyrics.txt")));
        else EXPECT_EQ(after[1][f], before[1][f]) << "field " << f;
    }
}

TEST_F(StoreTest, WalksAndPositionsFollowTableOrderAcrossADelete) {
    TestInstallation::AddSongs(path, Songs(5));
    Open(path);
    EXPECT_EQ(store.RecordCount(), 5);
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
    EXPECT_EQ(Title(), QStringLiteral("S3"));
    store.Delete();
    EXPECT_EQ(store.RecordCount(), 4);
    store.SetAbsolutePosition(2);
    EXPECT_EQ(Title(), QStringLiteral("S4"));
    store.SetAbsolutePosition(3);
    EXPECT_EQ(Title(), QStringLiteral("S5"));
    store.Close();
    EXPECT_EQ(ErrorOf([&] { store.RecordCount(); }), 91);

    QStringList left;
    for (const auto& row : TestInstallation::ReadSongs(path)) left << row[0];
    EXPECT_EQ(left, QStringList({"S1", "S2", "S4", "S5"}));
}

TEST_F(StoreTest, NumberingSetsPlacesInTableOrderAndNeverHalfway) {
    TestInstallation::AddSongs(path, Songs(5));
    Open(path);
    store.SetAbsolutePosition(1);
    store.Delete();  // a hole in the rowids
    const auto numbers = [&] {
        QStringList out;
        for (const auto& row : TestInstallation::ReadSongs(path)) out << row[kRecordNumberField];
        return out;
    };
    store.NumberRows(kRecordNumberField, 3);
    EXPECT_EQ(numbers(), QStringList({"1", "2", "3", "5"}));  // the last row left as it was
    store.NumberRows(kRecordNumberField, 4);
    EXPECT_EQ(numbers(), QStringList({"1", "2", "3", "4"}));
    store.SetAbsolutePosition(3);
    store.Edit();
    store.SetField(kRecordNumberField, 40);
    store.Update();
    EXPECT_EQ(ErrorOf([&] { store.NumberRows(kRecordNumberField, 5); }), 3021);
    EXPECT_EQ(numbers(), QStringList({"1", "2", "3", "40"}));
    EXPECT_EQ(store.Field(kRecordNumberField).toInt(), 40);
}

TEST_F(StoreTest, FilesThatAreNoCatalogueAreRefusedAndLeftAlone) {
    const QString text = dir.filePath(QStringLiteral("notes.mdb"));
    WriteFile(text, QByteArray("Standard Jet DB\0\x01\x02 this is no SQLite file", 42));
    const QString index = dir.filePath(QStringLiteral("Mp3find1.mdb"));
    ASSERT_TRUE(MakeEmptyWordIndex(index));
    const QString narrow = dir.filePath(QStringLiteral("narrow.mdb"));
    Exec(narrow, "CREATE TABLE MP3DATA (Song, Artist, Album, Year, Style, Path, ID3, Lyrics, Picture, Execute);"
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
    EXPECT_FALSE(QFile::exists(missing));
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
    Open(target);
    EXPECT_EQ(store.RecordCount(), 30);
    store.SetAbsolutePosition(29);
    EXPECT_EQ(Title(), QStringLiteral("S60"));
    store.Close();

    const QByteArray kept = FileBytes(target);
    EXPECT_FALSE(CatalogueStore::CompactFile(path, target));
    EXPECT_EQ(FileBytes(target), kept);

    const QString text = dir.filePath(QStringLiteral("text.mdb"));
    WriteFile(text, QByteArray(4096, 'z'));
    const QString out1 = dir.filePath(QStringLiteral("out1.mdb")), out2 = dir.filePath(QStringLiteral("out2.mdb"));
    EXPECT_FALSE(CatalogueStore::CompactFile(dir.filePath(QStringLiteral("missing.mdb")), out1));
    EXPECT_FALSE(CatalogueStore::CompactFile(text, out2));
    EXPECT_FALSE(QFile::exists(out1));
    EXPECT_FALSE(QFile::exists(out2));
}

TEST_F(StoreTest, RolledBackWritesLeaveTheFileAsItWasAndCommittedOnesLand) {
    TestInstallation::AddSongs(path, Songs(3));
    const QByteArray before = FileBytes(path);
    Open(path);
    store.BeginTransaction();
    store.BeginTransaction();  // nested: only the outermost commit counts
    for (int i = 0; i < 3; ++i) {
        store.SetAbsolutePosition(i);
        store.Edit();
        store.SetField(kRecordNumberField, 100 + i);
        store.Update();
    }
    store.CommitTransaction();
    store.SetAbsolutePosition(0);
    store.Delete();
    store.RollbackTransaction();
    store.Close();
    EXPECT_EQ(FileBytes(path), before);

    Open(path);
    store.BeginTransaction();
    store.SetAbsolutePosition(2);
    store.Edit();
    store.SetField(kRecordNumberField, 42);
    store.Update();
    store.CommitTransaction();
    store.Close();
    const auto songs = TestInstallation::ReadSongs(path);
    ASSERT_EQ(songs.size(), 3u);
    EXPECT_EQ(songs[0][kRecordNumberField], QStringLiteral("1"));
    EXPECT_EQ(songs[2][kRecordNumberField], QStringLiteral("42"));
}

}  // namespace
}  // namespace zor::testing
