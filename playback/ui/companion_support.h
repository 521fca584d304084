#pragma once
// Small helpers shared by the companion operations.
#include "playback/companion_files.h"
#include "shell/fixed_text.h"

namespace zor {

class Companions;
class Form1;
class SongGrid;
struct Jukebox;

// The companions of the main window.
Companions& CompanionsOf(Form1& f);
// The grid on show: MFgrid2 in the playlist mode, else MFGrid1.
SongGrid& CurrentGrid(Form1& f);
// The grid's current row is a song (not the headings of an empty grid).
bool HasSongRow(const SongGrid& grid);
// The trimmed cells of the grid's current row.
CompanionCells CellsOf(const SongGrid& grid);
// A directory of the settings, trimmed and mapped to this machine.
QString SettingsDir(const Jukebox& j, const FixedText<50>& field);

}  // namespace zor
