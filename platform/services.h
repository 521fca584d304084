#pragma once
// The outside services the jukebox calls, each behind a small interface with
// a real implementation (platform/, platform/qt/) and a test double
// (platform/testing/). Subsystems reach them through one Platform bundle.
#include <QDateTime>
#include <QSize>
#include <QString>

#include <functional>

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
    virtual void ShowOpen() = 0;
    virtual void ShowSave() = 0;
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
};

}  // namespace zor
