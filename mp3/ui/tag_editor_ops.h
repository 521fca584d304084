#pragma once
// The tag editor's operations on Form11, the main window's grid and Data1:
// opening and loading, saving, the checks, the timer's auto functions and
// the two passes over the whole catalogue.
namespace zor {

class Form1;
class Form11;

// Editor1, Tag1 and the button bar's Edit: column 6 of the current row into
// the message line, and the window shown and loaded with that song.
void OpenTagEditor(Form1& f);
// A click on a row of MFGrid1: reloads the window when it is on show.
void ReloadTagEditorOnClick(Form1& f);

// Load: empty fields, the style list and the boxes from the settings, then
// the song whose path the message line holds, and the checks the boxes ask.
void LoadTagEditor(Form11& w);
// Command5: the tag and the record of the grid's current row from the fields.
void SaveSongEdit(Form11& w);
// Command6, Command7, Command8: the lyrics, picture and encoding checks.
void VerifyLyrics(Form11& w);
void VerifyPicture(Form11& w);
void AnalyseEncoding(Form11& w);
// The score block rebuilt from HScroll1, HScroll2 and Check8.
void RebuildCommentBlock(Form11& w);
// Timer1, every 100 ms: the auto functions and the auto-save.
void TagEditorTick(Form11& w);
// Command13 and Command14: passes over every row of MFGrid1.
void AutoCorrectAll(Form11& w);
void FillEmptyYears(Form11& w);
// Command11: stops a pass and hides the window.
void CloseTagEditor(Form11& w);

}  // namespace zor
