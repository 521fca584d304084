#include "catalogue/ui/catalogue_ops.h"

#include "platform/runtime_error.h"
#include "shell/ui/form1.h"
#include "shell/ui/startup.h"

#include <QProgressBar>

namespace zor {
namespace {

const QString kMdbFilter = QStringLiteral("mdb databases (*.mdb)|*.mdb|All Files (*.*)|*.*");

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
    f.ShowWorking(kYellow,
            j.Lang(QStringLiteral("Opening Database ") + j.DatabaseFile + QStringLiteral(" - Please Wait ...."),
                   QStringLiteral("Te openen Database ") + j.DatabaseFile + QStringLiteral(" - Wacht s.v.p. ....")));
    // The grid is hidden while it fills.
    f.MFGrid1.Clear();
    f.MFGrid1.SetVisible(false);
    f.MFGrid1.SetRows(1);
    if (j.DatabaseFile.isEmpty()) j.DatabaseFile = j.ProgramFile(QStringLiteral("Mp3data1.mdb"));
    f.Data1.DatabaseName = j.DatabaseFile;
    f.Data1.RecordSource = QStringLiteral("MP3DATA");
    const bool opened = RefreshData1(f);
    f.MFGrid1.SetVisible(true);
    j.SongCount = std::max(f.MFGrid1.Rows() - 1, 0);
    f.ShowCount(j.Lang(QStringLiteral("     Total:"), QStringLiteral("     Totaal:")), j.SongCount);
    if (!opened) {
        ShowStartupHint(f);
        return;
    }
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
    f.MFGrid1.Clear();
    LayOutGrids(f);
    f.ProgressBar1->setValue(0);
    f.j.SongCount = 1;
    f.j.PlaylistEnd = 1;
}

void OpenDatabaseDialog(Form1& f) {
    Jukebox& j = f.j;
    LayOutGrids(f);
    CommonDialog& d = j.platform.dialog;
    d.InitDir = j.ProgramDir + u'/';
    d.FileName.clear();
    d.DialogTitle.clear();
    d.Filter = kMdbFilter;
    d.ShowOpen();
    j.DatabaseFile = d.FileName;
    if (j.DatabaseFile.isEmpty()) {
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
    Jukebox& j = f.j;
    CommonDialog& d = j.platform.dialog;
    d.InitDir = j.ProgramDir + u'/';
    d.FileName.clear();
    d.DialogTitle = QStringLiteral("ZOR JUKEBOX: Save Database As...");
    d.Filter = kMdbFilter;
    d.ShowSave();
    const QString target = d.FileName;
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
    f.Data1.Close();
    try {
        j.platform.files.FileCopy(j.DatabaseFile, target);
    } catch (const RuntimeError&) {
        // The old catalogue stays the working one; the box says why.
        RefreshData1(f);
        throw;
    }
    j.DatabaseFile = target;
    f.Data1.DatabaseName = target;
    RefreshData1(f);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Data saved in: ") + j.DatabaseFile +
                                      QStringLiteral("  - This will now be your new working database!"),
                                  QStringLiteral("De data is bewaard in: ") + j.DatabaseFile +
                                      QStringLiteral("  - Dit wordt nu uw nieuwe werk-database!")));
}

void SaveDatabase(Form1& f) {
    Jukebox& j = f.j;
    RefreshData1(f);
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Database refreshed and saved in: "),
                                  QStringLiteral("Database is vernieuwd en bewaard in: ")) + j.DatabaseFile);
}

void RefreshDatabase(Form1& f) { OpenDatabase(f); }

void ClearDatabase(Form1& f) {
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    j.PlayStopped = 1;
    j.platform.events.DoEvents();
    f.ShowMessage(kDestructive, j.Lang(QStringLiteral("Clearing the Database! - Please Wait ....."),
                                       QStringLiteral("Database wordt gewist! - Wacht s.v.p. .....")));
    const QString master = j.ProgramFile(QStringLiteral("Mp3data0.mdb"));
    if (files.FileExists(j.ProgramFile(QStringLiteral("Mp3data1.mdb"))) && files.FileExists(master)) {
        f.Data1.Close();
        f.Data1.DatabaseName.clear();
        // The copy replaces the file through a scratch file, so the old
        // catalogue is gone only once the empty one is in its place.
        files.FileCopy(master, j.DatabaseFile);
        f.Data1.DatabaseName = j.DatabaseFile;
    }
    OpenDatabase(f);
}

void ClearDatabaseMenu(Form1& f) {
    ClearDatabase(f);
    LayOutGrids(f);
    f.ShowMessage(kYellow, f.j.Lang(QStringLiteral("Database Cleared."), QStringLiteral("Database is gewist.")));
}

void CompactDatabase(Form1& f) {
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    f.ShowWorking(kYellow, j.Lang(QStringLiteral("Database is being compacted - Please Wait...."),
                               QStringLiteral("Database wordt gecomprimeerd - Wacht s.v.p. ....")));
    const qint64 oldLength = files.FileLen(j.DatabaseFile);
    f.Data1.Close();
    // The store writes the compacted copy here; without it the delete and
    // rename below would throw the working file away.
    const QString result = j.ProgramFile(QStringLiteral("Mp3comp1.mdb"));
    if (files.FileExists(result)) files.Kill(result);
    if (CatalogueStore::CompactFile(j.DatabaseFile, result)) {
        if (files.FileExists(j.DatabaseFile)) files.Kill(j.DatabaseFile);
        files.Name(result, j.DatabaseFile);
    }
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
