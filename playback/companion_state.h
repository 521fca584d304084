#pragma once
// The lyrics and picture windows' own state: how far the lyrics have
// scrolled and who holds them, which picture of the artist comes next, and
// the band of the screen the pictures may use.
#include <QString>

#include <cstdint>

namespace zor {

// The font of the lyrics windows, set by the grid layout.
struct LyricsFontSpec {
    QString name;
    double size = 10;
    bool bold = false, italic = false, underline = false, strikeout = false;
    int colour = 0;  // 0x00BBGGRR
};

struct CompanionState {
    int16_t LyricsLineCount = 0;
    int16_t LyricsKeepOpen = 0;  // the windows stay up when a song ends
    int16_t ScrollHold = 0;      // the user has taken the lyrics over
    int16_t LyricsEditing = 0;   // a lyrics text is being made: no companion shows
    int16_t PictureNumber = 0;   // the artist's next picture in the plain turn
    int16_t PictureMissing = 0;  // the last cover or back had no file
    int16_t TrueSizePicture = 0;
    // The band of the screen between the main window's bars that the
    // pictures may cover, in pixels; start-up sets it by screen width.
    int32_t PictureTopPx = 152;
    int32_t PictureBottomPx = 205;
    LyricsFontSpec LyricsFont;
};

}  // namespace zor
