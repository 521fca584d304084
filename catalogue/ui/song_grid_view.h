#pragma once
// The view of a SongGrid: a QTableView over a model that reads the row store.
// It never repaints per cell while the grid is hidden or Redraw is off; such
// a walk ends in one model reset.
#include "catalogue/song_grid.h"

#include <QAbstractTableModel>
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

class SongGridView : public QTableView {
    Q_OBJECT
public:
    SongGridView(SongGrid& grid, const QString& name, QWidget* parent = nullptr);
    ~SongGridView() override;
    SongGrid& Grid() { return grid_; }
    // Takes fonts, colours, widths and visibility from the grid.
    void ApplyAppearance();

private:
    void OnChanged(SongGrid::Change change, int row, int col);
    SongGrid& grid_;
    SongGridModel model_;
};

// Twips, the forms' unit: 15 to the pixel.
constexpr int TwipsToPx(int twips) { return twips / 15; }
constexpr int PxToTwips(int px) { return px * 15; }
// 0x00BBGGRR as the settings and the grid keep colours.
QColor ColorFromBgr(int bgr);
int BgrFromRgb(int r, int g, int b);

}  // namespace zor
