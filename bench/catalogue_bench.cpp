// Opening a catalogue of 100,000 songs into MFGrid1, against the floor of
// reading the same rows with one SELECT.
#include "bench/bench.h"
#include "bench/songs.h"
#include "catalogue/ui/catalogue_ops.h"
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QFile>

#include <malloc.h>
#include <sqlite3.h>

namespace zor::bench {
namespace {

constexpr int kSongs = 100000;

// The floor: every row read with one SELECT, each text field fetched.
void SelectAll(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(db, "SELECT rowid, * FROM MP3DATA ORDER BY rowid", -1, &s, nullptr);
    size_t bytes = 0;
    while (sqlite3_step(s) == SQLITE_ROW)
        for (int c = 1; c <= 11; ++c) {
            sqlite3_column_text(s, c);
            bytes += size_t(sqlite3_column_bytes(s, c));
        }
    sqlite3_finalize(s);
    sqlite3_close(db);
    if (bytes == 0) std::abort();
}

std::vector<Result> OpenCatalogue() {
    testing::TestInstallation inst;
    const QString catalogue = inst.File(QStringLiteral("Mp3data1.mdb"));
    testing::TestInstallation::AddSongs(catalogue, MakeSongs(kSongs));
    inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    // The open as start-up does it: fill, then the sort by song title; and
    // the open with "No sorting", the fill alone. Each starts as start-up
    // does, from an empty grid and a heap with no freed rows scattered in it.
    const auto emptyGrid = [&](int sortKey) {
        return [&f, &app, sortKey] {
            app.j.grid.SortKeyCopy = sortKey;
            f.MFGrid1.SetRows(1);
            malloc_trim(0);
        };
    };
    const auto t = Medians(9, {
        {nullptr, [&] { SelectAll(catalogue); }},
        {emptyGrid(1), [&] { OpenDatabase(f); }},
        {emptyGrid(0), [&] { OpenDatabase(f); }},
    });
    const double floor = t[0], sorted = t[1], unsorted = t[2];
    if (app.j.SongCount != kSongs) std::abort();
    const double rss = ResidentMegabytes();
    return {
        {QStringLiteral("OpenDatabase, 100,000 songs into MFGrid1 (no sort)"), unsorted, QStringLiteral("one SELECT"), floor, 2},
        {QStringLiteral("OpenDatabase, 100,000 songs, sorted by title as at start"), sorted, QStringLiteral("one SELECT"), floor, 0},
        {QStringLiteral("resident memory after the open: %1 MB").arg(rss, 0, 'f', 0), 0, QStringLiteral("-"), 0, 0},
    };
}

const Register kOpen("open", OpenCatalogue);

}  // namespace
}  // namespace zor::bench
