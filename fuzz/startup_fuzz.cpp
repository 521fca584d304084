// ZORjuke.ini as any bytes, and the program started on it: the real App and
// Form1's Load, offscreen, on a test installation with the doubles the form
// tests use and a catalogue of a few songs, so that the start opens, sorts
// and lays out the grids by whatever the record says. A damaged record must
// start the program without a run-time error: each value it can't use is
// taken as the nearest one it can.
#include "fuzz/fuzz_support.h"
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QApplication>
#include <QFile>

#include <cstdint>
#include <cstdio>

namespace {

using namespace zor;
using namespace zor::fuzzing;

// Qt's warnings about what a record asks of it (a font it lacks, a size it
// rounds) are no faults and would drown the fuzzer's own output.
void Quiet(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "fuzz: Qt fatal: %s\n", qPrintable(message));
        std::abort();
    }
}

testing::TestInstallation& Installation() {
    static testing::TestInstallation inst;
    static const bool filled = [] {
        testing::TestInstallation::AddSongs(inst.File(QStringLiteral("Mp3data1.mdb")),
                                            {{QStringLiteral("Beta"), QStringLiteral("Band"), QStringLiteral("Album"),
                                              QStringLiteral("1999"), QStringLiteral("Pop"), QStringLiteral("/m/b.mp3")},
                                             {QStringLiteral("Alpha"), QStringLiteral("Artist"), QString(), QStringLiteral("2001")},
                                             {QStringLiteral("Gamma")}});
        return true;
    }();
    (void)filled;
    return inst;
}

}  // namespace

// fontconfig keeps some of each match it makes for Qt's font look-ups and
// never frees them: its leaks, not ours, and no caller frees them either.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(Quiet);
    // One application for the whole run, as the program has; it is never
    // deleted, and stays reachable through Qt's own instance pointer.
    static int qtArgc = 1;
    static char* qtArgv[] = {(*argv)[0], nullptr};
    new QApplication(qtArgc, qtArgv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testing::TestInstallation& inst = Installation();
    WriteAll(inst.File(QStringLiteral("ZORjuke.ini")), Input(data, size));
    QFile::remove(inst.File(QStringLiteral("ZORjuke.log")));
    inst.tp.messages.shown.clear();
    {
        App app(inst.tp.platform);
        Require(app.Start(), "start-up ended the process");
        for (const auto& box : inst.tp.messages.shown) std::fprintf(stderr, "fuzz: box: %s\n", qPrintable(box.text));
        Require(inst.tp.messages.shown.empty(), "start-up showed a box");
        Require(app.MainWindow()->isVisible(), "no main window after start-up");
    }
    // A reload's old window goes later; nothing of this run may outlive it.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
