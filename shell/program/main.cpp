// ZORjuke: the jukebox program.
#include "platform/file_system.h"
#include "platform/gst_player.h"
#include "platform/qt/qt_services.h"
#include "platform/system_services.h"
#include "shell/ui/app.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication qt(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ZOR JUKEBOX"));
    // The main window closes and opens again for a new skin or language;
    // the process ends only through its own ways out.
    QApplication::setQuitOnLastWindowClosed(false);

    zor::QtMessageBoxes messages;
    zor::QtCommonDialog dialog;
    zor::SystemClock clock;
    zor::QtEventPump events;
    zor::QtBeeper beeper;
    zor::SystemEnvironment environment;
    zor::QtProcessControl process;
    zor::FileSystem files;
    zor::QtDesktop desktop;
    zor::GstPlayerFactory players(files);
    zor::Platform platform{messages, dialog, clock, events, beeper, environment, process, files, desktop, players};

    zor::App app(platform);
    if (!app.Start() || process.Ended()) return 0;
    return QApplication::exec();
}
