#include "shell/ui/startup.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "platform/binary_file.h"
#include "platform/paths.h"
#include "platform/runtime_error.h"
#include "playback/play_log.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/settings_file.h"
#include "shell/ui/form1.h"
#include "shell/ui/path_selector.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

namespace zor {
namespace {

// The program beside itself, or in one of the installation places, which
// then becomes ProgramDir for every file looked up from here on.
bool FindProgramDir(Jukebox& j) {
    FileSystem& files = j.platform.files;
    const QString name = QString::fromLatin1(kProgramFileName);
    if (files.FileExists(j.ProgramFile(name))) return true;
    for (const QString& dir : ProgramDirCandidates(j.platform.environment.HomeDirectory())) {
        if (files.FileExists(dir + u'/' + name)) {
            j.ProgramDir = dir;
            return true;
        }
    }
    return false;
}

void ShowProgramNotFound(Jukebox& j) {
    // The language is not known yet, so the English branch is what shows.
    if (j.Language == QStringLiteral("0")) {
        j.StartMessage(QStringLiteral("ERROR! "));
        j.AddMessageLine(QStringLiteral("Er is een fout opgetreden."));
        j.AddMessageLine(QStringLiteral("Her-installeer de software en gebruik"));
        j.AddMessageLine(QStringLiteral("uitsluitend C:\\Program Files\\ZOR JUKEBOX' als directory.  "));
    } else {
        j.StartMessage(QStringLiteral("ERROR! "));
        j.AddMessageLine(QStringLiteral("Regretably an error has occurred."));
        j.AddMessageLine(QStringLiteral("Please re-installeer the software and only use  "));
        j.AddMessageLine(QStringLiteral("C:\\Program Files\\ZOR JUKEBOX' as directory.  "));
    }
    j.ShowMessageBuffer(vbCritical);
}

// The scratch file the player is given to let go of a real song.
void WriteScratchSong(Jukebox& j) {
    try {
        BinaryFile f(j.platform.files, j.ProgramFile(QStringLiteral("ZOR3.mp3")));
        f.Put(1, QByteArray(1000, '\0'));
    } catch (const RuntimeError&) {
        // Ignored: start-up goes on without it.
    }
}

}  // namespace

void ShowStartupHint(Form1& f) {
    const Jukebox& j = f.j;
    f.ShowMessage(kDestructive,
                  j.Lang(QStringLiteral("IN CASE OF OBJECT OR CLASS ERROR, PLEASE INSTALL THE ODBC DRIVER"),
                         QStringLiteral("I.G.V. OBJECT OR CLASS ERROR, INSTALLEER DAN S.V.P. DE 'ODBC' DRIVER")) +
                      j.Lang(QStringLiteral(" (see the User Guide in the Help menu)"),
                             QStringLiteral(" (zie de Gebruiksaanwijzing in het Help menu)")));
}

namespace {

void ReadScreenSize(Jukebox& j) {
    const QSize s = j.platform.environment.ScreenSize();
    j.shell.ScreenWidthPx = s.width();
    j.shell.ScreenHeightPx = s.height();
}

// The frame of the internal player. It is placed even when another player
// is chosen: a song the desktop has no program for falls back to the
// internal player, whose frame must then come up in its own place.
void PlacePlayerFrame(Form1& f) {
    Jukebox& j = f.j;
    f.Frame8->setVisible(j.settings.PlayerChoice == 4);
    QPalette p = f.Frame8->palette();
    if (j.settings.ArtisticScreen == 0) {
        p.setColor(QPalette::Window, f.Frame2->palette().color(QPalette::Window));
        const int left = j.shell.ScreenWidthPx >= 1024 ? 9240 : 15 * j.shell.ScreenWidthPx - 2760;
        f.Frame8->move(TwipsToPx(left), TwipsToPx(120));
    } else {
        p.setColor(QPalette::Window, Qt::black);
        p.setColor(QPalette::WindowText, Qt::white);  // Label6 on the black
        f.Frame8->move(TwipsToPx(1580), TwipsToPx(150));
    }
    f.Frame8->setAutoFillBackground(true);
    f.Frame8->setPalette(p);
}

void PaintArtisticSkin(Form1& f) {
    QPalette p = f.palette();
    p.setColor(QPalette::Window, Qt::black);
    f.setPalette(p);
    // The menus keep the desktop's colours: black would hide their text.
    // Every role is marked as set, or the menus would inherit the black.
    QPalette menus = QApplication::palette(f.menuBar());
    menus.setResolveMask(~QPalette::ResolveMask(0));
    f.menuBar()->setPalette(menus);
    f.menuBar()->setAutoFillBackground(true);
    // The count line's label in the skin's light blue.
    QPalette label = f.Lable1->palette();
    label.setColor(QPalette::WindowText, QColor(0, 250, 250));
    f.Lable1->setPalette(label);
    f.MFGrid1.BackColor = BgrFromRgb(0, 0, 0);
    f.MFGrid1.ForeColor = BgrFromRgb(255, 255, 255);
    f.MFGrid1.BackColorSel = BgrFromRgb(0, 250, 250);
    f.MFGrid1.ForeColorSel = BgrFromRgb(0, 0, 0);
    f.MFGrid1.AppearanceChanged();
    f.MFgrid2.BackColor = BgrFromRgb(100, 100, 100);
    f.MFgrid2.BackColorSel = BgrFromRgb(250, 250, 0);
    f.MFgrid2.AppearanceChanged();
    LayOutArtisticPanels(f);
    f.Frame4->show();
    f.Frame5->show();
    f.Frame7->show();
    f.j.settings.ScrollLyrics = 1;
}

}  // namespace

bool Form1Load(Form1& f) {
    Jukebox& j = f.j;
    Platform& p = j.platform;
    // Load runs again at every skin or language reload, so each run sets
    // its state afresh.
    j.ProgramDir = p.environment.ApplicationPath();
    while (j.ProgramDir.size() > 1 && j.ProgramDir.endsWith(u'/')) j.ProgramDir.chop(1);
    j.shell.SkinReload = 0;
    j.PlayStopped = 1;
    j.shell.DirectHelp = true;
    f.DHelp1->setChecked(true);
    j.shell.CrossFadePresets = {15, 15, 19};
    f.Timer4->stop();
    f.MFgrid2.SetVisible(false);
    if (!FindProgramDir(j)) {
        ShowProgramNotFound(j);
        f.Unload();
        if (!p.process.Ended()) p.process.End();
        return false;
    }
    // English and the normal skin's picture window until the settings say
    // otherwise.
    j.Language = QStringLiteral("1");
    j.companion.PictureTopPx = 152;
    j.companion.PictureBottomPx = 205;
    WriteScratchSong(j);
    // Kept as written, as every default path; its user maps it (MapPath).
    j.shell.DefaultCopyDir = QStringLiteral("C:\\!MP3\\");
    j.shell.PlayTimeCounter = 0;
    j.shell.Timer1Ticks = 75;
    // EmptyNoticeCount starts at 0 with the process and is not reset here:
    // the notice comes once per process, also across skin reloads.
    f.Timer3->stop();
    f.Frame4->hide();
    f.Frame5->hide();
    f.Frame7->hide();
    f.ZOR0->menuAction()->setVisible(false);
    f.Command17->hide();
    if (const QString w = p.environment.WindowsDirectory(); !w.isEmpty()) j.shell.WindowsDir = w;
    if (const QString s = p.environment.SystemDirectory(); !s.isEmpty()) j.shell.SystemDir = s;
    if (j.ProgramDir.size() > 1) j.shell.ProgramDrive = j.ProgramDir.left(1);
    // A missing settings file is reported in the message line; start-up
    // goes on.
    if (!LoadSettings(j))
        f.ShowMessage(kRed, j.ProgramDir + j.Lang(QStringLiteral("/ZORjuke.ini not found! Critical Error."),
                                                  QStringLiteral("/ZORjuke.ini niet gevonden! Kritische fout.")));
    // A damaged record must not stop the start: what can't be used is taken
    // as the nearest value that can.
    MakeSettingsUsable(j.settings);
    ReadScreenSize(j);
    ApplyLanguageFlag(j);
    PlacePlayerFrame(f);
    SetLanguageCaptions(f);
    f.Picture1->hide();
    f.Picture2->hide();
    f.Frame3->txtSearchSpec->hide();
    ShowStartupHint(f);
    if (j.settings.ArtisticScreen != 0) {
        j.companion.PictureTopPx = 171;
        j.companion.PictureBottomPx = 235;
    }
    FillStyleTable(j.StyleTable);
    // The screen is read again and the window laid out for it.
    ReadScreenSize(j);
    LayOutForm1(f);
    j.DatabaseFile = j.ProgramFile(QStringLiteral("Mp3data1.mdb"));
    j.SongCount = 1;
    j.StopRequested = 0;
    // First use writes the defaults; otherwise the settings are read a second
    // time. The test goes by the capitalised name the installation writes.
    if (p.files.Dir(j.ProgramFile(QStringLiteral("ZORjuke.INI"))).isEmpty()) {
        LayOutGrids(f);
        ApplyFirstUseDefaults(j.settings);
        SaveSettings(j);
    } else {
        LoadSettings(j);
        MakeSettingsUsable(j.settings);
    }
    // The grids and the language once more, by the settings now in force.
    LayOutGrids(f);
    ApplyLanguageFlag(j);
    j.grid.SortAtStartCopy = j.settings.SortAtStart;
    j.grid.SortKeyCopy = j.settings.SortAtStart;
    // The start picture covers the wait while the catalogue opens.
    if (j.settings.AutoLoad == 1) {
        if (j.ShowStartPicture) j.ShowStartPicture();
        OpenDatabase(f);
        if (j.HideStartPicture) j.HideStartPicture();
    }
    // The artistic skin, unless this reload is the return to the normal one.
    if (j.settings.ArtisticScreen == 1 && j.shell.SkinSwitching == 0) {
        PaintArtisticSkin(f);
    } else if (j.shell.ScreenWidthPx >= 1024) {
        f.Frame4->move(TwipsToPx(10125), f.Frame4->y());
        f.Frame4->show();
    }
    f.Timer1->start();
    return true;
}

void Form1Unload(Form1& f) {
    Jukebox& j = f.j;
    // The settings screen loads the window again for the new language. A
    // window closed for good after a language change leaves no window
    // behind, and then the process ends as well.
    if (j.shell.LanguageChanged && j.shell.MainWindowReloading) return;
    if (j.shell.SkinReload) return;
    j.platform.process.End();
}

void EscapeKey(Form1& f) {
    Jukebox& j = f.j;
    if (j.PlayStopped == 1) {
        LogProgramStop(j);
        j.platform.events.DoEvents();
        f.Unload();
    } else if (j.FreeSongFromPlayer) {
        // Stops the player and frees the song file; the playlist stays.
        j.FreeSongFromPlayer();
    }
}

void ExitProgram(Form1& f, bool fromButton) {
    Jukebox& j = f.j;
    j.StopRequested = -1;
    if (fromButton && j.StopPlayer) j.StopPlayer();
    if (j.HidePictureForms) j.HidePictureForms();
    LogProgramStop(j);
    f.Unload();
}

void ChangeSkin(Form1& f, bool toArtistic) {
    Jukebox& j = f.j;
    if (toArtistic) {
        j.settings.ArtisticScreen = 1;
    } else {
        j.shell.SkinSwitching = 1;
        j.settings.ArtisticScreen = 0;
    }
    SaveSettings(j);
    j.shell.SkinReload = 1;
    // The window is unloaded and loaded anew; this handler's window is then
    // gone, so only the shared state is touched from here on.
    if (j.ReloadMainWindow) j.ReloadMainWindow();
    if (!toArtistic) j.shell.SkinSwitching = 0;
    j.PlayStopped = 1;
    j.platform.events.DoEvents();
}

void Timer1Tick(Form1& f) {
    Jukebox& j = f.j;
    ++j.shell.PlayTimeCounter;
    ++j.engine.TickCount;  // the play engine's settle wait counts these
    ++j.shell.Timer1Ticks;
    if (j.shell.Timer1Ticks <= 100) return;
    j.shell.Timer1Ticks = 0;
    if (j.shell.EmptyNoticeCount < 1 && j.SongCount == 0 && f.Frame3->isHidden()) {
        ++j.shell.EmptyNoticeCount;
        j.MessageBuffer.clear();
        if (j.Language == QStringLiteral("0")) {
            j.AddMessageLine(QStringLiteral("DE DATABASE IS LEEG ! "));
            j.AddMessageLine(QStringLiteral("Voeg songs toe aan de Database; druk op 'ERBIJ'."));
            j.AddMessageLine(QStringLiteral("Indien zich problemen voordoen: Installeer en activeer ODBC"));
            j.AddMessageLine(QStringLiteral("Selecteer hiertoe Windows-Help: 'ODBC - Overzicht'"));
            j.AddMessageLine(QStringLiteral("Klik op 'Databronnen (ODBC)' en activeer .mdb drivers!"));
            j.AddMessageLine(QStringLiteral("Een alternatief is het installeren van MS-ACCESS."));
        } else {
            j.AddMessageLine(QStringLiteral("THE DATABASE IS EMPTY ! "));
            j.AddMessageLine(QStringLiteral("Add songs to the Database by pressing 'ADD'"));
            j.AddMessageLine(QStringLiteral("In case of problems (or other): Install and activate ODBC"));
            j.AddMessageLine(QStringLiteral("Do this by means of Windows-Help: 'ODBC - Overview'"));
            j.AddMessageLine(QStringLiteral("Click on 'Databases (ODBC)' and activate .mdb drivers!"));
            j.AddMessageLine(QStringLiteral("Alternatively: Install MS-ACCESS database program."));
        }
        j.ShowMessageBuffer(vbExclamation);
    }
}

void PauseWithEvents(Jukebox& j, double seconds) {
    const double start = j.platform.clock.Timer();
    auto elapsed = [&] {
        double d = j.platform.clock.Timer() - start;
        return d < 0 ? d + 86400 : d;  // Timer wraps at midnight
    };
    while (elapsed() < seconds) j.platform.events.Wait(100);
}

void ToggleDirectHelp(Form1& f) {
    Jukebox& j = f.j;
    j.shell.DirectHelp = !j.shell.DirectHelp;
    f.DHelp1->setChecked(j.shell.DirectHelp);
    SetLanguageCaptions(f);
    // The captions bring the catalogue's tips; the playlist keeps its own.
    if (f.playlist.turned) TurnControlsToPlaylist(f);
}

void SaveAllSettingsFromForm(Form1& f) {
    std::array<int, 13> catalogue{}, playlist{};
    for (int c = 0; c < 13; ++c) {
        catalogue[c] = f.MFGrid1.ColWidth(c);
        playlist[c] = f.MFgrid2.ColWidth(c);
    }
    SaveAllSettings(f.j, catalogue, playlist);
}

}  // namespace zor
