#pragma once
// Reading and writing ZORjuke.ini in the program directory. The file is never
// made by these operations: it comes with the installation, and a missing
// file stays missing however often the user saves.
#include "shell/fixed_text.h"

#include <array>

namespace zor {

struct Jukebox;

// Replaces the record by the file's contents, as far as the file goes.
// Returns false (and leaves the record alone) when the file is missing.
bool LoadSettings(Jukebox& j);
// Writes the whole record from byte 0 when the file exists; never truncates.
void SaveSettings(Jukebox& j);
// Takes both grids' column widths (twips) and the stamp, then SaveSettings.
void SaveAllSettings(Jukebox& j, const std::array<int, 13>& catalogueWidths, const std::array<int, 13>& playlistWidths);
// A path the user chose for one of the record's path fields, stored as given
// (a path of this machine, not mapped back to a drive letter). One that does
// not fit the field, or has characters the record's code page lacks, is
// refused with a message and the field keeps what it had: a cut path would
// name another place. Returns whether it was stored.
bool StoreUserPath(Jukebox& j, FixedText<50>& field, const QString& path);
// The global Language string from the record's field.
void ApplyLanguageFlag(Jukebox& j);

}  // namespace zor
