#pragma once
// The outside services the jukebox calls, each behind a small interface with
// a real implementation (platform/, platform/qt/) and a test double
// (platform/testing/). Subsystems reach them through one Platform bundle.
#include <QDateTime>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace zor {

class FileSystem;

// MsgBox constants and answers, as the VB runtime numbers them.
enum MsgBoxFlags : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbRetryCancel = 5,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton1 = 0,
    vbDefaultButton2 = 256,
    vbDefaultButton3 = 512,
    vbSystemModal = 4096,
};
enum MsgBoxAnswer : int { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual int MsgBox(const QString& prompt, int flags, const QString& title) = 0;
};

// The common dialog CDialog1: set the properties, call ShowOpen or ShowSave,
// read FileName ("" when the user cancelled).
class CommonDialog {
public:
    virtual ~CommonDialog() = default;
    QString InitDir;
    QString FileName;
    QString Filter;  // "description|pattern|description|pattern"
    QString DialogTitle;
    // The filter shown first, from 1; after ShowOpen or ShowSave the one
    // the user chose.
    int FilterIndex = 1;
    virtual void ShowOpen() = 0;
    virtual void ShowSave() = 0;
    // FileName as a save takes it: a name typed without an extension gets
    // the chosen filter's ("*.zpl" gives ".zpl"; a filter of every file
    // gives none), as the old dialogs did, so that the open dialog's filter
    // finds the file again. "" stays "" (Cancel).
    QString SaveName() const;
};

// Now in whole seconds, as VB's Now; Timer in seconds since midnight.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime Now() = 0;
    virtual double Timer() = 0;
};

class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void DoEvents() = 0;
    // Lets events through for up to `ms` milliseconds, sleeping between them.
    virtual void Wait(int ms) = 0;
};

class Beeper {
public:
    virtual ~Beeper() = default;
    virtual void Beep() = 0;
};

// What the process knows of its surroundings: the application's path, the
// current and home directories, the screen size (GetSystemMetrics 0 and 1).
class Environment {
public:
    virtual ~Environment() = default;
    virtual QString ApplicationPath() = 0;
    virtual QString CurrentDirectory() = 0;
    virtual QString HomeDirectory() = 0;
    // GetWindowsDirectoryA / GetSystemDirectoryA: "" when there is none.
    virtual QString WindowsDirectory() = 0;
    virtual QString SystemDirectory() = 0;
    virtual QSize ScreenSize() = 0;
};

// VB's End: the process stops at once.
class ProcessControl {
public:
    virtual ~ProcessControl() = default;
    virtual void End() = 0;
    virtual bool Ended() const = 0;
};

// ShellExecute's "open": hands a document or a web address to the desktop's
// default program for it. False when nothing could take it.
class Desktop {
public:
    virtual ~Desktop() = default;
    virtual bool Open(const QString& documentOrUrl) = 0;
};

// The media player control: MediaPlayer1 on the main window, the mixer's two
// channels, the finder's player. Open loads a file and starts it; a file that
// cannot be played leaves PlayerErrorFlag nonzero until the next Open. The
// player holds its file open (FileSystem's registry) until another file is
// opened, which is how the jukebox frees a song: it opens its own ZOR3.mp3.
enum MediaPlayState : int { mpStopped = 0, mpPaused = 1, mpPlaying = 2 };

class MediaPlayer {
public:
    virtual ~MediaPlayer() = default;
    virtual void Open(const QString& path) = 0;
    // Stop goes back to the start and keeps the file loaded: Play starts it
    // again. After the end of the file the position stays at Duration.
    virtual void Stop() = 0;
    virtual void Pause() = 0;
    virtual void Play() = 0;  // resumes, or starts from the beginning when stopped
    virtual int PlayState() const = 0;  // MediaPlayState
    virtual double CurrentPosition() const = 0;  // seconds
    virtual void SetCurrentPosition(double seconds) = 0;
    virtual double Duration() const = 0;  // seconds; 0 while unknown
    virtual int PlayerErrorFlag() const = 0;
    virtual QString FileName() const = 0;
    // Hundredths of a decibel: 0 full, -10000 silent.
    virtual void SetVolume(int hundredthsDb) = 0;
    virtual int Volume() const = 0;
    // -10000 (right silent) .. 0 (both) .. 10000 (left silent): the other
    // channel's attenuation in hundredths of a decibel.
    virtual void SetBalance(int balance) = 0;
    virtual int Balance() const = 0;
    // Fired on the user-interface thread for every change of PlayState: by
    // Play, Pause and Stop at once, by the end of the file or a failure while
    // playing when the player's message arrives. Open starts from stopped
    // without an event, then fires the change to playing.
    std::function<void(int oldState, int newState)> PlayStateChange;
};

// Makes players: the main window needs one, the mixer two, the finder one.
class MediaPlayerFactory {
public:
    virtual ~MediaPlayerFactory() = default;
    virtual std::unique_ptr<MediaPlayer> MakePlayer() = 0;
};

struct Platform {
    MessageBoxes& messages;
    CommonDialog& dialog;
    Clock& clock;
    EventPump& events;
    Beeper& beeper;
    Environment& environment;
    ProcessControl& process;
    FileSystem& files;
    Desktop& desktop;
    MediaPlayerFactory& players;
};

}  // namespace zor
