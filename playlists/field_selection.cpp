#include "playlists/field_selection.h"

#include "catalogue/song_grid.h"
#include "platform/vb.h"

#include <algorithm>

namespace zor {
namespace {

bool Matches(const SongGrid& grid, int row, int col, const QString& key) {
    return FieldKey(grid.RowCells(row)[col].toString()) == key;
}

void Mark(SongGrid& grid, int row, int32_t number) {
    const QString text = QString::number(number);
    grid.SetTextMatrix(row, 0, text);
    grid.SetTextMatrix(row, 12, text);
}

// A song count beyond the grid's rows (a grid changed under it) stops at the
// last row instead of running off the grid.
int32_t LastRow(const SongGrid& grid, int32_t songCount) { return std::min<int32_t>(songCount, grid.Rows() - 1); }

}  // namespace

// Blanks only, as the comparison always trimmed: a tab or a line break is
// part of the text.
QString FieldKey(const QString& cell) { return vb::Trim(cell).toLower(); }

int32_t MarkMatchingRows(SongGrid& grid, int col, const QString& key, int32_t songCount,
                         const std::function<void(int)>& progress) {
    const int32_t last = LastRow(grid, songCount);
    int32_t end = 1;
    int row = 1;
    for (; row < last; ++row) {
        if (Matches(grid, row, col, key)) Mark(grid, row, end++);
        if (progress) progress((row + 1) / 10);
    }
    if (row < grid.Rows()) grid.SetRow(row);
    return end;
}

int32_t MarkGroupAroundRow(SongGrid& grid, int col, const QString& key, int32_t songCount) {
    const int32_t last = LastRow(grid, songCount);
    int row = std::min(grid.Row(), last);
    while (row >= 1 && Matches(grid, row, col, key)) --row;
    int32_t end = 1;
    ++row;
    while (end < songCount && row <= last) {
        Mark(grid, row, end++);
        if (row >= last) break;
        ++row;
        if (!Matches(grid, row, col, key)) break;
    }
    grid.SetRow(std::min(row, grid.Rows() - 1));
    return end;
}

}  // namespace zor
