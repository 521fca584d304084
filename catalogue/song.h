#pragma once
// One record of table MP3DATA: eleven fields addressed by position, and the
// grid row that shows it (columns 1 to 11 are the fields; 0 and 12 the marks).
#include "catalogue/grid_row.h"

namespace zor {

inline constexpr int kSongFields = 11;
inline constexpr int kRecordNumberField = 10;

// The grid column that shows a field of the table.
constexpr int GridColumnOfField(int field) { return field + 1; }

}  // namespace zor
