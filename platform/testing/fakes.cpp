#include "platform/testing/fakes.h"

#include "platform/runtime_error.h"

#include <QCoreApplication>

#include <algorithm>

namespace zor::testing {

int FakeMessageBoxes::MsgBox(const QString& prompt, int flags, const QString& title) {
    shown.push_back({title, prompt, flags});
    if (!answers.empty()) {
        const int a = answers.front();
        answers.pop_front();
        return a;
    }
    static const std::vector<std::vector<int>> kAnswers = {
        {vbOK}, {vbOK, vbCancel}, {vbAbort, vbRetry, vbIgnore}, {vbYes, vbNo, vbCancel}, {vbYes, vbNo}, {vbRetry, vbCancel}};
    const auto& set = kAnswers[std::min(flags & 7, 5)];
    return set[std::min<size_t>((flags >> 8) & 3, set.size() - 1)];
}

void FakeCommonDialog::Answer(const char* kind) {
    calls.push_back({QString::fromLatin1(kind), InitDir, Filter, DialogTitle});
    FileName.clear();
    if (!filterChoices.empty()) {
        FilterIndex = filterChoices.front();
        filterChoices.pop_front();
    }
    if (!names.empty()) {
        FileName = names.front();
        names.pop_front();
    }
}

void FakeCommonDialog::ShowOpen() { Answer("open"); }
void FakeCommonDialog::ShowSave() { Answer("save"); }

void FakeClock::Advance(double seconds) {
    now = now.addMSecs(qint64(seconds * 1000));
    now.setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
    timer += seconds;
    if (timer >= 86400) timer -= 86400;
    if (onAdvance) onAdvance();
}

void FakeEventPump::DoEvents() {
    ++calls;
    if (processRealEvents) QCoreApplication::processEvents();
    if (onDoEvents) onDoEvents(calls);
}

void FakeEventPump::Wait(int ms) {
    DoEvents();
    if (onWait) onWait(ms);
}

void FakeFiles::MaybeFail(const QString& operation, const QString& path) {
    if (failures_.empty()) return;  // the usual case, on every read of a scan
    for (const QString& key : {operation + u' ' + path, operation}) {
        auto it = failures_.find(key);
        if (it == failures_.end() || it->second.empty()) continue;
        const int number = it->second.front();
        it->second.pop_front();
        throw RuntimeError(number, QStringLiteral("Injected failure"));
    }
}

QStringList FakeFiles::DirList(const QString& pattern, int attr) {
    MaybeFail(QStringLiteral("DirList"), pattern);
    return FileSystem::DirList(pattern, attr);
}

QStringList FakeFiles::Subdirectories(const QString& dir) {
    MaybeFail(QStringLiteral("Subdirectories"), dir);
    return FileSystem::Subdirectories(dir);
}

qint64 FakeFiles::FileLen(const QString& path) {
    MaybeFail(QStringLiteral("FileLen"), path);
    return FileSystem::FileLen(path);
}

QByteArray FakeFiles::ReadBytes(const QString& path, qint64 offset, qint64 n) {
    MaybeFail(QStringLiteral("ReadBytes"), path);
    return FileSystem::ReadBytes(path, offset, n);
}

void FakeFiles::Rename(const QString& from, const QString& to) {
    MaybeFail(QStringLiteral("Rename"), to);
    FileSystem::Rename(from, to);
}

void FakeFiles::FileCopy(const QString& source, const QString& target) {
    log << QStringLiteral("FileCopy %1 -> %2").arg(source, target);
    MaybeFail(QStringLiteral("FileCopy"), target);
    FileSystem::FileCopy(source, target);
}

void FakeFiles::Kill(const QString& path) {
    log << QStringLiteral("Kill %1").arg(path);
    MaybeFail(QStringLiteral("Kill"), path);
    FileSystem::Kill(path);
}

void FakeFiles::Name(const QString& from, const QString& to) {
    log << QStringLiteral("Name %1 -> %2").arg(from, to);
    MaybeFail(QStringLiteral("Name"), from);
    FileSystem::Name(from, to);
}

void FakeFiles::MkDir(const QString& path) {
    log << QStringLiteral("MkDir %1").arg(path);
    MaybeFail(QStringLiteral("MkDir"), path);
    FileSystem::MkDir(path);
}

FakeMediaPlayer::FakeMediaPlayer(FakeMediaPlayerFactory& factory, Clock& clock, FileSystem& files)
    : factory_(factory), clock_(clock), files_(files) {}

FakeMediaPlayer::~FakeMediaPlayer() { std::erase(factory_.made, this); }

double FakeMediaPlayer::Played() const {
    if (state_ != mpPlaying) return playedBefore_;
    double run = clock_.Timer() - startedAt_;
    if (run < 0) run += 86400;  // Timer went past midnight
    return playedBefore_ + run;
}

void FakeMediaPlayer::Change(int newState) {
    if (newState == state_) return;
    const int old = state_;
    state_ = newState;
    // A copy: the handler may let this player go.
    if (const auto handler = PlayStateChange) handler(old, newState);
}

void FakeMediaPlayer::Open(const QString& path) {
    calls << QStringLiteral("Open %1").arg(path);
    hold_.Reset();
    fileName_ = path;
    state_ = mpStopped;  // a new file starts from stopped without an event, as the real one
    playedBefore_ = 0;
    const auto d = factory_.durations.find(path);
    const auto e = factory_.errors.find(path);
    error_ = e == factory_.errors.end() ? 0 : e->second;
    duration_ = error_ || d == factory_.durations.end() ? 0 : d->second;
    if (error_) return;
    if (files_.FileExists(path)) hold_ = FileHold(files_, path);
    startedAt_ = clock_.Timer();
    Change(mpPlaying);
}

void FakeMediaPlayer::Stop() {
    calls << QStringLiteral("Stop");
    playedBefore_ = 0;
    Change(mpStopped);
}

void FakeMediaPlayer::Pause() {
    calls << QStringLiteral("Pause");
    if (state_ != mpPlaying) return;
    playedBefore_ = Played();
    Change(mpPaused);
}

void FakeMediaPlayer::Play() {
    calls << QStringLiteral("Play");
    if (fileName_.isEmpty() || error_ || state_ == mpPlaying) return;
    if (duration_ > 0 && playedBefore_ >= duration_) playedBefore_ = 0;  // from the end: again
    startedAt_ = clock_.Timer();
    Change(mpPlaying);
}

int FakeMediaPlayer::PlayState() const { return state_; }

double FakeMediaPlayer::CurrentPosition() const {
    const double p = Played();
    return duration_ > 0 ? std::min(p, duration_) : p;
}

void FakeMediaPlayer::SetCurrentPosition(double seconds) {
    calls << QStringLiteral("Position %1").arg(seconds);
    playedBefore_ = std::max(0.0, seconds);
    startedAt_ = clock_.Timer();
}

void FakeMediaPlayer::CheckEnd() {
    if (state_ != mpPlaying || duration_ <= 0 || Played() < duration_) return;
    playedBefore_ = duration_;
    Change(mpStopped);
}

std::unique_ptr<MediaPlayer> FakeMediaPlayerFactory::MakePlayer() {
    auto p = std::make_unique<FakeMediaPlayer>(*this, clock_, files_);
    made.push_back(p.get());
    return p;
}

void FakeMediaPlayerFactory::CheckEnds() {
    // A stop event may destroy or make players: walk a copy, skip the gone.
    const std::vector<FakeMediaPlayer*> players = made;
    for (FakeMediaPlayer* p : players)
        if (std::find(made.begin(), made.end(), p) != made.end()) p->CheckEnd();
}

}  // namespace zor::testing
