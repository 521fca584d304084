#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/form1.h"

namespace zor {
namespace {

// A saved layout always has widths; a record whose widths are all zero has
// never had one saved, and would hide every column.
bool HasSavedWidths(const std::array<int32_t, 13>& widths) {
    return std::any_of(widths.begin(), widths.end(), [](int32_t w) { return w > 0; });
}

void ApplyWidths(SongGrid& grid, const std::array<int32_t, 13>& widths) {
    for (int c = 0; c < kGridCols; ++c)
        grid.SetColWidth(c, HasSavedWidths(widths) ? widths[c] : kDefaultColumnWidths[c]);
}

}  // namespace

void LayOutGrids(Form1& f) {
    Jukebox& j = f.j;
    const Settings& s = j.settings;
    SongGrid& grid = f.MFGrid1;
    if (s.GridLayoutUser == 0) {
        for (int c = 0; c < kGridCols; ++c) grid.SetColWidth(c, kDefaultColumnWidths[c]);
        grid.FontName = QStringLiteral("Arial");
        grid.FontSize = 10;
        grid.FontBold = grid.FontItalic = grid.FontUnderline = grid.FontStrikethru = false;
        j.companion.LyricsFont = {QStringLiteral("Arial"), 10, true, false, false, false, BgrFromRgb(100, 255, 255)};
    } else {
        ApplyWidths(grid, s.GridColumnWidth);
        ApplyWidths(f.MFgrid2, s.PlaylistColumnWidth);
        grid.FontName = s.GridFontName;
        grid.FontSize = s.GridFontSize;
        grid.FontBold = s.GridFontBold != 0;
        grid.FontItalic = s.GridFontItalic != 0;
        grid.FontUnderline = s.GridFontUnderline != 0;
        grid.FontStrikethru = s.GridFontStrikeout != 0;
        j.companion.LyricsFont = {s.LyricsFontName,         s.LyricsFontSize,          s.LyricsFontBold != 0, s.LyricsFontItalic != 0,
                        s.LyricsFontUnderline != 0, s.LyricsFontStrikeout != 0, s.LyricsFontColour};
    }
    grid.AppearanceChanged();
}

void SetGridHeadings(Form1& f) {
    static const char* const kHeadings[kGridCols - 1] = {"",        "SONG TITLE:", "ARTIST:",  "ALBUM:",   "YEAR:",   "STYLE:",
                                                         "PATH:",   "ID3:",        "LYRICS:",  "PICTURE:", "EXECUTE:", nullptr};
    SongGrid& grid = f.MFGrid1;
    for (int c = 0; c < kGridCols - 1; ++c)
        if (kHeadings[c]) grid.SetTextMatrix(0, c, QString::fromLatin1(kHeadings[c]));
    grid.SetTextMatrix(0, 12, QStringLiteral("PLAY:"));
}

}  // namespace zor
