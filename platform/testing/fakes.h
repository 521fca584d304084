#pragma once
// Test doubles of the outside services. Each records what the jukebox asked
// of it and answers from a script the test sets up.
#include "platform/file_system.h"
#include "platform/services.h"

#include <QDateTime>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <vector>

namespace zor::testing {

class FakeMessageBoxes : public MessageBoxes {
public:
    struct Shown {
        QString title;
        QString text;
        int flags;
    };
    std::vector<Shown> shown;
    std::deque<int> answers;  // taken one per box; without, the default button
    int MsgBox(const QString& prompt, int flags, const QString& title) override;
};

class FakeCommonDialog : public CommonDialog {
public:
    struct Call {
        QString kind;  // "open" or "save"
        QString initDir, filter, title;
    };
    std::vector<Call> calls;
    std::deque<QString> names;  // taken one per dialog; "" or none means Cancel
    void ShowOpen() override;
    void ShowSave() override;

private:
    void Answer(const char* kind);
};

class FakeClock : public Clock {
public:
    QDateTime now = QDateTime(QDate(2026, 11, 22), QTime(20, 15, 0));
    double timer = 20 * 3600 + 15 * 60;
    QDateTime Now() override { return now; }
    double Timer() override { return timer; }
    void Advance(double seconds);
};

class FakeEventPump : public EventPump {
public:
    int calls = 0;
    // Runs inside DoEvents, as a click arriving during long work would.
    std::function<void(int call)> onDoEvents;
    bool processRealEvents = true;
    // Called for each Wait; the test platform advances its clock by it.
    std::function<void(int ms)> onWait;
    void DoEvents() override;
    void Wait(int ms) override;
};

class FakeBeeper : public Beeper {
public:
    int beeps = 0;
    void Beep() override { ++beeps; }
};

class FakeEnvironment : public Environment {
public:
    QString applicationPath, currentDirectory, homeDirectory;
    QString windowsDirectory = QStringLiteral("/etc");
    QString systemDirectory = QStringLiteral("/usr/lib");
    QSize screen{1280, 800};
    QString ApplicationPath() override { return applicationPath; }
    QString CurrentDirectory() override { return currentDirectory; }
    QString HomeDirectory() override { return homeDirectory; }
    QString WindowsDirectory() override { return windowsDirectory; }
    QString SystemDirectory() override { return systemDirectory; }
    QSize ScreenSize() override { return screen; }
};

class FakeProcessControl : public ProcessControl {
public:
    int ends = 0;
    void End() override { ++ends; }
    bool Ended() const override { return ends > 0; }
};

class FakeDesktop : public Desktop {
public:
    QStringList opened;
    bool succeed = true;
    bool Open(const QString& documentOrUrl) override {
        opened << documentOrUrl;
        return succeed;
    }
};

// The real file system with failures on demand: FailNext("FileCopy", 61)
// makes the next FileCopy raise run-time error 61.
class FakeFiles : public FileSystem {
public:
    void FailNext(const QString& operation, int errorNumber) { failures_[operation].push_back(errorNumber); }
    QStringList log;  // "Kill path", "FileCopy a -> b", ...
    void FileCopy(const QString& source, const QString& target) override;
    void Kill(const QString& path) override;
    void Name(const QString& from, const QString& to) override;
    void MkDir(const QString& path) override;

private:
    void MaybeFail(const QString& operation);
    std::map<QString, std::deque<int>> failures_;
};

// All doubles in one bundle, with the Platform that hands them out.
struct TestPlatform {
    FakeMessageBoxes messages;
    FakeCommonDialog dialog;
    FakeClock clock;
    FakeEventPump events;
    FakeBeeper beeper;
    FakeEnvironment environment;
    FakeProcessControl process;
    FakeFiles files;
    FakeDesktop desktop;
    Platform platform{messages, dialog, clock, events, beeper, environment, process, files, desktop};
    TestPlatform() {
        events.onWait = [this](int ms) { clock.Advance(ms / 1000.0); };
    }
};

}  // namespace zor::testing
