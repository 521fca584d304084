#include "catalogue/ui/song_grid_view.h"

#include <QHeaderView>

namespace zor {

QColor ColorFromBgr(int bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
int BgrFromRgb(int r, int g, int b) { return (b << 16) | (g << 8) | r; }

int SongGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(grid_.Rows() - grid_.FixedRows(), 0);
}

int SongGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : grid_.Cols(); }

QVariant SongGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = index.row() + grid_.FixedRows();
    if (row >= grid_.Rows()) return {};
    if (role == Qt::DisplayRole) return grid_.TextMatrix(row, index.column());
    if (role == Qt::BackgroundRole && index.column() == 0) return QColor(Qt::lightGray);
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
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setHighlightSections(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    grid_.changed = [this](SongGrid::Change change, int row, int col) { OnChanged(change, row, col); };
    ApplyAppearance();
}

SongGridView::~SongGridView() { grid_.changed = nullptr; }

void SongGridView::OnChanged(SongGrid::Change change, int row, int col) {
    switch (change) {
    case SongGrid::Change::Reset: model_.Reset(); break;
    case SongGrid::Change::Cell: model_.CellChanged(row, col); break;
    case SongGrid::Change::Selection: break;
    case SongGrid::Change::Appearance: ApplyAppearance(); break;
    }
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

}  // namespace zor
