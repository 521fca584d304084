#pragma once
// Test doubles of the outside services. Each records what the jukebox asked
// of it and answers from a script the test sets up.
#include "platform/file_system.h"
#include "platform/services.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
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
    std::deque<int> filterChoices;  // the filter the user picks, one per dialog; none keeps FilterIndex
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
    // Runs after each Advance: the fake players follow the clock.
    std::function<void()> onAdvance;
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
// makes the next FileCopy raise run-time error 61; FailOn("ReadBytes",
// path, 57) the next read of that one file. "Rename" fails the rename of
// every operation that renames: Name, and the last step of FileCopy and
// ReplaceFile. The reads and listings (DirList, Subdirectories, FileLen,
// ReadBytes) can fail but are not logged.
class FakeFiles : public FileSystem {
public:
    void FailNext(const QString& operation, int errorNumber) { failures_[operation].push_back(errorNumber); }
    void FailOn(const QString& operation, const QString& path, int errorNumber) {
        failures_[operation + u' ' + path].push_back(errorNumber);
    }
    QStringList log;  // "Kill path", "FileCopy a -> b", ...
    QStringList DirList(const QString& pattern, int attr = vbNormal) override;
    QStringList Subdirectories(const QString& dir) override;
    qint64 FileLen(const QString& path) override;
    QByteArray ReadBytes(const QString& path, qint64 offset, qint64 n) override;
    void FileCopy(const QString& source, const QString& target) override;
    void Kill(const QString& path) override;
    void Name(const QString& from, const QString& to) override;
    void MkDir(const QString& path) override;

protected:
    void Rename(const QString& from, const QString& to) override;

private:
    void MaybeFail(const QString& operation, const QString& path = {});
    std::map<QString, std::deque<int>> failures_;
};

// The media player, played by the fake clock: the position is the seconds
// the clock has run since Open, less the paused time, up to the Duration
// scripted for the path. When the clock reaches the Duration the song ends
// (state 0, PlayStateChange). A song without a scripted length has Duration
// 0 and never ends by itself. A path scripted with an error leaves
// PlayerErrorFlag set and does not play. The file is held open in the
// registry while loaded, as the real player holds it.
class FakeMediaPlayerFactory;

class FakeMediaPlayer : public MediaPlayer {
public:
    FakeMediaPlayer(FakeMediaPlayerFactory& factory, Clock& clock, FileSystem& files);
    ~FakeMediaPlayer() override;
    QStringList calls;  // "Open path", "Stop", "Pause", "Play", "Position 12.5"
    void Open(const QString& path) override;
    void Stop() override;
    void Pause() override;
    void Play() override;
    int PlayState() const override;
    double CurrentPosition() const override;
    void SetCurrentPosition(double seconds) override;
    double Duration() const override { return duration_; }
    int PlayerErrorFlag() const override { return error_; }
    QString FileName() const override { return fileName_; }
    void SetVolume(int hundredthsDb) override { volume_ = std::clamp(hundredthsDb, -10000, 0); }
    int Volume() const override { return volume_; }
    void SetBalance(int balance) override { balance_ = std::clamp(balance, -10000, 10000); }
    int Balance() const override { return balance_; }
    // Ends the song if the clock has reached its Duration.
    void CheckEnd();

private:
    double Played() const;  // seconds of play so far, uncapped
    void Change(int newState);
    FakeMediaPlayerFactory& factory_;
    Clock& clock_;
    FileSystem& files_;
    FileHold hold_;
    QString fileName_;
    double duration_ = 0;
    int error_ = 0;
    int state_ = mpStopped;
    double playedBefore_ = 0;  // seconds played before the last start
    double startedAt_ = 0;     // the clock's Timer at the last start
    int volume_ = 0, balance_ = 0;
};

class FakeMediaPlayerFactory : public MediaPlayerFactory {
public:
    FakeMediaPlayerFactory(Clock& clock, FileSystem& files) : clock_(clock), files_(files) {}
    std::map<QString, double> durations;  // seconds by path
    std::map<QString, int> errors;        // PlayerErrorFlag by path
    std::vector<FakeMediaPlayer*> made;   // the players alive, oldest first
    std::unique_ptr<MediaPlayer> MakePlayer() override;
    FakeMediaPlayer& Last() { return *made.back(); }
    void CheckEnds();

private:
    friend class FakeMediaPlayer;
    Clock& clock_;
    FileSystem& files_;
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
    FakeMediaPlayerFactory players{clock, files};
    Platform platform{messages, dialog, clock, events, beeper, environment, process, files, desktop, players};
    TestPlatform() {
        events.onWait = [this](int ms) { clock.Advance(ms / 1000.0); };
        clock.onAdvance = [this] { players.CheckEnds(); };
    }
};

}  // namespace zor::testing
