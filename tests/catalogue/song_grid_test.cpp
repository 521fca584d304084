// The grid's row store: its errors, the sort's concrete cases and the
// selected block, and the batching of change notices. The mouse's selection
// rules are tested through the view.
#include "catalogue/song_grid.h"
#include "tests/support/errors.h"
#include "tests/support/grid_columns.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace zor {
namespace {

using testing::ColumnTexts;

// A heading row and one row a text in column 1, each carrying its input
// place in column 11 so that the order of equal keys can be seen after the
// sort.
SongGrid GridOf(const QStringList& texts) {
    std::vector<GridRow> rows(1);
    rows[0].Set(1, QStringLiteral("HEADING"));
    for (int i = 0; i < texts.size(); ++i) {
        GridRow& r = rows.emplace_back();
        r.Set(1, texts[i]);
        r.Set(11, QString::number(i + 1));
    }
    SongGrid g;
    g.SetAllRows(std::move(rows));
    return g;
}

// Every access to a row or column the grid doesn't have is its run-time
// error: 381 for the cells, 30009 and 30010 for the current row and column.
TEST(SongGridAccess, OutsideTheGridIsTheGridsErrorNeverAReadPastIt) {
    using testing::ErrorOf;
    SongGrid g = GridOf({"one"});
    const struct {
        const char* what;
        std::function<void()> call;
        int error;
    } cases[] = {
        {"RowCells(2)", [&] { g.RowCells(2); }, 381},          {"RowCells(-1)", [&] { g.RowCells(-1); }, 381},
        {"TextMatrix(2, 0)", [&] { g.TextMatrix(2, 0); }, 381}, {"SetTextMatrix(1, 13)", [&] { g.SetTextMatrix(1, 13, {}); }, 381},
        {"SetRow(2)", [&] { g.SetRow(2); }, 30009},            {"SetRowSel(-1)", [&] { g.SetRowSel(-1); }, 30009},
        {"SetCol(13)", [&] { g.SetCol(13); }, 30010},          {"ColWidth(13)", [&] { g.ColWidth(13); }, 30010},
        {"Select(0, 0, 5, 0)", [&] { g.Select(0, 0, 5, 0); }, 30009}, {"RowCells(1)", [&] { g.RowCells(1); }, 0},
        {"Text() of no rows", [&] { g.SetRows(0), g.Text(); }, 381}, {"SetText() of no rows", [&] { g.SetText({}); }, 381},
    };
    for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.call), c.error) << c.what;
}

void SortColumn(SongGrid& g, int col, int order) {
    g.SetRow(1);
    g.SetCol(col);  // Row = RowSel: every song row
    g.Sort(order);
}

// Empties, then numbers by value, then texts without regard to case, stable
// either way: the runtime rules' fuzz target holds the sort to that over any
// texts. Here what it hardly comes upon: texts alike in their first eight
// letters, which the sort compares first, and texts that begin others.
TEST(SongGridSort, TextsAlikeInTheirFirstEightLettersOrderAsWholeTextsAndTheSelectionStays) {
    const QStringList texts = {"yesterday once", "ab c", "", "10", "YESTERDAY ONCE", "yesterday", "ab", "9",
                               "Yesterday Once More"};
    SongGrid g = GridOf(texts);
    g.Select(5, 1, 5, 1);
    g.SetTopRow(3);
    g.Sort(1);
    EXPECT_EQ(ColumnTexts(g, 11), QStringList({"3", "8", "4", "7", "2", "6", "1", "5", "9"}));
    EXPECT_EQ(g.TextMatrix(0, 1), QStringLiteral("HEADING"));
    EXPECT_EQ(std::make_tuple(g.Row(), g.Col(), g.RowSel(), g.ColSel(), g.TopRow()), std::make_tuple(5, 1, 5, 1, 3));

    // Any other order leaves the rows alone.
    g = GridOf(texts);
    SortColumn(g, 1, 0);
    EXPECT_EQ(ColumnTexts(g, 1), texts);
}

TEST(SongGridSort, OnlyTheSelectedRowsMoveKeyedByTheSelectedColumnsLeftToRight) {
    std::vector<GridRow> rows(7);
    const char* const data[6][3] = {{"Toto", "IV", "1982"},      {"abba", "Gold", "1992"}, {"ABBA", "Arrival", "1976"},
                                    {"Abba", "Gold", "1979"},     {"abba", "gold", "1978"}, {"Queen", "Jazz", "1978"}};
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < 3; ++c) rows[r + 1].Set(c + 2, QString::fromUtf8(data[r][c]));
    SongGrid g;
    g.SetAllRows(std::move(rows));

    // Rows 2..5 by artist, album, year; the corners may be given either way round.
    g.Select(5, 4, 2, 2);
    g.Sort(1);
    EXPECT_EQ(ColumnTexts(g, 4), QStringList({"1982", "1976", "1978", "1979", "1992", "1978"}));

    // A block that reaches into the heading row sorts from row 1 on.
    g.Select(0, 2, 6, 2);
    g.Sort(2);
    EXPECT_EQ(ColumnTexts(g, 2), QStringList({"Toto", "Queen", "ABBA", "abba", "Abba", "abba"}));
    EXPECT_TRUE(g.TextMatrix(0, 2).isEmpty());
}

TEST(SongGridChanges, WorkWhileRedrawIsOffOrHiddenComesAsOneReset) {
    using Change = SongGrid::Change;
    SongGrid g = GridOf({"a", "b", "c"});
    std::vector<std::tuple<Change, int, int>> seen;
    g.changed = [&](Change c, int r, int col) { seen.emplace_back(c, r, col); };

    g.SetTextMatrix(2, 3, QStringLiteral("x"));
    g.SetRedraw(false);
    for (int r = 1; r <= 3; ++r) g.SetTextMatrix(r, 0, QString::number(r));
    SortColumn(g, 1, 2);
    g.AppendRows(std::vector<GridRow>(5));
    g.SetRedraw(true);
    using Seen = decltype(seen);
    EXPECT_EQ(seen, Seen({{Change::Cell, 2, 3}, {Change::Reset, -1, -1}}));

    // Turning Redraw on with nothing gathered says nothing; with only the
    // selection or TopRow moved, one selection notice.
    seen.clear();
    g.SetRedraw(false);
    g.SetRedraw(true);
    g.SetRedraw(false);
    g.Select(2, 2, 4, 4);
    g.SetTopRow(3);
    g.SetRedraw(true);
    EXPECT_EQ(seen, Seen({{Change::Selection, -1, -1}}));

    // A hidden grid gathers as well, also when Redraw goes on meanwhile; the
    // reset comes when it shows again.
    g.SetVisible(false);
    g.SetRedraw(false);
    g.SetTextMatrix(4, 4, QStringLiteral("y"));
    g.SetRedraw(true);
    g.SetTextMatrix(5, 4, QStringLiteral("z"));
    const auto resets = [&] { return std::count_if(seen.begin(), seen.end(), [](auto& s) { return std::get<0>(s) == Change::Reset; }); };
    EXPECT_EQ(resets(), 0);
    g.SetVisible(true);
    EXPECT_EQ(resets(), 1);
}

}  // namespace
}  // namespace zor
