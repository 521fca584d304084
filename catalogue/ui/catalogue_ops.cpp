#include "catalogue/ui/catalogue_ops.h"

#include "catalogue/ui/catalogue_task.h"
#include "platform/runtime_error.h"
#include "shell/ui/form1.h"
#include "shell/ui/startup.h"

#include <QLineEdit>
#include <QProgressBar>

namespace zor {
namespace {

const QString kMdbFilter = QStringLiteral("mdb databases (*.mdb)|*.mdb|All Files (*.*)|*.*");

// Runs work on the file of the closed catalogue. Should it fail, the
// catalogue in use is opened again before the error is shown, and the
// session goes on with it.
template <typename Work>
void WithCatalogueClosed(Form1& f, Work work) {
    f.Data1.Close();
    try {
        work();
    } catch (...) {
        RefreshData1(f);
        throw;
    }
}

}  // namespace

bool RefreshData1(Form1& f) {
    std::vector<GridRow> rows(1);
    GridRow heading;
    try {
        f.Data1.Refresh(rows, heading);
    } catch (const EngineFailure&) {
        f.MFGrid1.SetRows(1);
        return false;
    }
    // The bound grid's heading row takes the field names.
    rows[0] = std::move(heading);
    f.MFGrid1.SetAllRows(std::move(rows));
    SetGridHeadings(f);
    return true;
}

void OpenDatabase(Form1& f) {
    Jukebox& j = f.j;
    // A task below this one is writing in one transaction, which a reopen
    // would throw away: the reopen waits for another time.
    if (f.Data1.InTransaction()) {
        ShowTaskRefused(f);
        return;
    }
    ReloadHold hold(j);
    f.ShowWorking(kYellow,
            j.Lang(QStringLiteral("Opening Database ") + j.DatabaseFile + QStringLiteral(" - Please Wait ...."),
                   QStringLiteral("Te openen Database ") + j.DatabaseFile + QStringLiteral(" - Wacht s.v.p. ....")));
    bool opened = false;
    {
        // The grid is hidden while it fills.
        f.MFGrid1.Clear();
        QuietGrid hidden(f.MFGrid1, QuietGrid::Hidden);
        f.MFGrid1.SetRows(1);
        if (j.DatabaseFile.isEmpty()) j.DatabaseFile = j.ProgramFile(QStringLiteral("Mp3data1.mdb"));
        f.Data1.DatabaseName = j.DatabaseFile;
        f.Data1.RecordSource = QStringLiteral("MP3DATA");
        opened = RefreshData1(f);
    }
    f.MFGrid1.SetVisible(true);
    if (!opened) {
        // No catalogue is open: the count is what it is before the first
        // open, and the empty-catalogue notice, which would send the user
        // to ADD, stays away. The hint of the start is the only report.
        j.SongCount = 1;
        f.Text2->clear();
        ShowStartupHint(f);
        return;
    }
    j.SongCount = std::max(f.MFGrid1.Rows() - 1, 0);
    f.ShowTotal(j.SongCount);
    // With "No sorting" the first open keeps the table's order, but later
    // opens in the same run sort all the same, on SortAtStartCopy: column 0
    // until a click sorts by another. Kept on purpose.
    if (j.grid.SortKeyCopy != 0) {
        if (f.MFGrid1.Rows() > 1) {
            f.MFGrid1.Select(1, j.grid.SortAtStartCopy, f.MFGrid1.Rows() - 1, j.grid.SortAtStartCopy);
            f.MFGrid1.Sort(j.settings.SortDirection);
        }
        LayOutGrids(f);
    } else {
        j.grid.SortKeyCopy = 1;
    }
    if (j.SongCount > 0) {
        const QString name = j.settings.SortAtStartName.Trimmed();
        f.ShowMessage(kYellow, j.Lang(QStringLiteral("Number of songs is: %1  -  Assorted by: %2").arg(j.SongCount).arg(name),
                                      QStringLiteral("Het aantal songs is: %1  -  Gesorteerd op: %2").arg(j.SongCount).arg(name)));
    } else {
        f.ShowMessage(kYellow, j.Lang(QStringLiteral("There are no songs in the Database! -> Please press ADD to fill the database now."),
                                      QStringLiteral("Er zitten geen songs in de Database! -> Druk op ERBIJ om songs toe te voegen.")));
    }
}

void NewCatalogue(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    f.MFGrid1.Clear();
    LayOutGrids(f);
    f.ProgressBar1->setValue(0);
    f.j.SongCount = 1;
    f.j.PlaylistEnd = 1;
}

void OpenDatabaseDialog(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    LayOutGrids(f);
    CommonDialog& d = j.platform.dialog;
    d.InitDir = j.ProgramDir + u'/';
    d.FileName.clear();
    d.DialogTitle.clear();
    d.Filter = kMdbFilter;
    const QString inUse = j.DatabaseFile;
    d.ShowOpen();
    j.DatabaseFile = d.FileName;
    if (j.DatabaseFile.isEmpty()) {
        // Nothing was opened, so the file in use keeps its name: saving,
        // clearing and compacting go on working on it.
        j.DatabaseFile = inUse.isEmpty() ? j.ProgramFile(QStringLiteral("Mp3data1.mdb")) : inUse;
        j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
        j.AddMessageLine(j.Lang(QStringLiteral("You have not selected a valid   "), QStringLiteral("U heeft geen geldige Database  ")));
        j.AddMessageLine(j.Lang(QStringLiteral("database to be opened!"), QStringLiteral("geselecteerd om te openen!")));
        j.AddMessageLine(j.Lang(QStringLiteral("Please try again. "), QStringLiteral("Probeer het s.v.p. opnieuw. ")));
        j.ShowMessageBuffer(vbExclamation);
        return;
    }
    // A plain string comparison: the master reached by another spelling opens.
    if (j.DatabaseFile == j.ProgramFile(QStringLiteral("Mp3data0.mdb"))) {
        j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
        j.AddMessageLine(j.Lang(QStringLiteral("You may not use this Mp3data0.mdb database!    "),
                                QStringLiteral("U mag deze database Mp3data0.mdb niet gebruiken!       ")));
        j.AddMessageLine(j.Lang(QStringLiteral("It is intended for internal ZOR JUKEBOX use.        "),
                                QStringLiteral("Deze database is bedoeld voor intern ZOR JUKEBOX gebruik.   ")));
        j.AddMessageLine(j.Lang(QStringLiteral("Please select another database. "), QStringLiteral("Selecteer s.v.p. een andere database")));
        j.ShowMessageBuffer(vbExclamation);
        return;
    }
    OpenDatabase(f);
}

void SaveDatabaseAs(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    CommonDialog& d = j.platform.dialog;
    d.InitDir = j.ProgramDir + u'/';
    d.FileName.clear();
    d.DialogTitle = QStringLiteral("ZOR JUKEBOX: Save Database As...");
    d.Filter = kMdbFilter;
    d.FilterIndex = 1;
    d.ShowSave();
    const QString target = d.SaveName();
    if (target.isEmpty()) {
        j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
        j.AddMessageLine(j.Lang(QStringLiteral("You have not selected a valid  "), QStringLiteral("U heeft geen geldige database  ")));
        j.AddMessageLine(j.Lang(QStringLiteral("database to be saved!          "), QStringLiteral("geselecteerd om te bewaren!    ")));
        j.AddMessageLine(j.Lang(QStringLiteral("Please try again.              "), QStringLiteral("Probeer het s.v.p. opnieuw.    ")));
        j.ShowMessageBuffer(vbExclamation);
        return;
    }
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Database is now being saved; Please wait ..."),
                               QStringLiteral("Database wordt nu bewaard; Wacht s.v.p. ...")));
    // Should the copy fail, the old catalogue stays the working one; the box says why.
    WithCatalogueClosed(f, [&] { j.platform.files.FileCopy(j.DatabaseFile, target); });
    j.DatabaseFile = target;
    f.Data1.DatabaseName = target;
    RefreshData1(f);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Data saved in: ") + j.DatabaseFile +
                                      QStringLiteral("  - This will now be your new working database!"),
                                  QStringLiteral("De data is bewaard in: ") + j.DatabaseFile +
                                      QStringLiteral("  - Dit wordt nu uw nieuwe werk-database!")));
}

void SaveDatabase(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    RefreshData1(f);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Database refreshed and saved in: "),
                                  QStringLiteral("Database is vernieuwd en bewaard in: ")) + j.DatabaseFile);
}

void RefreshDatabase(Form1& f) {
    CatalogueTask task(f);
    if (task.Started()) OpenDatabase(f);
}

void ClearDatabase(Form1& f) {
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    j.PlayStopped = 1;
    j.platform.events.DoEvents();
    f.ShowMessage(kDestructive, j.Lang(QStringLiteral("Clearing the Database! - Please Wait ....."),
                                       QStringLiteral("Database wordt gewist! - Wacht s.v.p. .....")));
    const QString master = j.ProgramFile(QStringLiteral("Mp3data0.mdb"));
    if (files.FileExists(j.ProgramFile(QStringLiteral("Mp3data1.mdb"))) && files.FileExists(master)) {
        // The copy replaces the file through a scratch file, so the old
        // catalogue is gone only once the empty one is in its place.
        WithCatalogueClosed(f, [&] { files.FileCopy(master, j.DatabaseFile); });
        f.Data1.DatabaseName = j.DatabaseFile;
    }
    OpenDatabase(f);
}

void ClearDatabaseMenu(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    ClearDatabase(f);
    LayOutGrids(f);
    f.ShowMessage(kYellow, f.j.Lang(QStringLiteral("Database Cleared."), QStringLiteral("Database is gewist.")));
}

void CompactDatabase(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Database is being compacted - Please Wait...."),
                               QStringLiteral("Database wordt gecomprimeerd - Wacht s.v.p. ....")));
    const qint64 oldLength = files.FileLen(j.DatabaseFile);
    // The store writes the compacted copy beside the catalogue, and the copy
    // is renamed over it: the catalogue is the old file, whole, until the
    // new one is complete and in its place. A copy made in the program
    // directory could not be renamed onto a catalogue on another file
    // system, once that had been deleted to make room for it.
    WithCatalogueClosed(f, [&] {
        files.ReplaceFile(j.DatabaseFile, [&](const QString& scratch) { return CatalogueStore::CompactFile(j.DatabaseFile, scratch); });
    });
    f.Data1.DatabaseName = j.DatabaseFile;
    f.Data1.RecordSource = QStringLiteral("MP3DATA");
    RefreshData1(f);
    const qint64 newLength = files.FileLen(j.DatabaseFile);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Database %1 has been Compacted; Size was: %2 , now: %3 bytes.")
                                      .arg(j.DatabaseFile).arg(oldLength).arg(newLength),
                                  QStringLiteral("Database %1 is gecomprimeerd; Omvang was: %2 , nu: %3 bytes.")
                                      .arg(j.DatabaseFile).arg(oldLength).arg(newLength)));
}

namespace {

// Both renumberings come to the same: field 10 of each row set to its place
// in table order. The store does it in one statement, which also makes it
// all or nothing.
void Renumber(Form1& f) {
    Jukebox& j = f.j;
    f.StartProgress(j.SongCount);
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Renumbering, Please Wait...."), QStringLiteral("Hernummering, Wacht s.v.p. ....")));
    try {
        f.Data1.NumberRows(kRecordNumberField, j.SongCount);
    } catch (...) {
        f.ProgressBar1->setValue(0);
        throw;
    }
    f.SetProgress(j.SongCount);
    f.ProgressBar1->setValue(0);
}

}  // namespace

void RenumberRecords(Form1& f) { Renumber(f); }

void RenumberRecordsByPosition(Form1& f) {
    Renumber(f);
    RefreshData1(f);
}

}  // namespace zor
