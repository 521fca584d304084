// The import is the model of a long walk that lets events through:
// - it runs as one CatalogueTask: a second task asked for by a click during
//   the walk is refused with a word in the message line, and a skin or
//   language change waits until the walk is over;
// - all its rows go in one transaction of the store, which commits them
//   together, or none: the store refuses to be reopened under it;
// - events go through at fixed points only (each directory, and each file
//   when the files are shown), and the walk stops there when the program
//   is ending;
// - a failure puts everything back as it was: the store rolls back, and the
//   grid and the count lose the rows the walk had added.
#include "catalogue/ui/import_ops.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/catalogue_task.h"
#include "mp3/id3_tag.h"
#include "platform/runtime_error.h"
#include "shell/ui/form1.h"
#include "shell/ui/path_selector.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <set>

namespace zor {
namespace {

constexpr int kPathField = 5;
constexpr int kMaxPath = 150;

struct Scan {
    Form1& f;
    Id3TagRecord tag;  // the last tag read: a short file keeps the one before
    std::set<QString> visited;
    bool ending = false;  // the program is ending: the walk stops
};

// Lets events through at one of the walk's fixed points; false when the
// program is ending, so the walk stops and what it has is kept.
bool LetEventsThrough(Scan& scan) {
    Form1& f = scan.f;
    f.j.platform.events.DoEvents();
    scan.ending = scan.ending || f.Unloaded() || f.j.platform.process.Ended();
    return !scan.ending;
}

void OpenSelector(Form1& f, int addSingleFile, const QString& english, const QString& dutch) {
    Jukebox& j = f.j;
    j.scanner.AddSingleFile = int16_t(addSingleFile);
    f.ShowMessage(kYellow, j.Lang(english, dutch));
    PathSelector& p = *f.Frame3;
    if (p.drvList->count() == 0) p.FillDrives(j.platform.environment.HomeDirectory());
    p.SetPattern(QStringLiteral("*.*"));
    if (p.Path().isEmpty()) p.SetPath(j.platform.environment.HomeDirectory());
    p.Command15->hide();
    p.Command16->show();
    p.show();
    p.raise();
}

bool PassesFilter(const Settings& s, const QString& name) {
    if (s.AddAllFileTypes == 1) return true;
    const QString ext = name.right(3).toLower();
    return (s.AddMp3 == 1 && ext == u"mp3") || (s.AddWma == 1 && ext == u"wma") || (s.AddWav == 1 && ext == u"wav") ||
           (s.AddExtra1 == 1 && ext == s.ExtraExtension1.Text().toLower()) ||
           (s.AddExtra2 == 1 && ext == s.ExtraExtension2.Text().toLower()) ||
           (s.AddExtra3 == 1 && ext == s.ExtraExtension3.Text().toLower());
}

// The count line follows the scan. It is shown whenever events go through,
// which is when the user can see it; setting it for every file cost more
// than reading the file.
void ShowTotal(Form1& f) { f.ShowTotal(f.j.SongCount); }

// The tag at the end of a file, when the file is long enough to hold one.
// Returns false when the file can't be read (gone since the listing,
// locked, a failing disk): the file is then passed over.
bool ReadTail(FileSystem& files, const QString& path, Id3TagRecord& tag) {
    try {
        const QByteArray tail = files.ReadBytes(path, -kId3TagBytes, kId3TagBytes);
        if (tail.size() == kId3TagBytes) tag = DecodeId3Tag(tail);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

void ScanFile(Scan& scan, const QString& path) {
    Form1& f = scan.f;
    Jukebox& j = f.j;
    if (j.scanner.ShowScannedFiles == 1) {
        f.ShowMessage(kYellow, path);
        if (!LetEventsThrough(scan)) return;
    }
    // Read only, with no hold: opening it as the old runtime did would make
    // an empty file in the place of one that went away meanwhile.
    if (!ReadTail(j.platform.files, path, scan.tag)) return;
    const QString name = QFileInfo(path).fileName();
    if (!PassesFilter(j.settings, name)) return;
    CatalogueStore& rs = f.Data1;
    rs.AddNew();
    f.MFGrid1.SetRows(f.MFGrid1.Rows() + 1);
    if (!scan.tag.HasMarker()) {
        // Without a tag the file name gives the title and the artist, in the
        // order the setting says.
        const NameParts parts = CutFileName(name);
        const bool swap = j.settings.ArtistSongSwap == 1;
        rs.SetField(swap ? 0 : 1, parts.first);
        rs.SetField(swap ? 1 : 0, parts.second);
        rs.SetField(6, QStringLiteral(" N"));
    } else {
        rs.SetField(0, scan.tag.Title.Text());
        rs.SetField(1, scan.tag.Artist.Text());
        rs.SetField(2, scan.tag.Album.Text());
        rs.SetField(3, scan.tag.Year.Text());
        rs.SetField(4, j.StyleTable[size_t(StyleForCatalogue(scan.tag.Style))]);
        rs.SetField(6, QStringLiteral(" Y"));
    }
    rs.SetField(kPathField, path.left(kMaxPath));
    rs.SetField(kRecordNumberField, QString::number(rs.AbsolutePosition()).trimmed());
    rs.Update();
    j.SongCount = rs.RecordCount();
    if (j.scanner.ShowScannedFiles == 1) ShowTotal(f);
}

void ScanDirectory(Scan& scan, const QString& dir) {
    // A directory reached again through a link is walked once: a link to a
    // parent would otherwise never end.
    const QString real = QFileInfo(dir).canonicalFilePath();
    if (real.isEmpty() || !scan.visited.insert(real).second) return;
    FileSystem& files = scan.f.j.platform.files;
    const QString base = dir == u"/" ? QString() : dir;
    const QStringList subdirectories = files.Subdirectories(dir);
    for (auto it = subdirectories.rbegin(); it != subdirectories.rend(); ++it) {
        ScanDirectory(scan, base + u'/' + *it);
        if (scan.ending) return;
        ShowTotal(scan.f);
        if (!LetEventsThrough(scan)) return;
    }
    for (const QString& name : files.DirList(base + QStringLiteral("/*"))) {
        ScanFile(scan, base + u'/' + name);
        if (scan.ending) return;
    }
}

void ShowNoValidFile(Jukebox& j) {
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    j.AddMessageLine(j.Lang(QStringLiteral("You have not selected a valid path  "), QStringLiteral("U heeft geen geldig Pad of bestandsnaam   ")));
    j.AddMessageLine(j.Lang(QStringLiteral("or filename to be added!"), QStringLiteral("gekozen om toe te voegen!")));
    j.AddMessageLine(j.Lang(QStringLiteral("Please try again. "), QStringLiteral("Probeer het s.v.p. opnieuw. ")));
    j.ShowMessageBuffer(vbCritical);
}

}  // namespace

NameParts CutFileName(const QString& name) {
    // Positions counted from 1, as the walk over the name was written.
    const qsizetype length = name.size();
    qsizetype i = 1;
    while (i < length && name[i - 1] != u'-') ++i;
    NameParts parts;
    parts.first = name.left(i - 1).left(30);
    ++i;
    while (i <= length && name[i - 1] == u' ') ++i;
    const qsizetype count = length - 4 - i + 1;
    if (count > 0) parts.second = name.mid(i - 1, count).left(30);
    return parts;
}

void AddSongsNoClear(Form1& f) {
    if (RefusedWhileBusy(f)) return;
    // The setting to clear first turns the button into ClearFill.
    if (f.j.settings.ClearBeforeAdd == 1) {
        ClearFill(f);
        return;
    }
    OpenSelector(f, 0, QStringLiteral("Add songs (no clear): Please select the start-directory (path)"),
                 QStringLiteral("Songs toevoegen (wist niet): Selecteer s.v.p. de start-directory (pad)"));
}

void AddSongs(Form1& f) {
    if (RefusedWhileBusy(f)) return;
    OpenSelector(f, 0, QStringLiteral("Please select the start-directory (path)"),
                 QStringLiteral("Selecteer nu s.v.p. de start-directory (pad)"));
}

void AddOne(Form1& f) {
    if (RefusedWhileBusy(f)) return;
    OpenSelector(f, 1, QStringLiteral("Please select the directory (path) and file name of the song to be added"),
                 QStringLiteral("Select de directory (pad) en bestandsnaam van de toe te voegen song"));
}

void ClearFill(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    ClearDatabase(f);
    LayOutGrids(f);
    OpenSelector(f, 0, QStringLiteral("Database Cleared - Now please select the start-directory (path)"),
                 QStringLiteral("Database is gewist -Selecteer nu de start-directory (pad)"));
}

void ScanSelectedPath(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    PathSelector& p = *f.Frame3;
    if (p.Path().isEmpty() || !QFileInfo(p.Path()).isDir()) {
        f.ShowMessage(kRed, j.Lang(QStringLiteral("No Directory (Path) selected; ADD aborted!"),
                                   QStringLiteral("Geen Directory (pad) geselecteerd; Invoegen is afgebroken!")));
        return;
    }
    // A catalogue that could not be opened takes no songs.
    if (!f.Data1.IsOpen()) {
        f.ShowMessage(kRed, j.Lang(QStringLiteral("No Database opened; ADD aborted!"),
                                   QStringLiteral("Geen Database geopend; Invoegen is afgebroken!")));
        return;
    }
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Loading the Database - Please Wait ....."),
                                  QStringLiteral("Database wordt geladen - Wacht s.v.p. .....")));
    p.SetPattern(QStringLiteral("*.*"));
    const QString base = p.Path() == u"/" ? QString() : p.Path();
    if (j.scanner.AddSingleFile == 1 && (p.FileName().isEmpty() || !QFileInfo(base + u'/' + p.FileName()).isFile())) {
        if (j.HidePictureForms) j.HidePictureForms();
        ShowNoValidFile(j);
        return;
    }
    Scan scan{f, {}, {}};
    SongGrid& g = f.MFGrid1;
    const int rows = g.Rows();
    const int songs = j.SongCount;
    {
        // All the new rows land together; the grid shows them once.
        QuietGrid quiet(g, QuietGrid::RedrawOff);
        CatalogueStore::Transaction transaction(f.Data1);
        try {
            if (j.scanner.AddSingleFile == 1) ScanFile(scan, base + u'/' + p.FileName());
            else ScanDirectory(scan, p.Path());
            transaction.Commit();
        } catch (...) {
            transaction.Rollback();
            g.SetRows(rows);
            j.SongCount = songs;
            ShowTotal(f);
            throw;
        }
    }
    ShowTotal(f);
    RenumberRecordsByPosition(f);
    OpenDatabase(f);
}

}  // namespace zor
