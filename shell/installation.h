#pragma once
// The installation files of the program directory, made only where missing:
// the settings record with first-use defaults (and its capitalised twin name,
// see below), the catalogue and its master, the word index and its master,
// and the user guides. Used by the build and by tests.
#include <QString>
#include <QStringList>

namespace zor {

// Returns the files it made. `docsDir` holds the user guides to copy ("" for
// none). The settings record is the same whoever builds it: its default paths
// keep their drive letters and are mapped to the user's home where used.
QStringList InstallProgramFiles(const QString& programDir, const QString& docsDir);

}  // namespace zor
