#include "mp3/ui/song_analysis.h"

#include "catalogue/song_grid.h"
#include "catalogue/ui/grid_ops.h"
#include "platform/nul_text.h"
#include "shell/ui/form1.h"

namespace zor {
namespace {

constexpr int kEncodingColumn = 10;
constexpr int kEncodingField = 9;

Mp3Analysis AnalyseOnGrid(Form1& f, SongGrid& grid, Mp3Caller caller, const SongAnalysisRequest& request) {
    Jukebox& j = f.j;
    Mp3AnalysisOptions o;
    o.caller = caller;
    // The path is a file name here: a playlist's cells keep the blanks of
    // their .zpl fields, and a zero ends a name. "XXX" stays the flag.
    o.SongPathOverride = request.SongPathOverride == u"XXX" ? request.SongPathOverride
                                                           : j.SongFileOnDisk(request.SongPathOverride);
    o.CurrentCell = j.SongFileOnDisk(grid.Text());
    o.ShowSongInfoLine = request.ShowSongInfoLine;
    o.InventoryRun = request.InventoryRun;
    const Mp3Analysis result = AnalyseMp3File(j, j.Mp3Info, o);
    if (result.ShowSongInfoLine) {
        // A tag's title or artist ends at its first zero on the screen.
        grid.SetCol(1);
        const QString title = TrimmedBeforeNul(grid.Text());
        grid.SetCol(2);
        const QString artist = TrimmedBeforeNul(grid.Text());
        j.engine.SongInfoLine = SongInfoLine(title, artist, j.Mp3Info, j.Language);
        f.ShowSongLine(j.engine.SongInfoLine);
    }
    return result;
}

}  // namespace

Mp3Analysis AnalyseGridSong(Form1& f, const SongAnalysisRequest& request) {
    return AnalyseOnGrid(f, f.MFGrid1, Mp3Caller::GridSong, request);
}

Mp3Analysis AnalysePlaylistSong(Form1& f, const SongAnalysisRequest& request) {
    return AnalyseOnGrid(f, f.MFgrid2, Mp3Caller::PlaylistSong, request);
}

Mp3Analysis AnalyseForFileWindow(Form1& f) {
    Mp3AnalysisOptions o;
    o.caller = Mp3Caller::FileWindow;
    o.CurrentCell = f.j.SongFileOnDisk(f.MFGrid1.Text());
    const Mp3Analysis result = AnalyseMp3File(f.j, f.j.Mp3Info, o);
    if (result.outcome == Mp3Outcome::Analysed) f.MFGrid1.SetCol(1);
    return result;
}

EditorAnalysis AnalyseForEditor(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& grid = f.MFGrid1;
    grid.SetCol(kPathColumn);
    Mp3AnalysisOptions o;
    o.caller = Mp3Caller::Editor;
    o.CurrentCell = j.SongFileOnDisk(grid.Text());
    EditorAnalysis e{AnalyseMp3File(j, j.Mp3Info, o), {}};
    if (e.analysis.outcome != Mp3Outcome::Analysed) return e;
    e.encodingText = j.Mp3Info.EncodingText + QStringLiteral(" kb/s.");
    grid.SetTextMatrix(grid.Row(), kEncodingColumn, e.encodingText);
    GoToRecordOfRow(f, grid.Row());
    f.Data1.Edit();
    f.Data1.SetField(kEncodingField, QString());
    f.Data1.Update();
    grid.SetCol(1);
    return e;
}

}  // namespace zor
