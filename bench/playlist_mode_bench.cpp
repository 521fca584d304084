// Making the playlist on 100,000 songs: EnterPlaylistMode with 1,000 marks
// spread over the catalogue, which sorts the marked rows to the top, copies
// them and sorts the catalogue back, against a plain std::stable_sort of the
// same 100,000 artists, which stand in no order.
#include "bench/bench.h"
#include "bench/songs.h"
#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QApplication>

#include <algorithm>

namespace zor::bench {
namespace {

constexpr int kSongs = 100000;
constexpr int kTitleColumn = 1;
constexpr int kArtistColumn = 2;

// The catalogue as the user left it: sorted on the title, 1,000 rows marked
// in no particular order, the window in the catalogue mode.
void MarkThousand(Form1& f) {
    SongGrid& g = f.MFGrid1;
    f.j.PlaylistActive = 0;
    ClearSelectionNumbers(f);
    g.SetCol(kTitleColumn);
    g.Sort(1);
    f.j.grid.SortAtStartCopy = kTitleColumn;
    for (int i = 0; i < 1000; ++i) {
        const int r = 1 + int((uint64_t(i) * 7919 * 97) % uint64_t(f.j.SongCount));
        if (!g.TextMatrix(r, 0).isEmpty()) continue;
        g.SetTextMatrix(r, 0, QString::number(f.j.PlaylistEnd));
        g.SetTextMatrix(r, 12, QString::number(f.j.PlaylistEnd++));
    }
    f.j.PlayMode = 2;
}

std::vector<Result> MakePlaylist() {
    testing::TestInstallation inst;
    testing::TestInstallation::AddSongs(inst.File(QStringLiteral("Mp3data1.mdb")), MakeSongs(kSongs));
    inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    OpenDatabase(f);
    f.show();
    QApplication::processEvents();

    std::vector<QString> keys;
    const auto t = Medians(9, {
        {[&] {
             keys.clear();
             for (int r = 1; r < f.MFGrid1.Rows(); ++r) keys.push_back(f.MFGrid1.TextMatrix(r, kArtistColumn));
         },
         [&] { std::stable_sort(keys.begin(), keys.end()); }},
        {[&] { MarkThousand(f); }, [&] { EnterPlaylistMode(f); }},
    });
    if (f.MFgrid2.Rows() != f.j.PlaylistEnd || f.j.PlaylistEnd < 990) std::abort();
    return {
        {QStringLiteral("EnterPlaylistMode, 1,000 marks in 100,000 rows"), t[1],
         QStringLiteral("std::stable_sort of the 100,000 artists"), t[0], 0, 0.5},
    };
}

const Register kPlaylist("playlist", MakePlaylist);

}  // namespace
}  // namespace zor::bench
