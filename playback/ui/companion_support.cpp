#include "playback/ui/companion_support.h"

#include "catalogue/song_grid.h"
#include "platform/nul_text.h"
#include "playback/ui/companions.h"
#include "shell/ui/form1.h"

namespace zor {

Companions& CompanionsOf(Form1& f) { return *f.companions; }

SongGrid& CurrentGrid(Form1& f) { return f.j.PlaylistActive == 1 ? f.MFgrid2 : f.MFGrid1; }

bool HasSongRow(const SongGrid& grid) { return grid.Row() >= grid.FixedRows() && grid.Row() < grid.Rows(); }

CompanionCells CellsOf(const SongGrid& grid) {
    const int r = grid.Row();
    // The cells become file names: a tag's field ends at its first zero.
    auto cell = [&](int c) { return TrimmedBeforeNul(grid.RowCells(r)[c]); };
    return {cell(1), cell(2), cell(3), cell(6), cell(8)};
}

QString SettingsDir(const Jukebox& j, const FixedText<50>& field) { return j.MapPath(vb::Trim(field.Text())); }

}  // namespace zor
