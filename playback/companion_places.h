#pragma once
// Where the lyrics and picture windows go on the screen, in pixels. The
// lyrics take the left half and the pictures the right, so their edges meet;
// the top and the room kept free at the bottom come from PictureTopPx and
// PictureBottomPx, which differ between the skins.
#include <QRect>

namespace zor {

struct Jukebox;

// The lyrics window: artistic skin left 0 and half the screen plus 10; the
// normal skin left 10 and half the screen less 10, or the screen less 38
// when `wide` (Check1 of Form3).
QRect LyricsPlace(const Jukebox& j, bool wide);
// The lyrics window's width when Check1 is clicked: the screen less 38 when
// on, otherwise half wide as the skin places it.
int LyricsWidthForCheck(const Jukebox& j, bool wide);
// The picture windows in the right half: half the screen less 25 wide in the
// normal skin, half the screen in the artistic one.
QRect PicturePlace(const Jukebox& j);
QRect FullScreenPlace(const Jukebox& j);
// The start picture shown while the catalogue opens: nearly the whole width
// in the normal skin, the left half in the artistic one, the full screen
// when pictures are maximized.
QRect StartPicturePlace(const Jukebox& j);

}  // namespace zor
