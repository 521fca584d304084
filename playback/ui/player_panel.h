#pragma once
// MediaPlayer1's place on the main window: Frame8 with the player's own
// buttons, Label6 "Volume:" and the volume slider. The jukebox never touches
// the volume; the slider is the user's.
namespace zor {

class Form1;

// Makes MediaPlayer1 from the platform's factory, builds its controls in
// Frame8, sends its PlayStateChange to the play engine, and sets the
// jukebox's StopPlayer and FreeSongFromPlayer seams to it.
void AttachMediaPlayer(Form1& f);
// Lets go of the seams (if still this window's) and of the player's events;
// called before the window and its player go.
void DetachMediaPlayer(Form1& f);

}  // namespace zor
