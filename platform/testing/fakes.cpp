#include "platform/testing/fakes.h"

#include "platform/runtime_error.h"

#include <QCoreApplication>

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

void FakeFiles::MaybeFail(const QString& operation) {
    auto it = failures_.find(operation);
    if (it == failures_.end() || it->second.empty()) return;
    const int number = it->second.front();
    it->second.pop_front();
    throw RuntimeError(number, QStringLiteral("Injected failure"));
}

void FakeFiles::FileCopy(const QString& source, const QString& target) {
    log << QStringLiteral("FileCopy %1 -> %2").arg(source, target);
    MaybeFail(QStringLiteral("FileCopy"));
    FileSystem::FileCopy(source, target);
}

void FakeFiles::Kill(const QString& path) {
    log << QStringLiteral("Kill %1").arg(path);
    MaybeFail(QStringLiteral("Kill"));
    FileSystem::Kill(path);
}

void FakeFiles::Name(const QString& from, const QString& to) {
    log << QStringLiteral("Name %1 -> %2").arg(from, to);
    MaybeFail(QStringLiteral("Name"));
    FileSystem::Name(from, to);
}

void FakeFiles::MkDir(const QString& path) {
    log << QStringLiteral("MkDir %1").arg(path);
    MaybeFail(QStringLiteral("MkDir"));
    FileSystem::MkDir(path);
}

}  // namespace zor::testing
