#pragma once
// Form1, the main window: the spine that owns the grids, the catalogue's data
// control, the timers and the message line. It is thin: it builds its
// controls, and its events call the named operations.
#include "catalogue/catalogue_store.h"
#include "catalogue/song_grid.h"
#include "catalogue/ui/catalogue_task.h"
#include "playlists/playlist_state.h"
#include "shell/jukebox.h"

#include <QMainWindow>

#include <memory>

class QAction;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;
class QTimer;

namespace zor {

class Companions;
class PathSelector;
class SongGridView;

// The message line's colours.
inline const QColor kYellow(255, 255, 0);
inline const QColor kDestructive(255, 64, 64);
inline const QColor kRed(255, 0, 0);
inline const QColor kWhite(255, 255, 255);
inline const QColor kSongLineGreen(0, 255, 0);

class Form1 : public QMainWindow {
    Q_OBJECT
public:
    explicit Form1(Jukebox& jukebox);
    ~Form1() override;

    Jukebox& j;

    // The menus (shell/ui/menus.cpp); every entry is a QAction with its
    // name as objectName. The ones the shell itself touches:
    QMenu *File, *ZOR0;
    QAction *Exit1, *DHelp1;

    // The button bar.
    QGroupBox* Frame2;
    QPushButton *Command3, *Command4, *Command1, *Command8, *Command9, *Command2, *Command7, *Command6, *Command5;

    QLineEdit* Text1;
    QLineEdit* Text2;
    QLabel* Lable1;
    QProgressBar* ProgressBar1;

    SongGrid MFGrid1;
    SongGrid MFgrid2;
    SongGridView* MFGrid1View;
    SongGridView* MFgrid2View;
    CatalogueStore Data1;

    // Panels that come and go.
    PathSelector* Frame3;
    QFrame *Frame4, *Frame5, *Frame7, *Frame8;
    QLabel *Picture1, *Picture2, *Picture3, *Picture4, *Picture5, *Picture6;
    QLineEdit *Text4, *Text6, *Text7, *Text8, *Text9;
    QPushButton* Command17;

    QTimer *Timer1, *Timer3, *Timer4;

    // The internal player, its controls in Frame8 (playback/ui/player_panel).
    std::unique_ptr<MediaPlayer> MediaPlayer1;

    // The random order and the nesting of the playlist loop.
    PlaylistState playlist;

    // Whether a long catalogue task runs, so that a second one is refused.
    CatalogueTasks catalogueTasks;

    // The lyrics and picture windows (Form3, Form4, Form18, Form19).
    std::unique_ptr<Companions> companions;

    // The message line: background first, then the text.
    void ShowMessage(const QColor& background, const QString& text);
    QColor MessageColour() const;
    // A song's line: pure green on black, as a player's display.
    void ShowSongLine(const QString& text);
    // A running task's text, shown at once: events are let through after it.
    void ShowWorking(const QColor& background, const QString& text);
    // A walk over n rows: Max n, Min and Value 0.
    void StartProgress(int n);
    // The walk's progress. The bar is repainted only when it moves by a
    // visible step: a repaint per row would cost more than the walk.
    void SetProgress(int value);
    // The count line: the label word and the number.
    void ShowCount(const QString& label, qint64 count);
    // The count line as "Total:" of songs or playlist rows, or as the
    // "Record:" of the row that plays or was clicked.
    void ShowTotal(qint64 count);
    void ShowRecordNumber(qint64 row);

    // Runs an operation as an event does: a run-time error shows its box
    // and ends only that operation.
    void Run(void (*operation)(Form1&));

    // Unloads the window: the Unload handler runs, then the window closes.
    void Unload();
    bool Unloaded() const { return unloaded_; }
    // A reload has replaced the window: it hides, and deletes itself once
    // none of its own handlers is running any more. A song or a walk that
    // let a skin change through is still on the stack inside one of them,
    // and the toolkit's frames below it still use the window.
    void Retire();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void PaintMessageLine(const QColor& background, const QColor& foreground, const QString& text);
    void BuildMenus();
    void BuildButtonBar();
    void BuildPanels();
    // Runs an event's operation; a run-time error ends only that operation.
    template <typename F>
    void On(F&& operation);
    bool unloading_ = false;
    bool unloaded_ = false;
    bool retired_ = false;
    int handlersRunning_ = 0;
};

// The captions, button legend and tips in the current language; start-up
// and the language reload both run it.
void SetLanguageCaptions(Form1& f);
// The position of the window and its parts for the screen and skin.
void LayOutForm1(Form1& f);
// The song information panels of the artistic skin, in the upper half.
void LayOutArtisticPanels(Form1& f);

}  // namespace zor
