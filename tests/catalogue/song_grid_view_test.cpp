// The grid's view: the selection painted in the grid's own colours, the keys
// moving it, and the user's scrolling followed by TopRow.
#include "catalogue/ui/song_grid_view.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <tuple>

namespace zor {
namespace {

struct SongGridViewTest : ::testing::Test {
    SongGrid grid;
    std::unique_ptr<SongGridView> view;
    void SetUp() override {
        std::vector<GridRow> rows(61);
        for (int r = 1; r <= 60; ++r)
            for (int c = 1; c <= 11; ++c) rows[r].Set(c, QStringLiteral("r%1c%2").arg(r).arg(c));
        grid.SetAllRows(std::move(rows));
        view = std::make_unique<SongGridView>(grid, QStringLiteral("MFGrid1"));
        view->resize(900, 400);
        view->show();
    }
    QColor PixelAt(int r, int c) {
        const QImage image = view->viewport()->grab().toImage();
        const QRect rect = view->visualRect(view->model()->index(r - 1, c));
        return image.pixelColor(rect.topLeft() + QPoint(rect.width() - 3, 3));
    }
    std::tuple<int, int, int, int> Selection() { return {grid.Row(), grid.Col(), grid.RowSel(), grid.ColSel()}; }
};

TEST_F(SongGridViewTest, TheSelectionIsPaintedInTheGridsColoursAndFollowsIt) {
    grid.BackColor = BgrFromRgb(0, 0, 0);
    grid.BackColorSel = BgrFromRgb(0, 250, 250);
    grid.AppearanceChanged();
    grid.Select(2, 1, 4, 3);
    EXPECT_EQ(PixelAt(3, 2), QColor(0, 250, 250));
    EXPECT_EQ(PixelAt(4, 3), QColor(0, 250, 250));
    EXPECT_EQ(PixelAt(2, 1), QColor(0, 0, 0));  // the current cell stays plain
    EXPECT_EQ(PixelAt(5, 2), QColor(0, 0, 0));
    EXPECT_EQ(PixelAt(3, 4), QColor(0, 0, 0));
    grid.SetRow(5);
    EXPECT_EQ(PixelAt(3, 2), QColor(0, 0, 0));
}

TEST_F(SongGridViewTest, KeysMoveTheCurrentCellAndWithShiftTheOtherCorner) {
    view->setFocus();
    grid.Select(2, 2, 2, 2);
    QTest::keyClick(view.get(), Qt::Key_Down);
    QTest::keyClick(view.get(), Qt::Key_Right);
    EXPECT_EQ(Selection(), std::make_tuple(3, 3, 3, 3));
    QTest::keyClick(view.get(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view.get(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), std::make_tuple(3, 3, 5, 3));
    QTest::keyClick(view.get(), Qt::Key_Up);  // collapses onto the moved current cell
    EXPECT_EQ(Selection(), std::make_tuple(2, 3, 2, 3));
    QTest::keyClick(view.get(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.Row(), 60);
    EXPECT_GT(view->verticalScrollBar()->value(), 0);  // the last row came into view
    EXPECT_EQ(grid.TopRow(), view->verticalScrollBar()->value() + 1);
    QTest::keyClick(view.get(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(view.get(), Qt::Key_Up);
    QTest::keyClick(view.get(), Qt::Key_Left);
    QTest::keyClick(view.get(), Qt::Key_Home);
    EXPECT_EQ(Selection(), std::make_tuple(1, 1, 1, 1));

    // Setting TopRow scrolls the view.
    grid.SetTopRow(20);
    EXPECT_EQ(view->verticalScrollBar()->value(), 19);
}

}  // namespace
}  // namespace zor
