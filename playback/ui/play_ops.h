#pragma once
// The play engine on the main window: one row of a song grid carried through
// its whole life (log line, analysis, player, companions, count-down, end),
// the main window's player MediaPlayer1 and the events that steer a song.
//
// One thread: a song's wait runs inside the click that started it and lets
// events through, so clicks, timers and the player's events run nested in it
// and steer it through PlayStopped and DurationSeconds. A second double click
// plays its song on top of the first, which then ends as well.
namespace zor {

class Form1;
class SongGrid;

// Plays the current row of MFGrid1 (a double click, the finder's delayed start).
void PlayDatabaseRow(Form1& f);
// Plays the current row of the grid (MFGrid1, or MFgrid2 for the playlist loop)
// and returns when the song is over; in the catalogue without FastPc, as soon
// as the player has it. False when the song could not be played: its file is
// missing or the internal player refused it.
bool PlayGridRow(Form1& f, SongGrid& grid);
// The lyrics, the album's pictures and the artist picture of the current row.
void ShowCompanions(Form1& f, SongGrid& grid);

// The events.
void DoubleClickCatalogueGrid(Form1& f);  // MFGrid1
void StopPlay(Form1& f);                  // Halt1 "Stop Play"
void Timer3Tick(Form1& f);                // the turn of the pictures
void Timer4Tick(Form1& f);                // the delayed start
void PlayerStateChanged(Form1& f, int newState);  // MediaPlayer1.PlayStateChange

}  // namespace zor
