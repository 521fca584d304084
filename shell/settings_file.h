#pragma once
// Reading and writing ZORjuke.ini in the program directory. The file is never
// made by these operations: it comes with the installation, and a missing
// file stays missing however often the user saves.
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
// The global Language string from the record's field.
void ApplyLanguageFlag(Jukebox& j);

}  // namespace zor
