#include "catalogue/ui/grid_ops.h"

#include "catalogue/ui/catalogue_task.h"
#include "catalogue/ui/song_grid_view.h"
#include "platform/vb.h"
#include "shell/ui/form1.h"

#include <QProgressBar>

namespace zor {
namespace {

// A cell marks its row when its text is numeric, whatever put it there.
bool HoldsNumber(const SongGrid& g, int row, int col) { return vb::IsNumeric(g.RowCells(row)[col]); }

// Writes the next mark number into columns 0 and 12 of a row.
void MarkRow(Jukebox& j, SongGrid& g, int row) {
    const QString mark = QString::number(j.PlaylistEnd);
    g.SetTextMatrix(row, 0, mark);
    g.SetTextMatrix(row, 12, mark);
    ++j.PlaylistEnd;
}

// The words the message line gives the columns 1 to 11 when sorted by a click.
QString HeadingWord(int col) {
    static const char* const kWords[] = {"Song",  "Artist", "Album",  "Year",    "Style",      "Path",
                                         "ID3",   "Lyrics", "Picture", "Execute", "[Reserved.]"};
    return col >= 1 && col <= 11 ? QString::fromLatin1(kWords[col - 1]) : QString();
}

}  // namespace

void ClickGrid(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    j.grid.GridRow = g.Row();
    j.grid.GridCol = g.Col();
    f.ShowRecordNumber(g.Row());
    // A click on a heading selects the whole column, as does one in the last row.
    const bool onHeading = f.MFGrid1View->MouseRow() == 0;
    if (g.Row() == j.SongCount || onHeading) {
        g.Sort(j.settings.SortDirection);
        j.grid.SortAtStartCopy = int16_t(g.Col());
        j.grid.SortedColumnName = HeadingWord(g.Col());
        const int songs = g.Rows() - 1;
        f.ShowMessage(kYellow, j.Lang(QStringLiteral("The number songs files is: %1  -  Assorted by: %2").arg(songs).arg(j.grid.SortedColumnName),
                                      QStringLiteral("Het aantal songs is: %1  -  Gesorteerd op: %2").arg(songs).arg(j.grid.SortedColumnName)));
    }
    // The PLAY column marks the row.
    if (g.Col() != 12 || onHeading) return;
    const int row = g.Row();
    g.SetRow(row);
    g.SetCol(0);
    if (HoldsNumber(g, row, 0)) return;
    MarkRow(j, g, row);
    if (f.playlist.PlaylistBuilding == 1) {
        SongGrid& list = f.MFgrid2;
        list.SetRows(j.PlaylistEnd);
        for (int c = 0; c < kGridCols; ++c) list.SetTextMatrix(j.PlaylistEnd - 1, c, g.TextMatrix(row, c));
    }
}

void GridMouseDown(Form1& f, int button) {
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    j.grid.GridMarkStartRow = g.Row();
    j.grid.GridMarkEndRow = g.RowSel();
    if (button == kRightButton) {
        // Going to column 0 collapses the selection; the drag's rows are
        // put back from what was kept.
        g.SetCol(0);
        if (g.Rows() > j.grid.GridMarkStartRow) g.SetRow(j.grid.GridMarkStartRow);
        if (g.Rows() > j.grid.GridMarkEndRow) g.SetRowSel(j.grid.GridMarkEndRow);
        NumberSelectedRows(f);
    } else if (button == kMiddleButton) {
        ClearSelectionNumbers(f);
    }
}

void NumberSelectedRows(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    const int from = g.Row();
    const int to = g.RowSel();
    // The direction of the drag sets the order of the numbers.
    const int step = from >= to ? -1 : 1;
    g.SetRedraw(false);
    for (int r = from;; r += step) {
        if (r >= 1 && !HoldsNumber(g, r, 0)) MarkRow(j, g, r);
        if (r == to) break;
    }
    // The walk went to column 0 of each row; it ends on the last one.
    g.SetRow(to);
    g.SetCol(0);
    g.SetRedraw(true);
}

void ClearSelectionNumbers(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    f.StartProgress(j.SongCount);
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Selections are being cleared; Please Wait...."),
                                  QStringLiteral("Selecties worden gewist; Wacht s.v.p. ....")));
    {
        // Hidden, the grid takes all the clears in one repaint.
        QuietGrid hidden(g, QuietGrid::Hidden);
        for (int r = 1; r <= j.SongCount; ++r) {
            g.SetTextMatrix(r, 12, {});
            g.SetTextMatrix(r, 0, {});
        }
    }
    g.SetVisible(true);
    j.PlaylistEnd = 1;
    f.ProgressBar1->setValue(0);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Selections cleared."), QStringLiteral("Selecties zijn gewist.")));
}

}  // namespace zor
