#include "catalogue/ui/grid_ops.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/catalogue_task.h"
#include "platform/vb.h"
#include "shell/ui/form1.h"

#include <QProgressBar>

namespace zor {
namespace {

struct DoubleSortTexts {
    int column;
    const char *runningEnglish, *runningDutch, *doneEnglish, *doneDutch;
};

// The style sort's English closing text is misspelt, and stays so.
const DoubleSortTexts kDoubleSorts[] = {
    {2, "Sorting by Artist and Song in progress; Please Wait ....", "Bezig met sorteren op Artiest en Song; Wacht s.v.p. ....",
     "Sorting by Artist and Song done.", "Sorteren op Artiest en Song gereed."},
    {3, "Sorting by Album and Song in progress; Please Wait ....", "Bezig met sorteren op Album en Song; Wacht s.v.p. ....",
     "Sorting by Album and Song done.", "Sorteren op Album en Song gereed."},
    {4, "Sorting by Year and Song in progress; Please Wait ....", "Bezig met sorteren op Jaar en Song; Wacht s.v.p. ....",
     "Sorting by Year and Song done.", "Sorteren op Jaar en Song gereed."},
    {5, "Sorting by Style and Song in progress; Please Wait ....", "Bezig met sorteren op Stijl en Song; Wacht s.v.p. ....",
     "Sorting by Slyle and Song done.", "Sorteren op Stijl en Song gereed."},
};

// Deletions and the renumbering after them land together or not at all: a
// failure half-way leaves the table as it was, numbered as it was.
template <typename Deletions>
void DeleteAndRenumber(Form1& f, Deletions deletions) {
    const int songs = f.j.SongCount;
    CatalogueStore::Transaction transaction(f.Data1);
    try {
        deletions();
        RenumberRecords(f);
        transaction.Commit();
    } catch (...) {
        transaction.Rollback();
        f.j.SongCount = songs;
        throw;
    }
}

}  // namespace

void GoToRecordOfRow(Form1& f, int row) {
    const int record = vb::CLng(vb::Val(f.MFGrid1.TextMatrix(row, kRecordNumberField + 1)));
    f.Data1.SetAbsolutePosition(record - 1);
}

void SortSelection(Form1& f, int order) { f.MFGrid1.Sort(order); }

void DoubleSort(Form1& f, int column) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    const DoubleSortTexts* texts = nullptr;
    for (const DoubleSortTexts& t : kDoubleSorts)
        if (t.column == column) texts = &t;
    if (!texts) return;
    const int direction = j.settings.SortDirection;
    // The grid's sort takes one key at a time: the main column first, then,
    // below, the titles within each run of equal keys.
    g.SetCol(column);
    g.Sort(direction);
    f.ShowWorking(kYellow, j.Lang(texts->runningEnglish, texts->runningDutch));
    {
        QuietGrid hidden(g, QuietGrid::Hidden);
        f.ProgressBar1->setRange(0, int(vb::Int(j.SongCount / 10.0)) + 1);
        // The title sort runs over each run of equal keys. A run that
        // reaches the last row leaves that row out, as it always has.
        const auto key = [&g, column](int row) { return vb::TrimmedView(g.RowCells(row)[column]); };
        int i = 1;
        while (i < j.SongCount) {
            const int start = i;
            while (i < j.SongCount) {
                ++i;
                if (key(i) != key(start)) break;
            }
            if (i > start + 1) {
                g.Select(start, 1, i - 1, 1);
                g.Sort(direction);
                g.SetCol(column);
            }
            if (i >= j.SongCount) break;
            f.SetProgress(int(vb::Int(i / 10.0)) + 1);
        }
        f.ProgressBar1->setValue(0);
    }
    g.SetVisible(true);
    f.ShowMessage(kYellow, j.Lang(texts->doneEnglish, texts->doneDutch));
}

void DeleteRecord(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    const int row = f.MFGrid1.Row();
    if (row < 1 || j.SongCount < 1) return;
    DeleteAndRenumber(f, [&] {
        GoToRecordOfRow(f, row);
        f.Data1.Delete();
        --j.SongCount;
    });
    j.PlaylistEnd = 1;
    OpenDatabase(f);
}

void DeleteSelectedRecords(Form1& f) {
    CatalogueTask task(f);
    if (!task.Started()) return;
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    f.StartProgress(j.SongCount);
    f.ShowWorking(kDestructive, j.Lang(QStringLiteral("Deleting selected Records, Please Wait...."),
                                       QStringLiteral("Geselecteerde regels worden verwijderd, Wacht s.v.p. ....")));
    // Rows in the order of their record numbers, so that deleting from
    // the end keeps the numbers of the rows still to come valid.
    g.SetCol(kRecordNumberField + 1);
    g.Sort(1);
    j.platform.events.DoEvents();
    int deleted = 0;
    DeleteAndRenumber(f, [&] {
        for (int row = j.SongCount; row >= 1; --row) {
            f.SetProgress(j.SongCount - row);
            if (!vb::IsNumeric(g.RowCells(row)[12])) continue;
            GoToRecordOfRow(f, row);
            f.Data1.Delete();
            ++deleted;
            f.ShowWorking(kDestructive, j.Lang(QStringLiteral("Deleting selected Records; So far deleted: %1  - Continuing, Please Wait....").arg(deleted),
                                               QStringLiteral("Geselecteerde regels worden verwijderd; Tot nu toe: %1  - Vervolg, Wacht s.v.p. ....").arg(deleted)));
        }
        j.SongCount = std::max(j.SongCount - deleted, 0);
    });
    OpenDatabase(f);
}

void DeleteSongFile(Form1& f) {
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    const QString path = f.MFGrid1.TextMatrix(f.MFGrid1.Row(), kPathColumn);
    // The Dutch box carries the title of another box; so it always has.
    const QString prompt = j.Lang(QStringLiteral("Delete this Mp3 file: "), QStringLiteral("Verwijder (=Wis!) dit Mp3 bestand: ")) +
                           u'\n' + path + u'\n' + u'\n' +
                           j.Lang(QStringLiteral("Are you really sure?  "), QStringLiteral("Weet u dit zeker?  "));
    const QString title = j.Lang(QStringLiteral("ZOR JUKEBOX - DELETE MP3"), QStringLiteral("ZOR JUKEBOX - Media-Player FOUT!"));
    if (j.HidePictureForms) j.HidePictureForms();
    const int answer = j.platform.messages.MsgBox(prompt, vbYesNo + vbQuestion, title);
    if (answer == vbYes && !path.isEmpty() && files.FileExists(path)) {
        files.Kill(path);
        f.ShowMessage(kYellow, path + j.Lang(QStringLiteral(" : now deleted."), QStringLiteral(" : is gewist.")));
    } else {
        f.ShowMessage(kYellow, path + j.Lang(QStringLiteral(" : NOT deleted."), QStringLiteral(" : NIET gewist.")));
    }
}

}  // namespace zor
