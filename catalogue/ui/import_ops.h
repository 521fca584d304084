#pragma once
// The import: the four ways in (Command1, AddSongs, AddOne, ClearFill), each
// opening the path selector, and the scan that its START button runs.
#include <QString>

namespace zor {

class Form1;

void AddSongsNoClear(Form1& f);  // Command1
void AddSongs(Form1& f);         // AddSongs
void AddOne(Form1& f);           // AddOne
void ClearFill(Form1& f);        // ClearFill
void ScanSelectedPath(Form1& f); // Frame3's Command16

// The song fields that a file name gives when the file has no tag: the part
// before the first "-" and the part after it up to the extension.
struct NameParts {
    QString first, second;
};
NameParts CutFileName(const QString& name);

}  // namespace zor
