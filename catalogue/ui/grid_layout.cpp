#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/form1.h"

#include <QHeaderView>
#include <QStyle>
#include <QStyleOptionHeader>

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

const char* const kHeadings[kGridCols] = {"",      "SONG TITLE:", "ARTIST:",  "ALBUM:",   "YEAR:",       "STYLE:", "PATH:",
                                          "ID3:",  "LYRICS:",     "PICTURE:", "EXECUTE:", "[Reserved.]", "PLAY:"};

// The heading a column shows, or will show once a catalogue fills the grid.
QString HeadingOf(const SongGrid& grid, int c) {
    const QString shown = grid.Rows() > 0 ? grid.TextMatrix(0, c) : QString();
    return shown.isEmpty() ? QString::fromLatin1(kHeadings[c]) : shown;
}

// The twips were measured for the old grid, whose headings sat closer to the
// edges than this style puts them: a shown column is widened to what its
// heading needs in the grid's font, so that no heading is cut. A hidden
// column (width 0) stays hidden.
void FitHeadings(SongGrid& grid, const SongGridView& view) {
    const QHeaderView* header = view.horizontalHeader();
    for (int c = 0; c < kGridCols; ++c) {
        const QString heading = HeadingOf(grid, c);
        if (grid.ColWidth(c) == 0 || heading.isEmpty()) continue;
        QStyleOptionHeader o;
        o.initFrom(header);
        o.text = heading;
        o.section = c;
        const int px = header->style()->sizeFromContents(QStyle::CT_HeaderSection, &o, QSize(), header).width();
        const int twips = PxToTwips(px);
        if (grid.ColWidth(c) < twips) grid.SetColWidth(c, twips);
    }
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
    FitHeadings(grid, *f.MFGrid1View);
    FitHeadings(f.MFgrid2, *f.MFgrid2View);
}

void SetGridHeadings(Form1& f) {
    // Column 11 keeps the name of the table's field.
    SongGrid& grid = f.MFGrid1;
    for (int c = 0; c < kGridCols; ++c)
        if (c != 11) grid.SetTextMatrix(0, c, QString::fromLatin1(kHeadings[c]));
    FitHeadings(grid, *f.MFGrid1View);
}

}  // namespace zor
