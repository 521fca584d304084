#pragma once
// Path rules. The settings and the defaults carry Windows paths ("C:\Lyrics");
// a drive letter stands for the user's home directory and "\" for "/".
#include <QString>
#include <QStringList>

namespace zor {

// "X:\rest" -> home + "/rest"; any other text gets "/" for "\" and is kept.
QString MapWindowsPath(const QString& path, const QString& home);

// Where start-up looks for the program when it is not beside itself: the four
// installation places, mapped, in their order.
QStringList ProgramDirCandidates(const QString& home);

// The program's own file name ("ZORjuke.exe" on the system it came from).
inline constexpr const char* kProgramFileName = "ZORjuke";

}  // namespace zor
