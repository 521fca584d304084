#include "catalogue/ui/song_grid_view.h"

#include "platform/nul_text.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace zor {

QColor ColorFromBgr(int bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
int BgrFromRgb(int r, int g, int b) { return (b << 16) | (g << 8) | r; }

namespace {

bool InSelection(const SongGrid& g, int row, int col) {
    return row >= std::min(g.Row(), g.RowSel()) && row <= std::max(g.Row(), g.RowSel()) &&
           col >= std::min(g.Col(), g.ColSel()) && col <= std::max(g.Col(), g.ColSel());
}

// Paints the current cell's focus rectangle over the usual cell, in the
// cell's own text colour so that it shows on the selection as well.
class CurrentCellDelegate : public QStyledItemDelegate {
public:
    CurrentCellDelegate(const SongGrid& grid, QObject* parent) : QStyledItemDelegate(parent), grid_(grid) {}
    void paint(QPainter* p, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem o = option;
        o.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
        QStyledItemDelegate::paint(p, o, index);
        if (index.row() + grid_.FixedRows() != grid_.Row() || index.column() != grid_.Col()) return;
        p->save();
        p->setPen(QPen(index.data(Qt::ForegroundRole).value<QColor>(), 1, Qt::DotLine));
        p->drawRect(option.rect.adjusted(0, 0, -1, -1));
        p->restore();
    }

private:
    const SongGrid& grid_;
};

bool OnSectionBorder(const QHeaderView& header, QPoint p) {
    const int col = header.logicalIndexAt(p);
    if (col < 0) return false;
    const int left = header.sectionViewportPosition(col);
    const int right = left + header.sectionSize(col);
    return p.x() >= right - 4 || (p.x() <= left + 4 && col > 0);
}

// The next column shown from c in direction step, or c itself at the edge.
int NextShownColumn(const QTableView& view, int c, int step) {
    for (int n = c + step; n >= 0 && n < view.model()->columnCount(); n += step)
        if (!view.isColumnHidden(n)) return n;
    return c;
}

}  // namespace

int SongGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(grid_.Rows() - grid_.FixedRows(), 0);
}

int SongGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : grid_.Cols(); }

QVariant SongGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = index.row() + grid_.FixedRows();
    if (row >= grid_.Rows()) return {};
    const int col = index.column();
    if (role == Qt::DisplayRole) {
        // A tag's fields come zero-padded and keep their zeros; text ends at
        // the first zero on screen, as it always did. The blanks that pad a
        // playlist file's fields stay in the cell but not on the screen,
        // where they would push the text out of its column.
        QStringView shown = TextBeforeNul(grid_.RowCells(row)[col]);
        while (shown.endsWith(u' ')) shown.chop(1);
        return shown.toString();
    }
    // The fixed column keeps its grey whatever is selected.
    const bool selected = col > 0 && InSelection(grid_, row, col);
    if (role == Qt::BackgroundRole) {
        if (col == 0) return QColor(Qt::lightGray);
        return ColorFromBgr(selected ? grid_.BackColorSel : grid_.BackColor);
    }
    if (role == Qt::ForegroundRole) {
        if (col == 0) return QColor(Qt::black);
        return ColorFromBgr(selected ? grid_.ForeColorSel : grid_.ForeColor);
    }
    return {};
}

QVariant SongGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return grid_.Rows() > 0 ? grid_.TextMatrix(0, section) : QString();
    return section + grid_.FixedRows();
}

void SongGridModel::Reset() {
    beginResetModel();
    endResetModel();
}

void SongGridModel::CellChanged(int row, int col) {
    if (row < grid_.FixedRows()) {
        emit headerDataChanged(Qt::Horizontal, col, col);
        return;
    }
    const QModelIndex i = index(row - grid_.FixedRows(), col);
    emit dataChanged(i, i, {Qt::DisplayRole});
}

SongGridView::SongGridView(SongGrid& grid, const QString& name, QWidget* parent)
    : QTableView(parent), grid_(grid), model_(grid) {
    setObjectName(name);
    setModel(&model_);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    // Qt's current index is never the grid's; left to itself it would
    // scroll to it on focus, and Tab would walk the cells.
    setAutoScroll(false);
    setTabKeyNavigation(false);
    // One scroll step is one row or column, so the first row shown is a
    // whole row: TopRow.
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    setItemDelegate(new CurrentCellDelegate(grid_, this));
    setWordWrap(false);
    horizontalHeader()->viewport()->installEventFilter(this);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    // Only the user's resizing goes back into the grid: the layout's own
    // pixel widths would round the twips it came from.
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int c, int, int size) {
        if (resizing_) grid_.ColumnResized(c, PxToTwips(size));
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int top) { grid_.ScrolledTo(top + 1); });
    grid_.changed = [this](SongGrid::Change change, int row, int col) { OnChanged(change, row, col); };
    ApplyAppearance();
}

SongGridView::~SongGridView() { grid_.changed = nullptr; }

void SongGridView::OnChanged(SongGrid::Change change, int row, int col) {
    switch (change) {
    case SongGrid::Change::Reset:
        model_.Reset();
        // Lay out now, so that the scroll range fits the new rows before
        // TopRow is shown.
        doItemsLayout();
        ShowTopRow();
        break;
    case SongGrid::Change::Cell: model_.CellChanged(row, col); break;
    case SongGrid::Change::Selection:
        ShowTopRow();
        viewport()->update();
        break;
    case SongGrid::Change::Appearance: ApplyAppearance(); break;
    }
}

void SongGridView::ShowTopRow() {
    QScrollBar* bar = verticalScrollBar();
    if (bar->value() == grid_.TopRow() - 1) return;
    bar->setValue(grid_.TopRow() - 1);
    grid_.ScrolledTo(bar->value() + 1);
}

void SongGridView::ApplyAppearance() {
    QFont f(grid_.FontName);
    f.setPointSizeF(grid_.FontSize > 0 ? grid_.FontSize : 10);
    f.setBold(grid_.FontBold);
    f.setItalic(grid_.FontItalic);
    f.setUnderline(grid_.FontUnderline);
    f.setStrikeOut(grid_.FontStrikethru);
    setFont(f);
    verticalHeader()->setDefaultSectionSize(QFontMetrics(f).height() + 4);
    QPalette p = palette();
    p.setColor(QPalette::Base, ColorFromBgr(grid_.BackColor));
    p.setColor(QPalette::Text, ColorFromBgr(grid_.ForeColor));
    p.setColor(QPalette::Highlight, ColorFromBgr(grid_.BackColorSel));
    p.setColor(QPalette::HighlightedText, ColorFromBgr(grid_.ForeColorSel));
    setPalette(p);
    for (int c = 0; c < grid_.Cols(); ++c) {
        const int px = TwipsToPx(grid_.ColWidth(c));
        setColumnHidden(c, px == 0);
        if (px > 0) setColumnWidth(c, px);
    }
    setVisible(grid_.Visible());
}

void SongGridView::Press(int row, int col, Qt::MouseButton button) {
    setFocus(Qt::MouseFocusReason);
    mouseRow_ = row;
    mouseCol_ = col;
    if (button == Qt::LeftButton) {
        grid_.PressCell(row, col);
        pressed_ = true;
    }
    emit MouseDown(button);
}

void SongGridView::Release(Qt::MouseButton button) {
    if (button != Qt::LeftButton || !pressed_) return;
    pressed_ = false;
    autoScroll_.stop();
    emit Click();
}

void SongGridView::DragAt(QPoint p) {
    const int rows = model_.rowCount();
    if (rows == 0) return;
    const int h = viewport()->height(), w = viewport()->width();
    int row = rowAt(std::clamp(p.y(), 0, h - 1));
    if (p.y() < 0) row = std::max(rowAt(0) - 1, 0);
    else if (p.y() >= h && row >= 0) row = std::min(row + 1, rows - 1);
    if (row < 0) row = rows - 1;  // below the last row
    int col = columnAt(std::clamp(p.x(), 0, w - 1));
    if (p.x() < 0) col = NextShownColumn(*this, col, -1);
    else if (p.x() >= w && col >= 0) col = NextShownColumn(*this, col, 1);
    if (col < 0) col = NextShownColumn(*this, grid_.Cols(), -1);  // right of the last column
    grid_.DragTo(row + grid_.FixedRows(), col);
    // A drag by whole columns leaves the rows where they are, one by whole
    // rows the columns.
    const int showRow = mouseRow_ == 0 ? rowAt(0) : row;
    const int showCol = mouseCol_ == 0 ? columnAt(0) : col;
    scrollTo(model_.index(std::max(showRow, 0), std::max(showCol, 0)));
}

void SongGridView::mousePressEvent(QMouseEvent* e) {
    const QModelIndex i = indexAt(e->position().toPoint());
    if (!i.isValid()) return;
    Press(i.row() + grid_.FixedRows(), i.column(), e->button());
}

void SongGridView::mouseMoveEvent(QMouseEvent* e) {
    if (!pressed_ || !(e->buttons() & Qt::LeftButton)) return;
    dragPoint_ = e->position().toPoint();
    DragAt(dragPoint_);
    if (viewport()->rect().contains(dragPoint_)) autoScroll_.stop();
    else if (!autoScroll_.isActive()) autoScroll_.start(50, this);
}

void SongGridView::timerEvent(QTimerEvent* e) {
    if (e->timerId() != autoScroll_.timerId()) return QTableView::timerEvent(e);
    if (pressed_ && (QGuiApplication::mouseButtons() & Qt::LeftButton)) DragAt(dragPoint_);
    else autoScroll_.stop();
}

void SongGridView::mouseReleaseEvent(QMouseEvent* e) { Release(e->button()); }

void SongGridView::mouseDoubleClickEvent(QMouseEvent* e) {
    // The second press of a double click is a press as well.
    mousePressEvent(e);
    if (e->button() == Qt::LeftButton && indexAt(e->position().toPoint()).isValid()) emit DblClick();
}

bool SongGridView::eventFilter(QObject* watched, QEvent* event) {
    QHeaderView* header = horizontalHeader();
    if (watched != header->viewport()) return QTableView::eventFilter(watched, event);
    // A press on the border between two headings resizes the column, as
    // the old grid let the user do; the header does that work itself.
    if (resizing_) {
        if (event->type() == QEvent::MouseButtonRelease) resizing_ = false;
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto* e = static_cast<QMouseEvent*>(event);
        if (e->button() == Qt::LeftButton && OnSectionBorder(*header, e->position().toPoint())) {
            resizing_ = event->type() == QEvent::MouseButtonPress;
            return !resizing_;
        }
        const int col = header->logicalIndexAt(e->position().toPoint());
        if (col >= 0) Press(0, col, e->button());
        return true;
    }
    case QEvent::MouseMove: {
        auto* e = static_cast<QMouseEvent*>(event);
        if (!pressed_) return false;  // hovering: the header shows the resize cursor
        if (e->buttons() & Qt::LeftButton)
            DragAt(viewport()->mapFromGlobal(header->viewport()->mapToGlobal(e->position().toPoint())));
        return true;
    }
    case QEvent::MouseButtonRelease: Release(static_cast<QMouseEvent*>(event)->button()); return true;
    default: return QTableView::eventFilter(watched, event);
    }
}

void SongGridView::keyPressEvent(QKeyEvent* e) {
    const int last = grid_.Rows() - 1;
    const bool extend = e->modifiers() & Qt::ShiftModifier;
    const bool ctrl = e->modifiers() & Qt::ControlModifier;
    // Keys move the current cell, or with Shift the selection's other corner.
    int row = extend ? grid_.RowSel() : grid_.Row();
    int col = extend ? grid_.ColSel() : grid_.Col();
    const int page = std::max(viewport()->height() / std::max(verticalHeader()->defaultSectionSize(), 1) - 1, 1);
    switch (e->key()) {
    case Qt::Key_Up: --row; break;
    case Qt::Key_Down: ++row; break;
    case Qt::Key_Left: --col; break;
    case Qt::Key_Right: ++col; break;
    case Qt::Key_PageUp: row -= page; break;
    case Qt::Key_PageDown: row += page; break;
    case Qt::Key_Home: ctrl ? row = 1 : col = 1; break;
    case Qt::Key_End: ctrl ? row = last : col = kGridCols - 1; break;
    default: QTableView::keyPressEvent(e); return;
    }
    if (last < 1) return;
    row = std::clamp(row, 1, last);
    col = std::clamp(col, 1, kGridCols - 1);
    if (extend) grid_.Select(grid_.Row(), grid_.Col(), row, col);
    else grid_.Select(row, col, row, col);
    scrollTo(model_.index(row - grid_.FixedRows(), col));
}

}  // namespace zor
