#pragma once
// Header repair from the main window: strips what stands before a song's
// first frames (the "non-standard header" some players refuse) by copying
// the song through the scratch file ZOR1.mp3 in the program directory.
namespace zor {

class Form1;
class SongGrid;

// The song is column 6 of the grid's current row (MFGrid1 for the RemHead
// entry and for the play engine after a song failed to play). The message
// line tells the start and, when the song was replaced, the end. Every
// failure ends the repair quietly with the song as it was; the catalogue is
// never deleted. Never raises.
void RemoveLeadIn(Form1& f, SongGrid& grid);

// RemHead: the repair on MFGrid1's current row, after which the grid is
// drawn again, as the play engine leaves it after a song's preparation.
void RemoveLeadInFromMenu(Form1& f);

}  // namespace zor
