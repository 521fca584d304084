#pragma once
// The texts of one column of a grid's song rows, top to bottom.
#include "catalogue/song_grid.h"

#include <QStringList>

namespace zor::testing {

inline QStringList ColumnTexts(const SongGrid& g, int c) {
    QStringList out;
    for (int r = 1; r < g.Rows(); ++r) out << g.TextMatrix(r, c);
    return out;
}

}  // namespace zor::testing
