#pragma once
// The playlist mode of the main window: the change between the catalogue
// and the playlist, the making of the playlist from the marks in MFGrid1,
// the selection of all songs by one field, the loop that plays MFgrid2, and
// the clicks that drive them.
namespace zor {

class Form1;

// Lays the window out for the playlist, copies the marked rows into MFgrid2
// in the order of marking, and does what PlayMode says: 0 show and report
// not started, 1 start, 2 show as made.
void EnterPlaylistMode(Form1& f);
// The layout half of EnterPlaylistMode: the grids side by side, MFgrid2 in
// MFGrid1's font, the headings; the window is then in the playlist mode.
// A playlist read from a file calls it itself.
void ShowPlaylistGrids(Form1& f);
// The bar as the playlist has it: the repeat tip, the transport buttons and
// the playlist's tips and captions, as EnterPlaylistMode sets them.
void TurnControlsToPlaylist(Form1& f);
// Back to the catalogue: the bar, the layout, and a reload of the catalogue,
// which clears every mark. A song that plays goes on.
void LeavePlaylistMode(Form1& f);
// Plays MFgrid2 from PlaylistPosition until PlayStopped is set, steered by
// SkipCommand after each song.
void RunPlaylist(Form1& f);

// In the catalogue: marks every song with the current row's artist (album,
// title, year) and starts the playlist. In the playlist: random order.
void SelectAllByArtist(Form1& f);  // Command6, SelArt1
void SelectAllByAlbum(Form1& f);   // SelAlb1
void SelectAllByTitle(Form1& f);   // SelTit1
void SelectAllByYear(Form1& f);    // SelYear

// The clicks.
void ShowAndStartPlaylist(Form1& f);  // Playlist1
void ShowPlaylistOnly(Form1& f);      // Playlist2
void ClearPlaylist(Form1& f);         // Playlist3
void BackToDatabase(Form1& f);        // Playlist4
void PlayIntrosOnly(Form1& f);        // Intro1
void TogglePlaylistMode(Form1& f);    // Command7
void PlaylistBack(Form1& f);          // Command1 in the playlist
void PlaylistRepeat(Form1& f);        // Command8 in the playlist
void PlaylistNext(Form1& f);          // Command9 in the playlist
void ClickPlaylistGrid(Form1& f);     // a click on a row of MFgrid2
void DoubleClickPlaylistGrid(Form1& f);

}  // namespace zor
