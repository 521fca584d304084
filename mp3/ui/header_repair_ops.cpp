#include "mp3/ui/header_repair_ops.h"

#include "mp3/header_repair.h"
#include "platform/runtime_error.h"
#include "shell/ui/form1.h"

namespace zor {
namespace {

// The repair deletes the catalogue here, not the song. The catalogue is open for
// as long as the jukebox runs, so the deletion is refused and the repair
// ends with the song as it was. Should the file ever not be held open, it is
// refused all the same: the repair must never cost the user the catalogue.
void DeleteCatalogue(Jukebox& j) {
    FileSystem& fs = j.platform.files;
    if (!fs.IsHeldOpen(j.DatabaseFile)) throw RuntimeError::PathFileAccessError();
    fs.Kill(j.DatabaseFile);
}

}  // namespace

void RemoveLeadIn(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    FileSystem& fs = j.platform.files;
    grid.SetCol(kPathColumn);
    const QString song = j.SongFileOnDisk(grid.Text());
    const QString scratch = j.ProgramFile(QStringLiteral("ZOR1.mp3"));
    // A song kept under the scratch's own name would be deleted as a
    // leftover scratch.
    if (IsSameFile(song, scratch)) return;
    try {
        if (fs.FileExists(scratch)) fs.Kill(scratch);
        if (!fs.FileExists(song)) return;
    } catch (const RuntimeError&) {
        return;
    }
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Non-standard MP3 header will be removed from: ") + song +
                                      QStringLiteral(" ; Please wait..."),
                                  QStringLiteral("Non-standaard MP3 header wordt verwijderd van: ") + song +
                                      QStringLiteral(" ; Wacht s.v.p...")));
    try {
        CopyPastLeadIn(fs, j.platform.events, song, scratch);
        if (fs.FileExists(song)) DeleteCatalogue(j);
        ReplaceFromScratch(fs, song, scratch);
        f.ShowMessage(kYellow, j.Lang(QStringLiteral("Non-standard MP3 header removed from: "),
                                      QStringLiteral("Non-standaard MP3 header verwijderd van: ")) +
                                   song);
        j.platform.events.DoEvents();
    } catch (const RuntimeError&) {
        // The files are closed; the message line keeps its "please wait".
        j.platform.events.DoEvents();
    }
}

void RemoveLeadInFromMenu(Form1& f) {
    RemoveLeadIn(f, f.MFGrid1);
    f.MFGrid1.SetRedraw(true);
}

}  // namespace zor
