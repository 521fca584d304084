#include "catalogue/catalogue_store.h"

#include "platform/runtime_error.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace zor {
namespace {

RuntimeError NoCurrentRecord() { return {3021, QStringLiteral("No current record.")}; }
RuntimeError NotOpen() { return {91, QStringLiteral("Object variable or With block variable not set")}; }
RuntimeError EngineError(sqlite3* db) {
    return {3146, QStringLiteral("ODBC--call failed: ") + QString::fromUtf8(sqlite3_errmsg(db))};
}

struct Statement {
    sqlite3_stmt* s = nullptr;
    explicit Statement(sqlite3_stmt* st) : s(st) {}
    ~Statement() { sqlite3_reset(s); }
};

void Bind(sqlite3_stmt* s, int index, const QVariant& v) {
    if (!v.isValid() || v.isNull()) {
        sqlite3_bind_null(s, index);
    } else if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong) {
        sqlite3_bind_int64(s, index, v.toLongLong());
    } else {
        const QByteArray utf8 = v.toString().toUtf8();
        sqlite3_bind_text(s, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
}

QVariant ColumnValue(sqlite3_stmt* s, int i) {
    switch (sqlite3_column_type(s, i)) {
    case SQLITE_NULL: return {};
    case SQLITE_INTEGER: return QVariant(static_cast<qlonglong>(sqlite3_column_int64(s, i)));
    case SQLITE_FLOAT: return QVariant(sqlite3_column_double(s, i));
    default:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, i)), sqlite3_column_bytes(s, i));
    }
}

QByteArray Quoted(const QString& name) { return '"' + name.toUtf8().replace("\"", "\"\"") + '"'; }

}  // namespace

CatalogueStore::CatalogueStore(FileSystem& files) : files_(files) {}

// The window that owns the store goes only when no task runs in it, so no
// transaction is open here but at the end of the process; SQLite rolls it
// back as the file closes.
CatalogueStore::~CatalogueStore() { CloseNow(); }

void CatalogueStore::Close() {
    if (transactionDepth_ > 0) throw RuntimeError(3246, QStringLiteral("Operation not supported in transactions."));
    CloseNow();
}

void CatalogueStore::CloseNow() {
    if (!db_) return;
    for (auto& [mask, stmt] : updates_) sqlite3_finalize(stmt);
    updates_.clear();
    numbering_.clear();  // finalized with statements_
    for (sqlite3_stmt* s : statements_) sqlite3_finalize(s);
    statements_.clear();
    select_ = insert_ = delete_ = nullptr;
    sqlite3_close(db_);
    db_ = nullptr;
    hold_.Reset();
    rowids_.clear();
    columns_.clear();
    current_ = -1;
    mode_ = EditMode::None;
    dirty_ = 0;
    loaded_ = false;
    transactionDepth_ = 0;
}

void CatalogueStore::Open() {
    Close();
    const QByteArray name = QFile::encodeName(DatabaseName);
    if (DatabaseName.isEmpty() || !QFileInfo(DatabaseName).isFile()) throw EngineFailure{QStringLiteral("no such file")};
    // One thread uses the connection, so it needs no locking of its own.
    if (sqlite3_open_v2(name.constData(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK) {
        const QString reason = QString::fromUtf8(sqlite3_errmsg(db_));
        sqlite3_close(db_);
        db_ = nullptr;
        throw EngineFailure{reason};
    }
    sqlite3_busy_timeout(db_, 2000);
    sqlite3_stmt* probe = nullptr;
    const QByteArray sql = "SELECT * FROM " + Quoted(RecordSource) + " LIMIT 0";
    const bool table = sqlite3_prepare_v2(db_, sql.constData(), -1, &probe, nullptr) == SQLITE_OK;
    const int columnCount = table ? sqlite3_column_count(probe) : 0;
    for (int i = 0; i < columnCount; ++i) columns_ << QString::fromUtf8(sqlite3_column_name(probe, i));
    sqlite3_finalize(probe);
    QString reason;
    if (!table) reason = QString::fromUtf8(sqlite3_errmsg(db_));
    else if (columnCount < kSongFields) reason = QStringLiteral("the table has too few fields");
    // A file marked read-only counts as such even for a user who could write it anyway.
    else if (sqlite3_db_readonly(db_, "main") == 1 || !(QFileInfo(DatabaseName).permissions() & QFileDevice::WriteOwner))
        reason = QStringLiteral("the file is read-only");
    if (!reason.isEmpty()) {
        Close();
        throw EngineFailure{reason};
    }
    hold_ = FileHold(files_, DatabaseName);
}

void CatalogueStore::Refresh() {
    std::vector<GridRow> rows;
    GridRow heading;
    Refresh(rows, heading);
}

void CatalogueStore::Refresh(std::vector<GridRow>& rows, GridRow& heading) {
    Open();
    for (int f = 0; f < kSongFields; ++f) heading.Set(GridColumnOfField(f), columns_[f]);
    const QByteArray sql = "SELECT rowid, * FROM " + Quoted(RecordSource) + " ORDER BY rowid";
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &s, nullptr) != SQLITE_OK) {
        const QString reason = QString::fromUtf8(sqlite3_errmsg(db_));
        Close();
        throw EngineFailure{reason};
    }
    const size_t firstRow = rows.size();
    const size_t expected = ExpectedRows();
    rows.reserve(firstRow + expected);
    rowids_.reserve(expected);
    GridRowBuilder builder(rows);
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        rowids_.push_back(sqlite3_column_int64(s, 0));
        builder.AddRow();
        for (int f = 0; f < kSongFields; ++f) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(s, f + 1));
            if (text) builder.SetUtf8(GridColumnOfField(f), QByteArrayView(text, sqlite3_column_bytes(s, f + 1)));
        }
    }
    builder.Finish();
    sqlite3_finalize(s);
    if (rc != SQLITE_DONE) {
        const QString reason = QString::fromUtf8(sqlite3_errmsg(db_));
        Close();
        rows.resize(firstRow);
        throw EngineFailure{reason};
    }
    current_ = rowids_.empty() ? -1 : 0;
}

// About how many rows the table has, so the grid's rows are made in place
// once: the largest rowid, which the table's index gives without reading the
// rows (a count would read every page once more). Deletions make it too high,
// which costs only address space; it is capped for tables with odd rowids.
size_t CatalogueStore::ExpectedRows() {
    sqlite3_stmt* s = nullptr;
    long long n = 0;
    const QByteArray sql = "SELECT max(rowid) FROM " + Quoted(RecordSource);
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &s, nullptr) == SQLITE_OK && sqlite3_step(s) == SQLITE_ROW)
        n = sqlite3_column_int64(s, 0);
    sqlite3_finalize(s);
    return size_t(std::clamp<long long>(n, 0, 1 << 20));
}

void CatalogueStore::RequireOpen() const {
    if (!db_) throw NotOpen();
}

void CatalogueStore::RequireCurrent() const {
    RequireOpen();
    if (current_ < 0 || current_ >= int(rowids_.size())) throw NoCurrentRecord();
}

int CatalogueStore::RecordCount() const {
    RequireOpen();
    return int(rowids_.size());
}

void CatalogueStore::MoveFirst() {
    RequireOpen();
    if (rowids_.empty()) throw NoCurrentRecord();
    current_ = 0;
    mode_ = EditMode::None;
    dirty_ = 0;  // leaving a row drops an edit that was not updated
    loaded_ = false;
}

void CatalogueStore::MoveNext() {
    RequireOpen();
    if (current_ >= int(rowids_.size())) throw NoCurrentRecord();
    ++current_;
    mode_ = EditMode::None;
    dirty_ = 0;  // leaving a row drops an edit that was not updated
    loaded_ = false;
}

bool CatalogueStore::Eof() const { return !db_ || current_ < 0 || current_ >= int(rowids_.size()); }

int CatalogueStore::AbsolutePosition() const {
    RequireOpen();
    return current_ >= 0 && current_ < int(rowids_.size()) ? current_ : -1;
}

void CatalogueStore::SetAbsolutePosition(int position) {
    RequireOpen();
    if (position < 0 || position >= int(rowids_.size())) throw RuntimeError(3001, QStringLiteral("Invalid argument."));
    current_ = position;
    mode_ = EditMode::None;
    dirty_ = 0;  // leaving a row drops an edit that was not updated
    loaded_ = false;
}

sqlite3_stmt* CatalogueStore::Prepare(const char* sql) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db_, sql, -1, &s, nullptr) != SQLITE_OK) throw EngineError(db_);
    statements_.push_back(s);
    return s;
}

void CatalogueStore::LoadCurrent() {
    if (loaded_) return;
    RequireCurrent();
    if (!select_) select_ = Prepare(("SELECT * FROM " + Quoted(RecordSource) + " WHERE rowid = ?").constData());
    Statement st(select_);
    sqlite3_bind_int64(select_, 1, rowids_[current_]);
    if (sqlite3_step(select_) != SQLITE_ROW) throw NoCurrentRecord();
    // Fields set since Edit keep their new values until Update writes them.
    for (int f = 0; f < kSongFields; ++f)
        if (!(dirty_ & (1u << f))) buffer_[f] = ColumnValue(select_, f);
    loaded_ = true;
}

void CatalogueStore::AddNew() {
    RequireOpen();
    buffer_.fill(QVariant());
    dirty_ = 0;
    loaded_ = false;  // the buffer no longer holds the current row
    mode_ = EditMode::AddNew;
}

void CatalogueStore::Edit() {
    RequireCurrent();
    dirty_ = 0;
    mode_ = EditMode::Edit;
}

QVariant CatalogueStore::Field(int n) const {
    if (n < 0 || n >= kSongFields) throw RuntimeError(3265, QStringLiteral("Item not found in this collection."));
    if (mode_ == EditMode::AddNew || (dirty_ & (1u << n))) return buffer_[n];
    const_cast<CatalogueStore*>(this)->LoadCurrent();
    return buffer_[n];
}

void CatalogueStore::SetField(int n, const QVariant& value) {
    if (n < 0 || n >= kSongFields) throw RuntimeError(3265, QStringLiteral("Item not found in this collection."));
    if (mode_ == EditMode::None) throw RuntimeError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    buffer_[n] = value;
    dirty_ |= 1u << n;
}

void CatalogueStore::Update() {
    RequireOpen();
    if (mode_ == EditMode::AddNew) {
        if (!insert_) {
            QByteArray sql = "INSERT INTO " + Quoted(RecordSource) + " (";
            for (int f = 0; f < kSongFields; ++f) sql += (f ? "," : "") + Quoted(columns_[f]);
            sql += ") VALUES (?,?,?,?,?,?,?,?,?,?,?)";
            insert_ = Prepare(sql.constData());
        }
        Statement st(insert_);
        for (int f = 0; f < kSongFields; ++f) Bind(insert_, f + 1, buffer_[f]);
        if (sqlite3_step(insert_) != SQLITE_DONE) throw EngineError(db_);
        rowids_.push_back(sqlite3_last_insert_rowid(db_));
    } else if (mode_ == EditMode::Edit) {
        RequireCurrent();
        if (dirty_) {
            sqlite3_stmt*& u = updates_[dirty_];
            if (!u) {
                QByteArray sql = "UPDATE " + Quoted(RecordSource) + " SET ";
                bool first = true;
                for (int f = 0; f < kSongFields; ++f)
                    if (dirty_ & (1u << f)) {
                        sql += (first ? "" : ",") + Quoted(columns_[f]) + "=?";
                        first = false;
                    }
                sql += " WHERE rowid = ?";
                if (sqlite3_prepare_v2(db_, sql.constData(), -1, &u, nullptr) != SQLITE_OK) {
                    updates_.erase(dirty_);
                    throw EngineError(db_);
                }
            }
            Statement st(u);
            int index = 1;
            for (int f = 0; f < kSongFields; ++f)
                if (dirty_ & (1u << f)) Bind(u, index++, buffer_[f]);
            sqlite3_bind_int64(u, index, rowids_[current_]);
            if (sqlite3_step(u) != SQLITE_DONE) throw EngineError(db_);
        }
    } else {
        throw RuntimeError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    }
    mode_ = EditMode::None;
    dirty_ = 0;
    loaded_ = false;
}

void CatalogueStore::Delete() {
    RequireCurrent();
    if (!delete_) delete_ = Prepare(("DELETE FROM " + Quoted(RecordSource) + " WHERE rowid = ?").constData());
    Statement st(delete_);
    sqlite3_bind_int64(delete_, 1, rowids_[current_]);
    if (sqlite3_step(delete_) != SQLITE_DONE) throw EngineError(db_);
    rowids_.erase(rowids_.begin() + current_);
    mode_ = EditMode::None;
    dirty_ = 0;  // leaving a row drops an edit that was not updated
    loaded_ = false;
}

void CatalogueStore::NumberRows(int field, int count) {
    RequireOpen();
    if (field < 0 || field >= kSongFields) throw RuntimeError(3265, QStringLiteral("Item not found in this collection."));
    if (count > int(rowids_.size())) throw NoCurrentRecord();
    const QByteArray table = Quoted(RecordSource);
    const QByteArray sql = "UPDATE " + table + " SET " + Quoted(columns_[field]) +
                           " = r.n FROM (SELECT rowid AS id, row_number() OVER (ORDER BY rowid) AS n FROM " + table +
                           ") AS r WHERE " + table + ".rowid = r.id AND r.n <= ?";
    sqlite3_stmt*& s = numbering_[field];
    if (!s) s = Prepare(sql.constData());
    Statement st(s);
    sqlite3_bind_int(s, 1, count);
    if (sqlite3_step(s) != SQLITE_DONE) throw EngineError(db_);
    mode_ = EditMode::None;
    dirty_ = 0;
    loaded_ = false;
}

CatalogueStore::Transaction::Transaction(CatalogueStore& store) : store_(store) {
    store_.BeginTransaction();
    generation_ = store_.transactionGeneration_;
}

CatalogueStore::Transaction::~Transaction() {
    if (open_) Rollback();
}

void CatalogueStore::Transaction::Commit() {
    if (!open_) throw RuntimeError(3034, QStringLiteral("You tried to commit or rollback without first beginning a transaction."));
    open_ = false;
    store_.CommitTransaction(generation_);
}

void CatalogueStore::Transaction::Rollback() {
    if (!open_) return;
    open_ = false;
    // An inner transaction's rollback has already taken this one's writes.
    if (store_.transactionGeneration_ == generation_) store_.RollbackTransaction();
}

void CatalogueStore::BeginTransaction() {
    RequireOpen();
    if (transactionDepth_ == 0) {
        if (sqlite3_exec(db_, "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK) throw EngineError(db_);
        ++transactionGeneration_;
    }
    ++transactionDepth_;
}

void CatalogueStore::CommitTransaction(unsigned generation) {
    // Rolled back under this one by an inner transaction: nothing of it is left to commit.
    if (generation != transactionGeneration_ || transactionDepth_ == 0)
        throw RuntimeError(3034, QStringLiteral("You tried to commit or rollback without first beginning a transaction."));
    if (transactionDepth_ > 1) {
        --transactionDepth_;
        return;
    }
    if (sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) {
        // A commit that failed leaves the transaction open; it goes back as a whole.
        const RuntimeError error = EngineError(db_);
        RollbackTransaction();
        throw error;
    }
    transactionDepth_ = 0;
}

void CatalogueStore::RollbackTransaction() {
    if (!db_ || transactionDepth_ == 0) return;
    transactionDepth_ = 0;
    ++transactionGeneration_;  // every transaction still open is over
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    // Rows added or deleted in the transaction are back as they were; so
    // must the positions be.
    rowids_.clear();
    sqlite3_stmt* s = nullptr;
    const QByteArray sql = "SELECT rowid FROM " + Quoted(RecordSource) + " ORDER BY rowid";
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &s, nullptr) == SQLITE_OK)
        while (sqlite3_step(s) == SQLITE_ROW) rowids_.push_back(sqlite3_column_int64(s, 0));
    sqlite3_finalize(s);
    current_ = rowids_.empty() ? -1 : 0;
    mode_ = EditMode::None;
    dirty_ = 0;
    loaded_ = false;
}

bool CatalogueStore::CompactFile(const QString& source, const QString& target) {
    if (QFileInfo::exists(target) || !QFileInfo(source).isFile()) return false;
    sqlite3* db = nullptr;
    bool ok = sqlite3_open_v2(QFile::encodeName(source).constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    sqlite3_stmt* s = nullptr;
    if (ok) ok = sqlite3_prepare_v2(db, "VACUUM INTO ?", -1, &s, nullptr) == SQLITE_OK;
    if (ok) {
        const QByteArray t = QFile::encodeName(target);
        sqlite3_bind_text(s, 1, t.constData(), int(t.size()), SQLITE_TRANSIENT);
        ok = sqlite3_step(s) == SQLITE_DONE;
    }
    sqlite3_finalize(s);
    sqlite3_close(db);
    if (!ok) QFile::remove(target);
    return ok;
}

}  // namespace zor
