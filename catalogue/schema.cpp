#include "catalogue/schema.h"

#include <QFile>

#include <sqlite3.h>

namespace zor {

const char* const kCatalogueFieldNames[11] = {"Song",  "Artist", "Album",   "Year",    "Style",      "Path",
                                              "ID3",   "Lyrics", "Picture", "Execute", "[Reserved.]"};

namespace {

bool MakeDatabase(const QString& path, const char* sql) {
    if (QFile::exists(path)) return false;
    sqlite3* db = nullptr;
    const QByteArray name = QFile::encodeName(path);
    bool ok = sqlite3_open_v2(name.constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) == SQLITE_OK &&
              sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    if (!ok) QFile::remove(path);
    return ok;
}

}  // namespace

bool MakeEmptyCatalogue(const QString& path) {
    return MakeDatabase(path,
                        "CREATE TABLE MP3DATA (Song TEXT, Artist TEXT, Album TEXT, Year TEXT, Style TEXT, "
                        "Path TEXT, ID3 TEXT, Lyrics TEXT, Picture TEXT, Execute TEXT, \"[Reserved.]\" INTEGER);");
}

bool MakeEmptyWordIndex(const QString& path) {
    return MakeDatabase(path,
                        "CREATE TABLE Table1 (Word TEXT COLLATE NOCASE, \"Row\" INTEGER, Nr INTEGER, NextGroup INTEGER);");
}

}  // namespace zor
