#pragma once
// The four places that analyse a song file, each with the grid its path
// comes from and what it does with the result. They all fill the jukebox's
// one record, Jukebox::Mp3Info, which the caller reads straight after.
#include "mp3/mp3_frame.h"

namespace zor {

class Form1;
class SongGrid;

// What a grid analyser is asked to do. The caller has made column 6 (the
// path) the grid's current column.
struct SongAnalysisRequest {
    // Write the song line into the message line (a song is starting).
    bool ShowSongInfoLine = false;
    // An inventory pass: a missing file is neither told nor flagged.
    bool InventoryRun = false;
    // The path to analyse; "XXX" takes the grid's current cell.
    QString SongPathOverride = QStringLiteral("XXX");
};

// The flags of a song starting to play. The M3U writer calls the analyser
// with them too, as the last play left them.
inline SongAnalysisRequest SongStartRequest() {
    SongAnalysisRequest request;
    request.ShowSongInfoLine = true;
    return request;
}

// The play engine, the inventories and the playlist tools on MFGrid1, and
// the play engine on MFgrid2. With ShowSongInfoLine, a successful analysis
// reads the title and artist of the current row, leaves the grid on column
// 2, and shows the song line in green; Jukebox::SongInfoLine keeps it.
Mp3Analysis AnalyseGridSong(Form1& f, const SongAnalysisRequest& request);
Mp3Analysis AnalysePlaylistSong(Form1& f, const SongAnalysisRequest& request);

// The file information window: the current cell of MFGrid1, told critically
// when missing; the grid goes back to column 1. Mono says which of the
// window's two channel boxes to tick.
Mp3Analysis AnalyseForFileWindow(Form1& f);

// The tag editor: column 6 of MFGrid1's current row. Column 10 gets the
// encoding with " kb/s.", and the stored encoding (field 9) of the record the
// row's number names (counted from 1, as every caller reaches it) is
// emptied, not filled: a later import or inventory writes it. The grid ends
// on column 1. The returned text is what the editor shows in its Text3.
struct EditorAnalysis {
    Mp3Analysis analysis;
    QString encodingText;
};
EditorAnalysis AnalyseForEditor(Form1& f);

}  // namespace zor
