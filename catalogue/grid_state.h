#pragma once
// What the catalogue grid remembers between events: the rows of the last
// drag, the cell of the last click, and the sort the catalogue is shown in.
#include <QString>

#include <cstdint>

namespace zor {

struct GridState {
    // The rows of the last drag in the grid, kept between mouse events.
    int32_t GridMarkStartRow = 0;
    int32_t GridMarkEndRow = 0;
    // The current cell at the last click.
    int32_t GridRow = 0;
    int32_t GridCol = 0;
    QString SortedColumnName;
    // The sort chosen for the catalogue at start and the key of the last
    // sort menu, copied from the settings so that a playlist can put the
    // catalogue back in its order.
    int16_t SortAtStartCopy = 0;
    int16_t SortKeyCopy = 0;
};

// The import's choices: one chosen file instead of a tree; each file shown
// as it is scanned (the settings screen's box, not saved).
struct ImportOptions {
    int16_t AddSingleFile = 0;
    int16_t ShowScannedFiles = 0;
};

}  // namespace zor
