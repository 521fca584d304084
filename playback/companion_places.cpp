#include "playback/companion_places.h"

#include "platform/vb.h"
#include "shell/jukebox.h"

namespace zor {
namespace {

// The window calls take whole pixels; half an odd screen rounds as the
// runtime rounds, to even.
int Px(double v) { return vb::CLng(v); }

int Height(const Jukebox& j) { return j.shell.ScreenHeightPx - j.companion.PictureBottomPx; }
bool Artistic(const Jukebox& j) { return j.settings.ArtisticScreen == 1; }

}  // namespace

QRect LyricsPlace(const Jukebox& j, bool wide) {
    const double w = j.shell.ScreenWidthPx;
    if (Artistic(j)) return {0, j.companion.PictureTopPx, Px(w / 2 + 10), Height(j)};
    return {10, j.companion.PictureTopPx, wide ? Px(w - 38) : Px(w / 2 - 10), Height(j)};
}

int LyricsWidthForCheck(const Jukebox& j, bool wide) {
    if (wide) return Px(j.shell.ScreenWidthPx - 38.0);
    return LyricsPlace(j, false).width();
}

QRect PicturePlace(const Jukebox& j) {
    const double w = j.shell.ScreenWidthPx;
    return {Px(w / 2), j.companion.PictureTopPx, Artistic(j) ? Px(w / 2) : Px(w / 2 - 25), Height(j)};
}

QRect FullScreenPlace(const Jukebox& j) { return {0, 0, j.shell.ScreenWidthPx, j.shell.ScreenHeightPx}; }

QRect StartPicturePlace(const Jukebox& j) {
    if (j.settings.MaximizePicture != 0) return FullScreenPlace(j);
    const double w = j.shell.ScreenWidthPx;
    if (Artistic(j)) return {0, j.companion.PictureTopPx, Px(w / 2), Height(j)};
    return {10, j.companion.PictureTopPx, Px(w - 20), Height(j) + 15};
}

}  // namespace zor
