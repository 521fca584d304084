// The loop that plays MFgrid2.
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/form1.h"

namespace zor {

// The loop plays through the play engine, which is not in this build yet:
// the list is made and shown, and nothing plays.
void RunPlaylist(Form1& f) { f.j.PlayStopped = 1; }

}  // namespace zor
