#include "playlists/ui/playlist_files.h"

#include "catalogue/ui/catalogue_ops.h"
#include "mp3/ui/song_analysis.h"
#include "platform/binary_file.h"
#include "platform/runtime_error.h"
#include "playlists/m3u_file.h"
#include "playlists/ui/playlist_mode.h"
#include "playlists/zpl_record.h"
#include "shell/ui/form1.h"

#include <QFileInfo>
#include <QProgressBar>

#include <vector>

namespace zor {
namespace {

const QColor kGreen(0, 255, 0);

// A box's lines in both languages; an empty line stands for the extra break
// between groups of lines.
struct Box {
    std::vector<const char*> english;
    std::vector<const char*> dutch;
};

const Box kNoOpenName = {{"You have not selected a valid   ", "Playlist to be opened!", "", "Please try again. "},
                         {"U heeft geen geldige Playlist  ", "geselecteerd om te openen!", "", "Probeer het s.v.p. opnieuw. "}};
const Box kNotInPlaylist = {{"You are NOT in Playlist mode!     ", "", "Please first make a playlist and  ",
                             "then click the Playlist button.   "},
                            {"U staat niet in Playlist mode!  ", "", "Maak eerst een playlist en      ",
                             "klik dan op de Playlist knop.   "}};
const Box kTooShort = {{"The Playlist is too short! ", "", "A normal playlist consists at least of 2 songs.  ",
                        "Please add more songs to the playlist.           "},
                       {"De Playlist is te kort! ", "", "Een normale playlist bestaat minstens  ", "uit 2 songs. ",
                        "Advies: voeg songs toe aan de playlist. "}};
const Box kNoSaveName = {{"You have not selected a valid  ", "Playlist name to be saved!     ", "",
                          "Please try again.              "},
                         {"U heeft geen geldige Playlist naam  ", "geselecteerd om te bewaren!    ", "",
                          "Probeer het s.v.p. opnieuw.    "}};
const Box kNoM3uName = {{"You have not selected a valid M3U  ", "Playlist name to be saved!     ", "",
                         "Please try again.              "},
                        {"U heeft geen geldige M3U-Playlist naam  ", "geselecteerd om te bewaren!    ", "",
                         "Probeer het s.v.p. opnieuw.    "}};

// The box also hides the four companion windows, which stay on top.
void Tell(Jukebox& j, const Box& box) {
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    for (const char* line : j.Language == QStringLiteral("0") ? box.dutch : box.english)
        j.AddMessageLine(QString::fromLatin1(line));
    j.ShowMessageBuffer(vbCritical | vbOKOnly);
}

// The save dialog of both formats; returns the chosen name, "" for Cancel.
QString AskSaveName(Form1& f, const QString& title, const QString& filter) {
    CommonDialog& d = f.j.platform.dialog;
    d.InitDir = f.j.ProgramDir + u'/';
    d.DialogTitle = title;
    d.Filter = filter;
    d.FilterIndex = 1;
    d.ShowSave();
    return d.SaveName();
}

// An M3U file is known by its name alone: at least five characters ending
// in "m3u" exactly, so "LIST.M3U" is read as .zpl records.
bool IsM3uName(const QString& name) { return name.size() >= 5 && name.right(3) == QStringLiteral("m3u"); }

// Reads the .zpl file into MFgrid2 and turns the window to the playlist,
// without starting it.
void ReadZpl(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& list = f.MFgrid2;
    BinaryFile file(j.platform.files, f.playlist.PlaylistOpenName, BinaryFile::ReadOnly);
    const qint64 records = ZplRecordCount(file.Length());
    f.StartProgress(int(std::min<qint64>(records + 1, INT_MAX)));
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Playlist is being loaded, Please wait.... "),
                                  QStringLiteral("Playlist wordt nu geladen, Wacht s.v.p. .... ")));
    // Rows already in MFgrid2 are written over cell by cell (column 11
    // keeps what it held); rows beyond them are new. The grid takes them all
    // in one change.
    std::vector<GridRow> rows;
    rows.reserve(size_t(std::max(list.Rows(), 1)) + size_t(std::min<qint64>(records, 1 << 20)));
    for (int r = 0; r < list.Rows(); ++r) rows.push_back(list.RowCells(r));
    constexpr qint64 kChunk = 256;  // records a read
    QByteArray chunk;
    qint64 read = 0;
    ZplRecord& record = f.playlist.PlaylistRecord;
    for (qint64 i = 1; i <= records && i < INT_MAX - 1; ++i) {
        f.SetProgress(int(i));
        if (j.StopRequested) break;
        const qint64 inChunk = (i - 1) % kChunk;
        if (inChunk == 0) chunk = file.Get((i - 1) * kZplRecordBytes + 1, kChunk * kZplRecordBytes);
        record.Load(QByteArrayView(chunk).sliced(inChunk * kZplRecordBytes, kZplRecordBytes));
        if (size_t(i) >= rows.size()) rows.emplace_back();
        record.ToRow(rows[size_t(i)], i);
        read = i;
    }
    list.SetAllRows(std::move(rows));
    f.MFGrid1.SetVisible(true);
    list.SetVisible(true);
    // SongCount holds the playlist's length until the catalogue is next
    // loaded.
    j.SongCount = int32_t(read);
    j.PlaylistEnd = int32_t(read + 1);
    list.SetRows(j.PlaylistEnd);
    // The window turns as for a playlist made from marks, but MFGrid1 gets
    // no marks.
    j.PlaylistActive = 1;
    j.PlayMode = 1;
    j.SkipCommand = 0;
    ShowPlaylistGrids(f);
    TurnControlsToPlaylist(f);
    // Loaded, not started: the caller or the user starts it.
    f.ShowMessage(f.MessageColour(), j.Lang(QStringLiteral("Playlist now loaded. "), QStringLiteral("Playlist is nu geladen. ")));
    j.platform.events.DoEvents();
    f.ShowTotal(j.PlaylistEnd);
}

}  // namespace

void OpenPlaylistFile(Form1& f) {
    Jukebox& j = f.j;
    PlaylistState& s = f.playlist;
    LayOutGrids(f);
    CommonDialog& d = j.platform.dialog;
    d.InitDir = j.ProgramDir + u'/';
    d.FileName.clear();
    d.Filter = QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|WinAmp M3U Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*");
    d.FilterIndex = 1;
    d.ShowOpen();
    s.PlaylistOpenName = d.FileName;
    if (s.PlaylistOpenName.isEmpty()) {
        Tell(j, kNoOpenName);
        return;
    }
    if (j.SongCount == 0) j.SongCount = 10;
    f.MFGrid1.SetVisible(false);
    // A name that is not there ends the open; the catalogue stays hidden.
    if (!QFileInfo::exists(s.PlaylistOpenName)) return;
    if (IsM3uName(s.PlaylistOpenName)) {
        ReadM3u(f);
        f.MFGrid1.SetVisible(true);
        return;
    }
    // A file that fails to read ends the work without a word.
    try {
        ReadZpl(f);
    } catch (const RuntimeError&) {
    }
}

void OpenPlaylistAndPlay(Form1& f) {
    Jukebox& j = f.j;
    j.PlayMode = j.settings.DirectPlay;
    OpenPlaylistFile(f);
    j.PlayStopped = 0;
    j.PlaylistPosition = 1;
    RunPlaylist(f);
}

void ReadM3u(Form1& f) {
    Jukebox& j = f.j;
    // A name the reader cannot split ends the read where it got to, with no
    // message and no playlist; so does a file that cannot be read.
    try {
        // Read, not mapped: a file cut short while it is read would take the
        // process down with it.
        BinaryFile file(j.platform.files, f.playlist.PlaylistOpenName, BinaryFile::ReadOnly);
        const QByteArray bytes = file.Get(1, file.Length());
        if (!ReadM3uRows(bytes, f.MFGrid1, j.PlaylistEnd)) return;
        f.MFGrid1.SetVisible(true);
        j.PlaylistActive = 1;
        EnterPlaylistMode(f);
    } catch (const RuntimeError&) {
        j.PlaylistEnd = 1;
    }
}

void WriteZpl(Form1& f) {
    Jukebox& j = f.j;
    if (j.PlaylistEnd == 0) j.PlaylistEnd = 10;
    f.StartProgress(j.PlaylistEnd);
    try {
        // Not emptied first: records past the last one written stay, and a
        // later read brings them back.
        BinaryFile file(j.platform.files, f.playlist.PlaylistSaveName);
        ZplRecord& record = f.playlist.PlaylistRecord;
        for (int32_t i = 1; i < j.PlaylistEnd; ++i) {
            f.MFgrid2.SetRow(i);
            record.Fill(f.MFgrid2.RowCells(i));
            file.Put(qint64(i - 1) * kZplRecordBytes + 1, record.Bytes());
            f.SetProgress(i);
            j.platform.events.DoEvents();
        }
    } catch (const RuntimeError&) {
        return;
    }
    f.ShowMessage(kGreen, j.Lang(QStringLiteral("Playlist now saved."), QStringLiteral("Playlist is nu bewaard.")));
}

void WriteM3u(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& list = f.MFgrid2;
    if (j.PlaylistEnd == 0) j.PlaylistEnd = 10;
    f.StartProgress(j.PlaylistEnd);
    try {
        BinaryFile file(j.platform.files, f.playlist.PlaylistSaveName);
        QByteArray out = M3uHeader();
        qint64 at = 1;
        file.Put(at, out);
        at += out.size();
        for (int32_t i = 1; i < j.PlaylistEnd; ++i) {
            list.SetRow(i);
            list.SetCol(kPathColumn);
            const QString path = j.SongFileOnDisk(list.Text());
            // The analyser looks at MFGrid1's current cell, not at this row:
            // the seconds are whatever it leaves, which players shrug off.
            AnalyseGridSong(f, SongStartRequest());
            list.SetCol(1);
            out = M3uEntry(j.Mp3Info.DurationSeconds, list.Text(), path);
            file.Put(at, out);
            at += out.size();
            f.SetProgress(i);
            j.platform.events.DoEvents();
        }
    } catch (const RuntimeError&) {
        return;
    }
    f.ProgressBar1->setValue(f.ProgressBar1->maximum());
    f.ShowMessage(kGreen, j.Lang(QStringLiteral("Playlist now saved."), QStringLiteral("Playlist is nu bewaard.")));
}

void SavePlaylistAs(Form1& f) {
    // Neither save asks for the playlist mode or a length: in the catalogue
    // they write an empty playlist.
    f.playlist.PlaylistSaveName = AskSaveName(f, QStringLiteral("ZOR JUKEBOX: Save Playlist As...."),
                                              QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|All Files (*.*)|*.*"));
    if (f.playlist.PlaylistSaveName.isEmpty()) {
        Tell(f.j, kNoSaveName);
        return;
    }
    WriteZpl(f);
}

void SavePlaylistM3u(Form1& f) {
    f.playlist.PlaylistSaveName =
        AskSaveName(f, QStringLiteral("ZOR JUKEBOX: Save Playlist in m3u format"),
                    QStringLiteral("WinAmp, Live365 etc. Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*"));
    if (f.playlist.PlaylistSaveName.isEmpty()) {
        Tell(f.j, kNoM3uName);
        return;
    }
    WriteM3u(f);
}

void SaveDefaultPlaylist(Form1& f) {
    Jukebox& j = f.j;
    f.playlist.PlaylistSaveName = j.ProgramFile(QStringLiteral("MP3play1.zpl"));
    if (j.PlaylistActive == 0) {
        Tell(j, kNotInPlaylist);
        return;
    }
    // One song passes, though the box speaks of two.
    if (j.PlaylistEnd < 2) {
        Tell(j, kTooShort);
        return;
    }
    WriteZpl(f);
}

}  // namespace zor
