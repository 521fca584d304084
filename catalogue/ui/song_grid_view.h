#pragma once
// The view of a SongGrid: a QTableView over a model that reads the row store.
// It never repaints per cell while the grid is hidden or Redraw is off; such
// a walk ends in one model reset.
#include "catalogue/song_grid.h"

#include <QAbstractTableModel>
#include <QBasicTimer>
#include <QTableView>

namespace zor {

class SongGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit SongGridModel(SongGrid& grid, QObject* parent = nullptr) : QAbstractTableModel(parent), grid_(grid) {}
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void Reset();
    void CellChanged(int row, int col);

private:
    SongGrid& grid_;
};

// The selection is the grid's (Row..RowSel by Col..ColSel), painted in its
// selection colours with a focus rectangle on the current cell; Qt's own
// selection model stays out of it. The mouse and the keys move it by the
// grid's rules, and the view reports the mouse as the program's handlers
// expect it. The first visible row is the grid's TopRow, both ways.
class SongGridView : public QTableView {
    Q_OBJECT
public:
    SongGridView(SongGrid& grid, const QString& name, QWidget* parent = nullptr);
    ~SongGridView() override;
    SongGrid& Grid() { return grid_; }
    // Takes fonts, colours, widths and visibility from the grid.
    void ApplyAppearance();
    // The grid cell under the mouse at the last press; the heading row is 0.
    int MouseRow() const { return mouseRow_; }
    int MouseCol() const { return mouseCol_; }

signals:
    // Every press on a cell or a heading, after the press has moved the selection.
    void MouseDown(Qt::MouseButton button);
    // The left button let go after such a press, a drag included.
    void Click();
    void DblClick();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void timerEvent(QTimerEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Typing is no search here: it would scroll to a match the grid never
    // made current.
    void keyboardSearch(const QString&) override {}

private:
    void OnChanged(SongGrid::Change change, int row, int col);
    // Scrolls to the grid's TopRow, then has TopRow say where the view could
    // go: past the end a row can't be the first one shown.
    void ShowTopRow();
    // A press at a grid cell: the grid's rule for the left button, then the report.
    void Press(int row, int col, Qt::MouseButton button);
    void Release(Qt::MouseButton button);
    // Moves the dragged corner to the cell at a point of the viewport or of
    // the heading; past an edge it goes one row or column beyond the last
    // one shown, so holding the mouse there scrolls on.
    void DragAt(QPoint p);
    SongGrid& grid_;
    SongGridModel model_;
    int mouseRow_ = 0, mouseCol_ = 0;
    bool pressed_ = false;
    bool resizing_ = false;  // the user is dragging a heading's border
    QBasicTimer autoScroll_;
    QPoint dragPoint_;  // in the viewport
};

// Twips, the forms' unit: 15 to the pixel.
constexpr int TwipsToPx(int twips) { return twips / 15; }
constexpr int PxToTwips(int px) { return px * 15; }
// 0x00BBGGRR as the settings and the grid keep colours.
QColor ColorFromBgr(int bgr);
int BgrFromRgb(int r, int g, int b);

}  // namespace zor
