// Grid rows: cells kept end to end, rows read together sharing blocks of
// text, and rows leaving the shared block when set or copied.
#include "catalogue/grid_row.h"

#include <gtest/gtest.h>

#include <vector>

namespace zor {
namespace {

QString Cell(int r, int c) {
    if ((r + c) % 5 == 0) return {};  // some cells stay empty
    QString s = QStringLiteral("r%1c%2-").arg(r).arg(c);
    if (c == 2 && r % 7 == 0) s += QString::fromUtf8("Mötley Crüe \xF0\x9F\x8E\xB5");
    return s + QString(r % 40, u'x');
}

// Enough rows to fill several blocks, built as a catalogue read builds them,
// after a row that was there before.
std::vector<GridRow> BuiltRows(int count) {
    std::vector<GridRow> rows(1);
    rows[0].Set(3, QStringLiteral("heading"));
    GridRowBuilder builder(rows);
    for (int r = 1; r <= count; ++r) {
        builder.AddRow();
        for (int c = 1; c <= 11; ++c) builder.SetUtf8(c, Cell(r, c).toUtf8());
    }
    builder.Finish();
    return rows;
}

void ExpectCells(const GridRow& row, int r) {
    for (int c = 0; c < kGridCols; ++c)
        ASSERT_EQ(row[c], c >= 1 && c <= 11 ? Cell(r, c) : QString()) << "row " << r << " col " << c;
}

TEST(GridRow, RowsReadTogetherComeOutWholeAcrossBlocksAndSetOrCopiedAlone) {
    std::vector<GridRow> rows = BuiltRows(6000);
    ASSERT_EQ(rows.size(), 6001u);
    EXPECT_EQ(rows[0][3], QStringLiteral("heading"));
    for (int r = 1; r <= 6000; ++r) ExpectCells(rows[r], r);

    // Setting a cell of a shared row leaves its neighbours in the block alone.
    rows[10].Set(2, QStringLiteral("changed"));
    rows[10].Set(12, QStringLiteral("1"));
    EXPECT_EQ(rows[10][2], QStringLiteral("changed"));
    EXPECT_EQ(rows[10][12], QStringLiteral("1"));
    EXPECT_EQ(rows[10][3], Cell(10, 3));
    ExpectCells(rows[9], 9);
    ExpectCells(rows[11], 11);

    // A copy outlives the rows it came from, and so does a row moved out.
    GridRow copy = rows[1500];
    GridRow moved = std::move(rows[1501]);
    GridRow assigned;
    assigned = rows[2999];
    rows.clear();
    ExpectCells(copy, 1500);
    ExpectCells(moved, 1501);
    ExpectCells(assigned, 2999);
    copy.Set(1, {});
    EXPECT_TRUE(copy[1].isEmpty());
    EXPECT_EQ(copy[2], Cell(1500, 2));
    // A cell set from the row's own text, past the last cell too.
    copy.Set(12, copy[2]);
    copy.Set(1, copy[12].sliced(2));
    EXPECT_EQ(copy[12], Cell(1500, 2));
    EXPECT_EQ(copy[1], Cell(1500, 2).sliced(2));
    EXPECT_EQ(copy[3], Cell(1500, 3));
}

}  // namespace
}  // namespace zor
