#pragma once
// SongGrid: the 13-column text grid behind MFGrid1 and MFgrid2, as a row
// store with the members the jukebox's operations use (Rows, Row, Col,
// RowSel, ColSel, TopRow, Text, TextMatrix, Sort, Clear, Redraw, Visible,
// ColWidth, fonts, colours). Row 0 is the fixed heading row and column 0 the
// fixed mark column. A view listens through `changed`; while the grid is
// hidden or Redraw is off, changes are gathered into one reset.
#include "catalogue/song.h"

#include <QString>

#include <algorithm>
#include <functional>
#include <vector>

namespace zor {

// The columns' widths in twips before any layout is applied.
inline constexpr std::array<int, kGridCols> kDefaultColumnWidths = {400,  2200, 2200, 2000, 700, 1000, 4000,
                                                                    400, 4000, 4000, 2000, 500, 500};

class SongGrid {
public:
    enum class Change { Reset, Cell, Selection, Appearance };
    // Set by the view; called after every change it has to show.
    std::function<void(Change, int row, int col)> changed;

    SongGrid();

    int Rows() const { return int(rows_.size()); }
    void SetRows(int n);
    int Cols() const { return kGridCols; }
    int FixedRows() const { return 1; }

    int Row() const { return row_; }
    int Col() const { return col_; }
    int RowSel() const { return rowSel_; }
    int ColSel() const { return colSel_; }
    // Setting Row or Col collapses the selection onto the new current cell.
    void SetRow(int r);
    void SetCol(int c);
    void SetRowSel(int r);
    void SetColSel(int c);
    void Select(int row1, int col1, int row2, int col2);
    int TopRow() const { return topRow_; }
    void SetTopRow(int r);
    // The user scrolled: TopRow follows, with no notice back to the view.
    void ScrolledTo(int r) { topRow_ = std::clamp(r, 1, std::max(Rows() - 1, 1)); }

    // The left button, as the classic grid answers it. A press in a cell
    // makes it current; on a column's heading it selects the whole column,
    // on the fixed column the whole row, on the corner the whole grid. A
    // drag then moves the selection's other corner: after a heading press
    // by whole columns, after a fixed-column press by whole rows, never
    // after a corner press. A heading press with no song rows changes
    // nothing. Row 0 is the heading, column 0 the fixed column.
    void PressCell(int r, int c);
    void PressHeading(int c) { PressCell(0, c); }
    void DragTo(int r, int c);

    // Every cell access is checked: a row or column outside the grid is
    // the grid's run-time error (381 "Subscript out of range"), never a
    // read past its rows.
    QString Text() const { return TextMatrix(row_, col_); }
    void SetText(const QString& text) { SetTextMatrix(row_, col_, text); }
    QString TextMatrix(int r, int c) const;
    void SetTextMatrix(int r, int c, const QString& text);
    const GridRow& RowCells(int r) const {
        CheckCell(r, 0);
        return rows_[size_t(r)];
    }

    // Replaces all rows at once, heading row included, as a bound data
    // control does.
    void SetAllRows(std::vector<GridRow>&& rows);
    // Appends rows after the last one in one change.
    void AppendRows(std::vector<GridRow>&& rows);

    // Sort 1 ascending, 2 descending: rows Row..RowSel (every song row when
    // Row = RowSel), keys the columns Col..ColSel from left to right. Empty
    // cells come first, then numbers by value, then texts without regard to
    // case; stable. Row, Col, RowSel, ColSel and TopRow keep their values.
    void Sort(int order);

    // Empties every cell, heading included; the row count stays.
    void Clear();

    bool Redraw() const { return redraw_; }
    void SetRedraw(bool on);
    bool Visible() const { return visible_; }
    void SetVisible(bool on);

    int ColWidth(int c) const {
        CheckCol(c);
        return colWidth_[size_t(c)];
    }
    void SetColWidth(int c, int twips);
    // The user dragged a column's border: the width follows, with no notice
    // back to the view that is showing it already.
    void ColumnResized(int c, int twips) {
        if (c >= 0 && c < kGridCols) colWidth_[size_t(c)] = std::max(twips, 0);
    }

    // Colours as 0x00BBGGRR, as the settings keep them.
    int BackColor = 0xFFFFFF;
    int ForeColor = 0x000000;
    int BackColorSel = 0x6A240A;
    int ForeColorSel = 0xFFFFFF;
    QString FontName = QStringLiteral("Arial");
    double FontSize = 10;
    bool FontBold = false;
    bool FontItalic = false;
    bool FontUnderline = false;
    bool FontStrikethru = false;
    // Tells the view that colours or fonts changed.
    void AppearanceChanged() { Notify(Change::Appearance, -1, -1); }

private:
    void Notify(Change change, int r, int c);
    void CheckRow(int r) const;
    void CheckCol(int c) const;
    void CheckCell(int r, int c) const;

    // Tells the view what was gathered while it could not be shown.
    void FlushPending();

    std::vector<GridRow> rows_;
    int row_ = 0, col_ = 0, rowSel_ = 0, colSel_ = 0, topRow_ = 1;
    // Where the last left press was, which decides what a drag extends.
    int pressRow_ = 1, pressCol_ = 1;
    bool redraw_ = true;
    bool visible_ = true;
    bool pendingReset_ = false;
    // A selection or TopRow set while hidden or with Redraw off; shown with
    // a repaint when no reset is due, which shows it anyway.
    bool pendingSelection_ = false;
    std::array<int, kGridCols> colWidth_{};
};

// Keeps a grid hidden, or its redraw off, for a scope, and puts the old
// state back on every way out, a run-time error's included: a grid left
// hidden or unpainted shows nothing until the program starts again.
class QuietGrid {
public:
    enum Way { Hidden, RedrawOff };
    QuietGrid(SongGrid& grid, Way way) : grid_(grid), way_(way), was_(way == Hidden ? grid.Visible() : grid.Redraw()) {
        Set(false);
    }
    ~QuietGrid() { Set(was_); }
    QuietGrid(const QuietGrid&) = delete;
    QuietGrid& operator=(const QuietGrid&) = delete;

private:
    void Set(bool on) { way_ == Hidden ? grid_.SetVisible(on) : grid_.SetRedraw(on); }
    SongGrid& grid_;
    Way way_;
    bool was_;
};

}  // namespace zor
