#pragma once
// The one schema of the installation's databases: the catalogue and its empty
// master (table MP3DATA), the word index and its master (table Table1).
#include <QString>

namespace zor {

// The names of MP3DATA's fields in their order; position is what counts.
extern const char* const kCatalogueFieldNames[11];

// Creates an empty database file with the catalogue's table (or the word
// index's table). Returns false and leaves no file behind when it fails.
bool MakeEmptyCatalogue(const QString& path);
bool MakeEmptyWordIndex(const QString& path);

}  // namespace zor
