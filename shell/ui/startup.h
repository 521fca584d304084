#pragma once
// The life of the process: Form1's Load and Unload, the ways out, the skin
// change and Timer1's empty-catalogue notice.
#include <QString>

namespace zor {

class Form1;
struct Jukebox;

// Form1's Load: finds the program's directory, reads the settings, lays the
// window out and, with AutoLoad, opens the catalogue. It runs again at every
// skin or language reload. Returns false when the program was found in none
// of its places: the error was shown and the process ended.
bool Form1Load(Form1& f);
// The hint about the database engine that stands in the message line until
// a catalogue opens, and again when one could not be opened.
void ShowStartupHint(Form1& f);
// Form1's Unload: ends the process unless the window is only being reloaded.
void Form1Unload(Form1& f);
// Esc in the main window.
void EscapeKey(Form1& f);
// Exit1 (menu) and Command5 (button bar).
void ExitProgram(Form1& f, bool fromButton);
// Ascreen (to the artistic skin) and Picture6 (back to the normal skin).
void ChangeSkin(Form1& f, bool toArtistic);
void Timer1Tick(Form1& f);
void ToggleDirectHelp(Form1& f);
// Sett3: both grids' widths and the stamp, then the record.
void SaveAllSettingsFromForm(Form1& f);
// Waits about `seconds` while events go on (the clock decides).
void PauseWithEvents(Jukebox& j, double seconds);

}  // namespace zor
