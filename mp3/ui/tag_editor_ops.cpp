#include "mp3/ui/tag_editor_ops.h"

#include "catalogue/ui/catalogue_task.h"
#include "catalogue/ui/grid_ops.h"
#include "mp3/id3_tag.h"
#include "mp3/ui/form11.h"
#include "mp3/ui/song_analysis.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"
#include "playback/ui/companion_support.h"
#include "shell/ui/form1.h"

#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QCheckBox>
#include <QElapsedTimer>

#include <optional>

namespace zor {
namespace {

constexpr int kLyricsColumn = 8;
constexpr int kPictureColumn = 9;
constexpr int kLyricsField = 7;
constexpr int kPictureField = 8;
// The grid's first twelve rows fit above the row a pass works on.
constexpr int kRowsAbovePass = 12;
// A pass shows the grid and the window where it stands this often, in real
// time: a repaint for every row would cost several times the row's own
// work, and each showing of a large grid costs a model reset.
constexpr int kMsPerRedraw = 500;

// The editor's window, when the main window has made it.
Form11* EditorOf(Form1& f) { return f.findChild<Form11*>(QStringLiteral("Form11"), Qt::FindDirectChildrenOnly); }

// The scroll bars and the mark as the comment's block has them, without
// rebuilding the block.
void ShowCommentScore(Form11& w) {
    CommentScore score;
    if (!ReadCommentBlock(w.Text44->text(), score)) return;
    const QSignalBlocker b1(w.HScroll1), b2(w.HScroll2), b3(w.Check8);
    w.HScroll1->setValue(score.score);
    w.HScroll2->setValue(score.reach);
    w.Check8->setChecked(score.special);
    w.Label5->setText(QString::number(score.score));
    w.Label6->setText(QString::number(score.reach));
}

// The song's fields from its tag, or, without one, the title and artist
// from the grid's row and the rest empty: in a pass, a song without a tag
// must take nothing of the song before into its save. A file that can't be
// read counts as one without a tag: file errors here are passed over, as
// they always were.
struct SongOnDisk {
    EditorFields fields;
    bool marker = false;
};
SongOnDisk ReadSong(Form1& f, int row, const QString& path) {
    SongOnDisk song;
    Id3TagRecord tag;
    // The last 128 bytes in one short read, as ReadId3Tag takes them but
    // without holding the file: a pass reads a song a row, and registering
    // each as held costs more than the read. A file shorter than a tag comes
    // whole and has none.
    try {
        const QByteArray last = f.j.platform.files.ReadBytes(path, -kId3TagBytes, kId3TagBytes);
        if (HasTagExtension(path) && last.size() == kId3TagBytes) {
            tag = DecodeId3Tag(last);
            song.marker = tag.HasMarker();
        }
    } catch (const RuntimeError&) {
    }
    if (song.marker) {
        song.fields = {vb::Trim(tag.Title.Text()), vb::Trim(tag.Artist.Text()), vb::Trim(tag.Album.Text()),
                       vb::Trim(tag.Comment.Text()), vb::Trim(tag.Year.Text()), StyleOnTagScreens(tag.Style)};
    } else {
        song.fields.Title = f.MFGrid1.TextMatrix(row, 1);
        song.fields.Artist = f.MFGrid1.TextMatrix(row, 2);
        song.fields.Style = kStyleOther;
    }
    return song;
}

void ShowSong(Form11& w, const SongOnDisk& song) {
    w.Option1->setChecked(song.marker);
    w.ShowFields(song.fields);
    ShowCommentScore(w);
}

void ApplyRule(Form11& w, void (*rule)(EditorFields&)) {
    EditorFields fields = w.Fields();
    rule(fields);
    w.ShowFields(fields);
}

// The auto-correction: capitals, and the names from the file when the tag
// gave too little of them.
void AutoCorrect(Form1& f, EditorFields& fields) {
    CapitaliseWords(fields);
    if (vb::Trim(fields.Title).size() < 3 || vb::Trim(fields.Artist).size() < 3)
        TakeNamesFromFile(f.MFGrid1.TextMatrix(f.MFGrid1.Row(), kPathColumn), fields);
}

// Stores a check's letter in the grid row and its record.
void StoreCheck(Form1& f, int column, int field, const QString& letter) {
    SongGrid& g = f.MFGrid1;
    const int row = g.Row();
    g.SetTextMatrix(row, column, letter);
    GoToRecordOfRow(f, row);
    f.Data1.Edit();
    f.Data1.SetField(field, letter);
    f.Data1.Update();
}

bool HasSongRow(Form1& f) { return f.MFGrid1.Row() >= 1 && f.MFGrid1.Row() < f.MFGrid1.Rows(); }

void RefusePlayingSong(Jukebox& j) {
    j.StartMessage(j.Lang("ATTENTION!", "ATTENTIE!"));
    j.AddMessageLine(j.Lang("This Song is now playing!  ", "Deze Song speelt momenteel!   "));
    j.AddMessageLine(j.Lang("It is not possible to save changes to the ID3 TAG   ", "Veranderingen in de ID3 TAG opslaan "));
    j.AddMessageLine(j.Lang("while this song is also playing. ", "tijdens afspelen is niet mogelijk.  "));
    j.ShowMessageBuffer(vbCritical);
}

// The tag of the song from the fields. The marker is taken from the file as
// it is now, not from the last read: a tag goes over a tag, and a file
// without one loses only its last byte to it. A file shorter than a tag is
// not written.
void WriteTagFromFields(FileSystem& fs, const QString& path, const EditorFields& fields) {
    ChangeId3Tag(
        fs, path,
        [&](Id3TagRecord& tag) {
            tag.Title = fields.Title;
            tag.Artist = fields.Artist;
            tag.Album = fields.Album;
            tag.Comment = fields.Comment;
            tag.Year = fields.Year;
            tag.Style = uint8_t(fields.Style);
        },
        Id3NewTag::AtLastByte);
}

// The record of the row, when it still holds what the grid shows.
void UpdateRecord(Form1& f, int row, const EditorFields& fields, const QString& style) {
    CatalogueStore& d = f.Data1;
    GoToRecordOfRow(f, row);
    for (int field = 0; field < 3; ++field)
        if (vb::Trim(d.Field(field).toString()) != vb::Trim(f.MFGrid1.TextMatrix(row, field + 1))) return;
    d.Edit();
    d.SetField(0, fields.Title);
    d.SetField(1, fields.Artist);
    d.SetField(2, fields.Album);
    d.SetField(3, fields.Year);
    d.SetField(4, style);
    d.Update();
}

// SaveSongEdit's work on the song, its record and its row, from fields
// whose style is one a save may store.
void StoreSongEdit(Form1& f, int row, const QString& path, const EditorFields& fields) {
    Jukebox& j = f.j;
    FileSystem& fs = j.platform.files;
    SongGrid& g = f.MFGrid1;
    const bool exists = fs.FileExists(path);
    if (exists && path == j.engine.CurrentSongPath && j.PlayStopped == 0) {
        RefusePlayingSong(j);
        return;
    }
    const QString style = StyleName(fields.Style);
    // File and record errors end their step silently, as they always have;
    // the grid then still shows the edit, and a later save tries again.
    try {
        if (exists) WriteTagFromFields(fs, path, fields);
    } catch (const RuntimeError&) {
    }
    try {
        UpdateRecord(f, row, fields, style);
    } catch (const RuntimeError&) {
    }
    g.SetTextMatrix(row, 1, fields.Title);
    g.SetTextMatrix(row, 2, fields.Artist);
    g.SetTextMatrix(row, 3, fields.Album);
    g.SetTextMatrix(row, 4, fields.Year);
    g.SetTextMatrix(row, 5, style);
    g.SetCol(1);
}

// A pass's row: the song as the rules leave it. The pass works on this
// copy and shows it in the window only where the window is repainted (and
// at the end): filling the text boxes for every row would cost more than
// the row's own work, and no one reads a hundred songs a second.
struct PassRow {
    int row = 0;
    QString path;
    SongOnDisk song;
    QString encodingText;
};

void CorrectRow(Form11& w, PassRow& r) {
    const EditorAnalysis e = AnalyseForEditor(w.f);
    if (e.analysis.outcome == Mp3Outcome::Analysed) r.encodingText = e.encodingText;
    EditorFields& fields = r.song.fields;
    if (w.Checked(5)) {
        if (fields.Artist.size() > 4 && fields.Artist.startsWith(QStringLiteral("the "), Qt::CaseInsensitive))
            fields.Artist = fields.Artist.mid(4);
        AutoCorrect(w.f, fields);
    }
    if (w.Checked(6)) AutoAlbum(fields);
    if (w.Checked(7)) AutoStyle(fields);
}

void FillYear(Form11&, PassRow& r) {
    if (vb::Trim(r.song.fields.Year).isEmpty()) r.song.fields.Year = QStringLiteral("0");
}

// The window shows the pass's row. Its fields then belong to that song, and
// what showing them changed is no edit of the user's.
void ShowPassRow(Form11& w, const PassRow& r) {
    if (r.row == 0) return;
    ShowSong(w, r.song);
    if (!r.encodingText.isEmpty()) w.Text3->setText(r.encodingText);
    w.LoadedPath = r.path;
    w.state.SongEdited = 0;
}

// Keeps the window's repaints for the points a pass shows where it stands,
// and puts them back on every way out.
class QuietWindow {
public:
    explicit QuietWindow(QWidget& w) : w_(w), was_(w.updatesEnabled()) { w_.setUpdatesEnabled(false); }
    ~QuietWindow() { w_.setUpdatesEnabled(was_); }
    QuietWindow(const QuietWindow&) = delete;
    QuietWindow& operator=(const QuietWindow&) = delete;
    // Paints the window as its fields stand now.
    void ShowNow() {
        w_.setUpdatesEnabled(true);
        w_.repaint();
        w_.setUpdatesEnabled(false);
    }

private:
    QWidget& w_;
    bool was_;
};

// Walks every song row of MFGrid1 with `work`, letting events through after
// each; EditorStop ends it. The records' writes go in one transaction, which
// is committed however the walk ends: the tags written so far stay written,
// and the records must stay with them.
void WalkCatalogue(Form11& w, void (*work)(Form11&, PassRow&)) {
    Form1& f = w.f;
    SongGrid& g = f.MFGrid1;
    FileSystem& fs = f.j.platform.files;
    CatalogueTask task(f);
    if (!task.Started()) return;
    w.state.EditorStop = 0;
    std::optional<CatalogueStore::Transaction> transaction;
    if (f.Data1.IsOpen()) transaction.emplace(f.Data1);
    PassRow last;
    const auto finish = [&] {
        ShowPassRow(w, last);
        if (transaction) transaction->Commit();
    };
    bool undisturbed = true;
    {
        QuietGrid quiet(g, QuietGrid::RedrawOff);
        QuietWindow quietWindow(w);
        QElapsedTimer shown;
        shown.start();
        try {
            for (int row = 1; row < g.Rows(); ++row) {
                if (shown.elapsed() >= kMsPerRedraw) {
                    ShowPassRow(w, last);
                    g.SetRedraw(true);
                    g.SetRedraw(false);
                    quietWindow.ShowNow();
                    shown.restart();
                }
                if (w.state.EditorStop != 0) {
                    undisturbed = false;
                    break;
                }
                g.SetRow(row);
                if (row > kRowsAbovePass) g.SetTopRow(row - kRowsAbovePass);
                const QString path = f.j.SongFileOnDisk(g.TextMatrix(row, kPathColumn));
                if (HasTagExtension(path) && fs.FileExists(path)) {
                    PassRow r{row, path, ReadSong(f, row, path), {}};
                    work(w, r);
                    if (w.Checked(4)) {
                        r.song.fields.Style = StyleToSave(r.song.fields.Style);
                        g.SetCol(kPathColumn);
                        StoreSongEdit(f, row, path, r.song.fields);
                    }
                    last = std::move(r);
                }
                f.j.platform.events.DoEvents();
                if (f.Unloaded() || f.j.platform.process.Ended()) {
                    undisturbed = false;
                    break;
                }
            }
        } catch (...) {
            finish();
            throw;
        }
    }
    finish();
    if (undisturbed && w.state.EditorStop == 0) f.j.platform.beeper.Beep();
}

}  // namespace

void OpenTagEditor(Form1& f) {
    Form11* w = EditorOf(f);
    if (!w) w = new Form11(f);
    SongGrid& g = f.MFGrid1;
    g.SetCol(kPathColumn);
    f.ShowMessage(f.MessageColour(), g.Text());
    w->show();
    w->raise();
    LoadTagEditor(*w);
}

void ReloadTagEditorOnClick(Form1& f) {
    if (Form11* w = EditorOf(f); w && w->isVisible()) OpenTagEditor(f);
}

void LoadTagEditor(Form11& w) {
    Form1& f = w.f;
    Jukebox& j = f.j;
    w.state = TagEditorState{};
    w.LoadedPath.clear();
    w.SetCaptions();
    w.ClearFields();
    w.FillStyleList();
    for (int i = 0; i < 7; ++i) w.Checks[size_t(i)]->setChecked(j.settings.TagEditorChecks[size_t(i)] != 0);
    const QString text = f.Text1->text();
    if (HasTagExtension(text) && HasSongRow(f)) {
        const QString path = j.SongFileOnDisk(text);
        w.LoadedPath = path;
        if (j.platform.files.FileExists(path)) ShowSong(w, ReadSong(f, f.MFGrid1.Row(), path));
        if (w.Checked(1)) VerifyLyrics(w);
        if (w.Checked(2)) VerifyPicture(w);
        if (w.Checked(3)) AnalyseEncoding(w);
        if (w.Checked(7)) ApplyRule(w, AutoStyle);
        f.MFGrid1.SetCol(1);
    }
    // What the load itself put in the fields is no edit of the user's: an
    // auto-save starts from the first change after it.
    w.state.SongEdited = 0;
    w.state.AutoSaveTicks = 0;
}

void SaveSongEdit(Form11& w) {
    Form1& f = w.f;
    SongGrid& g = f.MFGrid1;
    // "Blues" can't be saved from here: index 0 goes as "Other".
    w.List5->setCurrentRow(StyleToSave(w.List5->currentRow()));
    if (!HasSongRow(f)) return;
    g.SetCol(kPathColumn);
    const QString path = f.j.SongFileOnDisk(g.Text());
    // The fields belong to the song they were filled from; a grid row that
    // has moved on to another song takes none of them.
    if (path != w.LoadedPath) return;
    StoreSongEdit(f, g.Row(), path, w.Fields());
}

void VerifyLyrics(Form11& w) {
    Form1& f = w.f;
    if (!HasSongRow(f)) return;
    Jukebox& j = f.j;
    const QString path = j.SongFileOnDisk(f.MFGrid1.TextMatrix(f.MFGrid1.Row(), kPathColumn));
    const QString letter = VerifyLyricsLetter(j.platform.files, SettingsDir(j, j.settings.LyricsPath), path);
    w.Text1->setText(letter);
    StoreCheck(f, kLyricsColumn, kLyricsField, letter);
}

void VerifyPicture(Form11& w) {
    Form1& f = w.f;
    if (!HasSongRow(f)) return;
    Jukebox& j = f.j;
    const QString letter =
        VerifyPictureLetter(j.platform.files, SettingsDir(j, j.settings.PicturesPath), vb::Trim(w.Text42->text()));
    w.Text2->setText(letter);
    StoreCheck(f, kPictureColumn, kPictureField, letter);
}

void AnalyseEncoding(Form11& w) {
    if (!HasSongRow(w.f)) return;
    const EditorAnalysis e = AnalyseForEditor(w.f);
    if (e.analysis.outcome == Mp3Outcome::Analysed) w.Text3->setText(e.encodingText);
}

void RebuildCommentBlock(Form11& w) {
    const QString block = CommentBlock(w.HScroll1->value(), w.HScroll2->value(), w.Check8->isChecked());
    w.Text44->setText(WithCommentBlock(w.Text44->text(), block));
}

void TagEditorTick(Form11& w) {
    TagEditorState& s = w.state;
    if (w.Checked(5) && s.AutoCorrectDone == 0) {
        EditorFields fields = w.Fields();
        AutoCorrect(w.f, fields);
        w.ShowFields(fields);
        s.AutoCorrectDone = 1;
    }
    if (w.Checked(6) && s.AutoAlbumDone == 0) {
        ApplyRule(w, AutoAlbum);
        s.AutoAlbumDone = 1;
    }
    if (w.Checked(7) && s.AutoStyleDone == 0) {
        ApplyRule(w, AutoStyle);
        s.AutoStyleDone = 1;
    }
    if (!w.Checked(4)) return;
    // Nine quiet ticks, about 0.9 seconds after the last change.
    if (++s.AutoSaveTicks <= 8) return;
    s.AutoSaveTicks = 0;
    if (s.SongEdited != 1) return;
    if (w.Checked(5)) ApplyRule(w, CapitaliseWords);
    if (w.Checked(6)) ApplyRule(w, AutoAlbum);
    if (w.Checked(7)) ApplyRule(w, AutoStyle);
    // A song that plays keeps its edit in the fields; the refusal's box
    // every second would be no help.
    if (w.f.j.PlayStopped == 1) SaveSongEdit(w);
    s.SongEdited = 0;
}

void AutoCorrectAll(Form11& w) {
    w.FillStyleList();
    WalkCatalogue(w, CorrectRow);
}

void FillEmptyYears(Form11& w) { WalkCatalogue(w, FillYear); }

void CloseTagEditor(Form11& w) {
    w.state.EditorStop = -1;
    w.hide();
}

}  // namespace zor
