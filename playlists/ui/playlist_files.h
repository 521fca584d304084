#pragma once
// The playlist files on the main window: opening a .zpl or M3U file into
// the playlist, and saving MFgrid2 as .zpl or M3U. Reading and writing go
// straight between the file and the grid.
namespace zor {

class Form1;

// Asks for a file and reads it: an M3U file (a name ending in "m3u", in
// lower case) into MFGrid1 and on into the playlist, anything else as .zpl
// records into MFgrid2. It does not start playing. Command3 in the playlist.
void OpenPlaylistFile(Form1& f);
// Open2: reads a playlist as above, then plays it from its first row.
void OpenPlaylistAndPlay(Form1& f);
// PlaylistOpenName as an M3U file, into MFGrid1, then EnterPlaylistMode.
void ReadM3u(Form1& f);
// MFgrid2 into PlaylistSaveName, over what the file held.
void WriteZpl(Form1& f);
void WriteM3u(Form1& f);
void SavePlaylistAs(Form1& f);       // Save4, Command4 in the playlist
void SavePlaylistM3u(Form1& f);      // Save5
void SaveDefaultPlaylist(Form1& f);  // Save3: MP3play1.zpl

}  // namespace zor
