#pragma once
// What the user does with the lyrics and picture windows: the Lyrics and
// Pictures menus of the main window, Check1 and Command1 of Form3, List1 of
// Form4, and a key or click that takes the windows over. The menus read the
// current row of the grid on show: MFgrid2 in the playlist mode, else MFGrid1.
namespace zor {

class Form1;
class PictureForm;

void ShowLyricsOfSong(Form1& f);       // Lyr1
void MakeNewLyrics(Form1& f);          // Edit2
void EditLyrics(Form1& f);             // Edit3
void CopyLyricsToClipboard(Form1& f);  // Lyr6
// Lyr2 and Command1: the text goes to the lyrics directory under the song
// file's name with ".txt".
void SaveLyrics(Form1& f);
void SaveLyricsAs(Form1& f);            // Lyr3
void ShowSelectedArtistPicture(Form1& f);  // Pict3
// Pict4: the picture in the pictures directory named like the song's file.
void ShowPictureByPathName(Form1& f);

// Check1 of Form3: the window wide with the plain font, or half wide with
// the lyrics font.
void LyricsTextSizeClick(Form1& f);
// A key or mouse action in the lyrics, or a click on the album cover or
// back: the user takes over. The album windows go and ScrollHold is set;
// outside an edit the lyrics and the artist picture go as well.
void TakeOverCompanions(Form1& f);
// An entry of List1 of Form4, by its place in the list.
void PictureListClick(Form1& f, int entry);

}  // namespace zor
