#include "playback/ui/play_ops.h"

#include "catalogue/song_grid.h"
#include "mp3/ui/header_repair_ops.h"
#include "mp3/ui/song_analysis.h"
#include "playback/play_engine.h"
#include "playback/play_log.h"
#include "playback/ui/companions.h"
#include "platform/nul_text.h"
#include "shell/ui/form1.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>

#include <cmath>

namespace zor {
namespace {

enum class SongOutcome {
    Over,       // the song had its player and is over, cut short or left to play on
    NotPlayed,  // missing, or refused by the player
    TryAgain,   // a header repair wants a second try
    WindowGone,
};
enum class WaitOutcome { EndOfSong, PlayerFailed, WindowGone };

// A skin change or the end of the program can take the window away while
// a song waits in it; the song's work must then stop without touching it.
bool WindowStays(const QPointer<Form1>& f) { return f && !f->Unloaded() && !f->j.platform.process.Ended(); }

bool LetEventsThrough(Form1& f) {
    QPointer<Form1> alive(&f);
    f.j.platform.events.DoEvents();
    return WindowStays(alive);
}

bool Artistic(const Jukebox& j) { return j.settings.ArtisticScreen == 1; }


void HideLyricsAndPicture(Form1& f) {
    HideCompanion(f, 3);
    HideCompanion(f, 4);
}

bool ShowCompanionsAlive(Form1& f, SongGrid& grid) {
    const Jukebox& j = f.j;
    // A maximized picture covers the screen; lyrics under it would be lost.
    if (CompanionWidthTwips(f, 4) < j.shell.ScreenWidthPx * 15) {
        ShowLyrics(f, grid);
        if (!LetEventsThrough(f)) return false;
    }
    if (j.settings.AlternatePictures == 0 || j.settings.MaximizePicture == 0) {
        ShowAlbumCover(f, grid);
        if (!LetEventsThrough(f)) return false;
        ShowAlbumBack(f, grid);
        if (!LetEventsThrough(f)) return false;
    }
    ClearRandomPictureFlag(f);
    ShowArtistPicture(f, grid);
    return LetEventsThrough(f);
}

// The settle wait of the players the engine cannot see: a second of Timer1's
// ticks to let the other program take the song. The clock bounds it should
// Timer1 not run.
bool SettleWait(Form1& f) {
    Jukebox& j = f.j;
    QPointer<Form1> alive(&f);
    const QDateTime started = j.platform.clock.Now();
    j.engine.TickCount = 0;
    while (j.engine.TickCount < 10 && j.PlayStopped == 0 && started.secsTo(j.platform.clock.Now()) < 5) {
        j.platform.events.Wait(100);
        if (!WindowStays(alive)) return false;
    }
    return true;
}

void ScrollLyrics(Form1& f, int ticks, int barMax, int& scrollLines) {
    const Jukebox& j = f.j;
    if (j.settings.ScrollLyrics != 1 || j.settings.MaximizePicture != 0 || j.companion.LyricsLineCount <= 10) return;
    if (LyricsScrollTarget(ticks, barMax, j.companion.LyricsLineCount) < scrollLines || j.companion.ScrollHold != 0) return;
    if (!f.isMinimized()) ShowLyricsWindow(f);
    ScrollLyricsDown(f);
    ++scrollLines;
}

void PulseTitle(Form1& f) {
    QFont font = f.Text6->font();
    const double size = font.pointSizeF();
    f.j.engine.TitlePulse = NextTitlePulse(size, f.j.engine.TitlePulse);
    font.setPointSizeF(size + f.j.engine.TitlePulse);
    f.Text6->setFont(font);
}

// The count-down. The seconds are counted by the clock; with the internal
// player its position corrects the end once a second, so a pause pushes the
// end out. Between seconds the loop sleeps until the clock's next second
// while events run.
WaitOutcome WaitForEnd(Form1& f, int barMax, bool internal) {
    Jukebox& j = f.j;
    const Settings& s = j.settings;
    MediaPlayer& player = *f.MediaPlayer1;
    QPointer<Form1> alive(&f);
    double elapsed = 0, lastElapsed = 0;
    int ticks = 0, scrollLines = 0;
    for (;;) {
        if (elapsed >= j.Mp3Info.DurationSeconds || j.PlayStopped != 0) return WaitOutcome::EndOfSong;
        elapsed = double(j.engine.SongStartTime.secsTo(j.engine.SongLastTick));
        if (elapsed != lastElapsed) {
            if (f.isMinimized()) HideLyricsAndPicture(f);
            lastElapsed = elapsed;
            int remaining = int(std::lround(j.Mp3Info.DurationSeconds - elapsed));
            if (internal) {
                if (player.PlayerErrorFlag() != 0) return WaitOutcome::PlayerFailed;
                // A player that cannot tell this song's length yet corrects
                // nothing: the analyser's length counts until it can. Another
                // file in the player (the scratch file of Esc) corrects as
                // ever, and that ends the song.
                if (player.Duration() > 0 || player.FileName() != j.engine.CurrentSongPath) {
                    remaining = int(player.Duration() - player.CurrentPosition());
                    if (remaining == 0) return WaitOutcome::EndOfSong;
                    // An intro keeps its own length; the display still
                    // counts down to the end of the file.
                    if (j.IntroOnly == 0) j.Mp3Info.DurationSeconds = remaining + int(elapsed);
                }
            }
            ++ticks;
            const QString countdown = CountdownText(remaining);
            if (s.FastPc == 1) {
                f.ShowSongLine(j.IntroOnly == 1 ? IntroLine(j, j.engine.SongInfoLine) : CountdownLine(j, j.engine.SongInfoLine, remaining));
                if (Artistic(j)) {
                    f.Text8->setText(countdown);
                    PulseTitle(f);
                }
                if (!LetEventsThrough(f)) return WaitOutcome::WindowGone;
                int position = ticks;
                if (internal) {
                    position = std::max(int(std::floor(player.CurrentPosition())), 0);
                    if (player.Duration() > 0 && player.CurrentPosition() == player.Duration())
                        return WaitOutcome::EndOfSong;
                }
                if (position <= f.ProgressBar1->maximum()) f.ProgressBar1->setValue(position);
                ScrollLyrics(f, ticks, barMax, scrollLines);
            }
            // The end may have come with this second: look again at once.
            continue;
        }
        j.platform.events.Wait(MsToNextSecond(j.platform.clock.Timer()));
        if (!WindowStays(alive)) return WaitOutcome::WindowGone;
        j.engine.SongLastTick = j.platform.clock.Now();
    }
}

// The song's tidying. The player is not stopped: in the playlist the next
// Open replaces the song.
void EndOfSong(Form1& f) {
    Jukebox& j = f.j;
    j.Mp3Info.DurationSeconds = 0;
    f.Lable1->setText(QStringLiteral("     Files:"));
    f.ProgressBar1->setValue(0);
    f.Text8->setText(QStringLiteral("00:00"));
    if (Artistic(j)) f.Frame8->hide();
    f.Picture4->show();
    if (j.companion.LyricsKeepOpen == 0) HideLyricsAndPicture(f);
    HideCompanion(f, 18);
    HideCompanion(f, 19);
    f.Timer3->stop();
}

// The internal player could not play the song. In the catalogue the user may
// have the lead-in removed and the song tried again; the playlist goes on.
SongOutcome PlayerFailed(Form1& f) {
    Jukebox& j = f.j;
    if (j.PlaylistActive == 0) {
        HideLyricsAndPicture(f);
        const int answer =
            j.platform.messages.MsgBox(PlayerProblemText(j), vbYesNo | vbExclamation | vbDefaultButton2, PlayerProblemTitle(j));
        if (answer == vbYes) {
            RemoveLeadIn(f, f.MFGrid1);
            return LetEventsThrough(f) ? SongOutcome::TryAgain : SongOutcome::WindowGone;
        }
    }
    EndOfSong(f);
    return SongOutcome::NotPlayed;
}

// Who plays the song: the internal player, whose position the count-down
// follows, or a program the engine cannot see.
enum class PlayedBy { Internal, Outside, DesktopRefused };

void OpenInInternalPlayer(Form1& f, const QString& path) {
    f.Picture4->hide();
    f.Frame8->show();
    f.j.engine.CurrentSongPath = path;
    f.MediaPlayer1->Open(path);
}

PlayedBy StartPlayer(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    const int16_t choice = j.settings.PlayerChoice;
    grid.SetCol(kPathColumn);
    if (choice >= 1 && choice <= 3) {
        j.engine.CurrentSongPath.clear();
        if (j.StartExternalPlayer) j.StartExternalPlayer(grid);
        return PlayedBy::Outside;
    }
    // The cell may come padded from a .zpl record, or with a tag's zeros.
    const SongFileParts parts = SplitSongPath(j.SongFileOnDisk(grid.Text()));
    const QString path = parts.directory + parts.fileName;
    if (choice == 4) {
        OpenInInternalPlayer(f, path);
        return PlayedBy::Internal;
    }
    if (choice != 0) return PlayedBy::Outside;
    // The desktop's program for the file type. Where the desktop has none,
    // as on many a new user's system, the song would play unheard: the
    // internal player takes it instead.
    if (j.platform.desktop.Open(path)) {
        // An earlier song may have fallen back to the internal player; it
        // must not play on under the desktop's.
        if (!j.engine.CurrentSongPath.isEmpty()) {
            f.MediaPlayer1->Stop();
            f.Frame8->hide();
            j.engine.CurrentSongPath.clear();
        }
        return PlayedBy::Outside;
    }
    OpenInInternalPlayer(f, path);
    return PlayedBy::DesktopRefused;
}

QString DesktopRefusedNote(const Jukebox& j) {
    return j.Lang(QStringLiteral(" - No PC Default player for this file: played by the ZOR player."),
                  QStringLiteral(" - Geen PC Default speler voor dit bestand: gespeeld door de ZOR player."));
}

// One try at a song: the log line, the analysis, the player started, then the
// wait for its end.
SongOutcome PlayOnce(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    const Settings& s = j.settings;
    const bool catalogue = &grid == &f.MFGrid1;
    // The preparing steps move the grid's current column about.
    grid.SetRedraw(false);
    LogSongStart(j, grid);
    j.PlayStopped = 0;
    j.engine.PictureTurn = 0;
    f.ProgressBar1->setValue(0);
    if (Artistic(j)) {
        f.Text7->setText(TextBeforeNul(grid.TextMatrix(grid.Row(), 1)));
        f.Text6->setText(TextBeforeNul(grid.TextMatrix(grid.Row(), 2)));
        f.Text9->setText(TextBeforeNul(grid.TextMatrix(grid.Row(), 3)));
    }
    if (s.MusicCentral == 1 && j.DriveMusicCentral) j.DriveMusicCentral(grid);
    if (s.ShowFirst == 1 && s.MusicCentral == 0 && !ShowCompanionsAlive(f, grid)) return SongOutcome::WindowGone;
    f.ShowRecordNumber(grid.Row());

    grid.SetCol(kPathColumn);
    const SongAnalysisRequest request = SongStartRequest();
    const Mp3Analysis analysis = catalogue ? AnalyseGridSong(f, request) : AnalysePlaylistSong(f, request);
    if (analysis.SongFileMissing) {
        // The analyser has told the catalogue's user; the playlist moves on.
        if (j.PlaylistActive == 0) j.PlayStopped = 1;
        grid.SetRedraw(true);
        return SongOutcome::NotPlayed;
    }
    if (j.AnnounceSong && s.SpeakingDj == 1) {
        QPointer<Form1> alive(&f);
        j.AnnounceSong(grid);
        if (!WindowStays(alive)) return SongOutcome::WindowGone;
    }
    const PlayedBy playedBy = StartPlayer(f, grid);
    const bool internal = playedBy != PlayedBy::Outside;

    const int barMax = j.Mp3Info.DurationSeconds + 1;
    f.ProgressBar1->setRange(0, std::max(barMax, 1));
    if (!internal && !SettleWait(f)) return SongOutcome::WindowGone;
    j.engine.SongStartTime = j.engine.SongLastTick = j.platform.clock.Now();
    const QString line = s.FastPc == 1 ? j.engine.SongInfoLine + RemainingText(j, j.Mp3Info.DurationSeconds) : j.engine.SongInfoLine;
    f.ShowSongLine(playedBy == PlayedBy::DesktopRefused ? line + DesktopRefusedNote(j) : line);
    if (s.ShowFirst == 0 && s.MusicCentral == 0 && !ShowCompanionsAlive(f, grid)) return SongOutcome::WindowGone;
    grid.SetCol(1);
    grid.SetRedraw(true);
    // Without FastPc a catalogue song plays on unattended: a slow computer
    // is spared the count-down, and the player's stop event ends it.
    if (j.PlaylistActive == 0 && s.FastPc == 0) return SongOutcome::Over;

    j.engine.PictureTurn = 0;
    f.Timer3->start();
    if (j.IntroOnly == 1) j.Mp3Info.DurationSeconds = s.IntroSeconds;
    switch (WaitForEnd(f, barMax, internal)) {
        case WaitOutcome::WindowGone: return SongOutcome::WindowGone;
        case WaitOutcome::PlayerFailed: return PlayerFailed(f);
        case WaitOutcome::EndOfSong: break;
    }
    EndOfSong(f);
    return SongOutcome::Over;
}

}  // namespace

void ShowCompanions(Form1& f, SongGrid& grid) { ShowCompanionsAlive(f, grid); }

bool PlayGridRow(Form1& f, SongGrid& grid) {
    // After a header repair the song gets a second try, and a second log line.
    SongOutcome outcome;
    do {
        outcome = PlayOnce(f, grid);
    } while (outcome == SongOutcome::TryAgain);
    return outcome == SongOutcome::Over;
}

void PlayDatabaseRow(Form1& f) {
    Jukebox& j = f.j;
    // A double click during an announcement is ignored.
    if (j.settings.SpeakingDj == 1 && j.AnnouncerSpeaking && j.AnnouncerSpeaking()) return;
    j.companion.ScrollHold = 0;
    f.Text4->hide();
    j.PlayStopped = 1;
    j.IntroOnly = 0;
    QPointer<Form1> alive(&f);
    PlayGridRow(f, f.MFGrid1);
    if (alive) f.Text4->show();
}

void DoubleClickCatalogueGrid(Form1& f) {
    Jukebox& j = f.j;
    if (f.MediaPlayer1->PlayState() == mpPlaying) {
        f.MediaPlayer1->Stop();
        j.PlayStopped = 1;
    }
    HideLyricsAndPicture(f);
    // A double click of the user's own ends steering by voice.
    j.engine.FreeSpeechEnabled = 0;
    if (j.engine.MixerOpen == 1) {
        if (j.LoadRowIntoMixer) j.LoadRowIntoMixer(f.MFGrid1);
        return;
    }
    if (j.HideFindWindow) j.HideFindWindow();
    PlayDatabaseRow(f);
}

void StopPlay(Form1& f) {
    f.MediaPlayer1->Stop();
    // The program's own short file makes the player let go of the song.
    f.MediaPlayer1->Open(f.j.ProgramFile(QStringLiteral("ZOR3.mp3")));
    f.j.PlayStopped = 1;
}

void Timer3Tick(Form1& f) {
    Jukebox& j = f.j;
    // The last seconds of a song, or a song cut short: no more turns.
    if (j.Mp3Info.DurationSeconds < 10) return;
    f.Timer3->setInterval(PictureIntervalMs(j.settings.PictureInterval));
    if (j.settings.AlternatePictures != 1 || j.settings.MusicCentral == 1) return;
    if (++j.engine.PictureTurn >= 3) j.engine.PictureTurn = 0;
    SongGrid& grid = j.PlaylistActive == 0 ? f.MFGrid1 : f.MFgrid2;
    if (j.engine.PictureTurn == 1 || j.engine.PictureTurn == 2) {
        if (j.engine.PictureTurn == 1)
            ShowAlbumCover(f, grid);
        else
            ShowAlbumBack(f, grid);
        if (j.companion.PictureMissing != 1) return;
    }
    ShowArtistPicture(f, grid);
}

void Timer4Tick(Form1& f) {
    Jukebox& j = f.j;
    ++j.engine.DelayTicks;
    if (j.engine.DelayTicks == 2) {
        HideLyricsAndPicture(f);
        QPointer<Form1> alive(&f);
        PlayDatabaseRow(f);
        if (!alive) return;
    }
    if (j.engine.DelayTicks >= 20) f.Timer4->stop();
}

void PlayerStateChanged(Form1& f, int newState) {
    Jukebox& j = f.j;
    switch (newState) {
        case mpStopped:
            // The playlist counts its song down to the end regardless.
            if (j.PlaylistActive != 0) return;
            j.PlayStopped = 1;
            f.ShowSongLine(j.Lang(QStringLiteral("Playing of song stopped."), QStringLiteral("Afspelen gestopt.")));
            j.Mp3Info.DurationSeconds = 0;
            return;
        case mpPaused:
            f.ShowSongLine(j.Lang(QStringLiteral("Playing of song pauzed."), QStringLiteral("Afspelen gepauzeerd")));
            return;
        case mpPlaying:
            f.ShowSongLine(j.engine.SongInfoLine);
            return;
        default:
            return;
    }
}

}  // namespace zor
