// The catalogue grid's walks on 100,000 songs: a sort by one column, the
// double sort by artist, clearing the marks and deleting 1,000 marked
// records, each against a plain std::stable_sort of the same 100,000 keys.
#include "bench/bench.h"
#include "bench/songs.h"
#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QApplication>
#include <QFile>

#include <algorithm>

namespace zor::bench {
namespace {

constexpr int kSongs = 100000;
constexpr int kArtistColumn = 2;

// Back to table order, as after an open with "No sorting".
void TableOrder(SongGrid& g) {
    g.SetCol(kRecordNumberField + 1);
    g.Sort(1);
}

void MarkEveryHundredth(Form1& f) {
    for (int r = 1; r <= f.j.SongCount; r += 100) {
        f.MFGrid1.SetTextMatrix(r, 0, QString::number(f.j.PlaylistEnd));
        f.MFGrid1.SetTextMatrix(r, 12, QString::number(f.j.PlaylistEnd++));
    }
}

std::vector<Result> GridWalks() {
    testing::TestInstallation inst;
    const QString catalogue = inst.File(QStringLiteral("Mp3data1.mdb"));
    testing::TestInstallation::AddSongs(catalogue, MakeSongs(kSongs));
    const QString pristine = inst.File(QStringLiteral("pristine.mdb"));
    QFile::copy(catalogue, pristine);
    inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    SongGrid& g = f.MFGrid1;
    OpenDatabase(f);
    f.show();
    QApplication::processEvents();
    const double rss = ResidentMegabytes();

    std::vector<QString> keys, sorted;
    const auto floor = Timed{[&] {
                                 TableOrder(g);
                                 keys.clear();
                                 for (int r = 1; r < g.Rows(); ++r) keys.push_back(g.TextMatrix(r, kArtistColumn));
                             },
                             [&] { std::stable_sort(keys.begin(), keys.end()); }};
    const auto t = Medians(9, {
        floor,
        {[&] { TableOrder(g); },
         [&] {
             g.SetCol(kArtistColumn);
             g.Sort(1);
         }},
        {[&] { TableOrder(g); }, [&] { DoubleSort(f, kArtistColumn); }},
        {[&] { MarkEveryHundredth(f); }, [&] { ClearSelectionNumbers(f); }},
    });
    // Each deletion needs the whole catalogue back first.
    const auto d = Medians(5, {
        floor,
        {[&] {
             f.Data1.Close();
             QFile::remove(catalogue);
             QFile::copy(pristine, catalogue);
             OpenDatabase(f);
             MarkEveryHundredth(f);
         },
         [&] { DeleteSelectedRecords(f); }},
    });
    if (f.j.SongCount != kSongs - 1000) std::abort();

    const QString stableSort = QStringLiteral("std::stable_sort of the 100,000 keys");
    return {
        {QStringLiteral("Sort by artist, 100,000 rows"), t[1], stableSort, t[0], 0, 0.3},
        {QStringLiteral("DoubleSort by artist and song"), t[2], stableSort, t[0], 0, 0.5},
        {QStringLiteral("ClearSelectionNumbers, 1,000 marks"), t[3], stableSort, t[0], 0, 0.1},
        {QStringLiteral("DeleteSelectedRecords, 1,000 marked rows, renumbering and reopen"), d[1], stableSort, d[0], 0, 2},
        {QStringLiteral("resident memory with 100,000 rows shown: %1 MB (target 150 MB)").arg(rss, 0, 'f', 0), 0,
         QStringLiteral("-"), 0, 0},
    };
}

const Register kGrid("grid", GridWalks);

}  // namespace
}  // namespace zor::bench
