#pragma once
// Data1 and its recordset: the catalogue table MP3DATA in an SQLite file that
// keeps its old .mdb name. Rows are in table order (insertion order); a row is
// reached by its absolute position, counted from 0. While open, the file
// counts as held by the process, so it can't be deleted or renamed.
#include "catalogue/song.h"
#include "platform/file_system.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>
#include <map>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace zor {

// The engine refused the file: not a database, no MP3DATA table, read-only,
// unreadable. The old program showed no report of its own for this.
struct EngineFailure {
    QString reason;
};

class CatalogueStore {
public:
    explicit CatalogueStore(FileSystem& files);
    ~CatalogueStore();
    CatalogueStore(const CatalogueStore&) = delete;
    CatalogueStore& operator=(const CatalogueStore&) = delete;

    QString DatabaseName;
    QString RecordSource = QStringLiteral("MP3DATA");

    // Opens DatabaseName and hands its rows, in table order, to the bound
    // grid: appended to `rows`, the fields in columns 1..11 of each GridRow;
    // `heading` gets the field names in columns 1..11. Throws EngineFailure
    // when the file is no catalogue.
    void Refresh(std::vector<GridRow>& rows, GridRow& heading);
    void Refresh();  // the same, for callers with no grid bound
    // Data1.Database.Close: lets go of the file. Under an open transaction
    // it refuses (error 3246) and the store stays as it is: closing would
    // drop the transaction's writes, and every later write would land on its
    // own with the final commit doing nothing. A Refresh closes first, so it
    // refuses the same way.
    void Close();
    bool IsOpen() const { return db_ != nullptr; }
    bool InTransaction() const { return transactionDepth_ > 0; }

    // The recordset. A recordset that is not open raises error 91, as using
    // a closed recordset did.
    int RecordCount() const;
    void MoveFirst();
    void MoveNext();
    bool Eof() const;
    int AbsolutePosition() const;
    void SetAbsolutePosition(int position);
    void AddNew();
    void Edit();
    void Update();
    void Delete();
    QVariant Field(int n) const;
    void SetField(int n, const QVariant& value);

    // Field `field` of the first `count` rows in table order set to their
    // place, counted from 1: what a walk with Edit, SetField and Update
    // does, in one statement. More rows than the table has is error 3021,
    // with nothing written.
    void NumberRows(int field, int count);

    // Many writes in one transaction: all of them land, or none. Open it,
    // do the work, Commit; leaving the scope without a Commit rolls back.
    // Transactions nest: only the outermost Commit writes, and a rollback
    // of an inner one takes the outer one's writes along, so the outer's
    // Commit then raises error 3034.
    class Transaction {
    public:
        explicit Transaction(CatalogueStore& store);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void Commit();
        // Rolls back now, so that the caller can put its view back in line.
        void Rollback();

    private:
        CatalogueStore& store_;
        unsigned generation_;  // the outermost transaction this one belongs to
        bool open_ = true;
    };

    // Writes a compacted copy of the closed file `source` to `target` (which
    // must not exist). Returns false, writing nothing, when that fails.
    static bool CompactFile(const QString& source, const QString& target);

private:
    enum class EditMode { None, AddNew, Edit };
    void Open();
    void CloseNow();
    void BeginTransaction();
    void CommitTransaction(unsigned generation);
    void RollbackTransaction();
    size_t ExpectedRows();
    void RequireOpen() const;
    void RequireCurrent() const;
    void LoadCurrent();
    sqlite3_stmt* Prepare(const char* sql);

    FileSystem& files_;
    sqlite3* db_ = nullptr;
    FileHold hold_;
    QStringList columns_;
    std::vector<long long> rowids_;
    int current_ = -1;
    EditMode mode_ = EditMode::None;
    std::array<QVariant, kSongFields> buffer_;
    unsigned dirty_ = 0;  // fields set since AddNew or Edit, one bit each
    bool loaded_ = false;
    int transactionDepth_ = 0;
    unsigned transactionGeneration_ = 0;  // counts outermost transactions begun
    std::vector<sqlite3_stmt*> statements_;
    std::map<unsigned, sqlite3_stmt*> updates_;
    std::map<int, sqlite3_stmt*> numbering_;
    sqlite3_stmt* select_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    sqlite3_stmt* delete_ = nullptr;
};

}  // namespace zor
