#pragma once
// The marks of "all songs by one artist, album, title or year": every row of
// the catalogue grid whose cell in one column equals a key, compared trimmed
// and in lower case. The marks are numbered from 1 in columns 0 and 12;
// marks that stood before are not cleared.
#include <QString>

#include <cstdint>
#include <functional>

namespace zor {

class SongGrid;

// The key as the cell compares: trimmed of blanks and in lower case.
QString FieldKey(const QString& cell);

// Every row from 1 up to, not including, `songCount`. The grid's Row ends
// after the last row looked at; `progress` gets Int((row + 1) / 10) after
// each row. Returns the next mark number (PlaylistEnd).
int32_t MarkMatchingRows(SongGrid& grid, int col, const QString& key, int32_t songCount,
                         const std::function<void(int)>& progress);

// The grid stands sorted on `col`: the group of equal cells around the
// current row, found by walking up to its start and down to its end. At most
// songCount - 1 rows are marked. Returns the next mark number.
int32_t MarkGroupAroundRow(SongGrid& grid, int col, const QString& key, int32_t songCount);

}  // namespace zor
