#include "shell/ui/app.h"

#include "platform/guard.h"
#include "playback/play_log.h"
#include "shell/ui/font_check.h"
#include "shell/ui/form1.h"
#include "shell/ui/startup.h"

#include <cstdio>
#include <utility>

namespace zor {

App::App(Platform& platform) : j(platform) {
    j.ReloadMainWindow = [this] { Reload(); };
}

App::~App() { j.ReloadMainWindow = nullptr; }

bool App::Start() {
    form_ = std::make_unique<Form1>(j);
    // Load runs as any event does: a run-time error in it shows its box and
    // ends the load there, and the window comes up with what was done.
    bool loaded = true;
    Guarded(j.platform.messages, [&] { loaded = Form1Load(*form_); }, j.HidePictureForms);
    if (!loaded) return false;
    if (!started_) {
        started_ = true;
        LogProgramStart(j);
        ReportFontStandIns();
    }
    form_->show();
    return true;
}

void App::ReportFontStandIns() {
    // Once a process, on stderr: the message line belongs to the operations and
    // start-up writes over it at once, and a box at every start would nag a
    // user who can't install fonts. Whoever starts the program from a
    // terminal, or reads the desktop's log, sees why headings are cut.
    static bool told = false;
    if (std::exchange(told, true)) return;
    const Settings& s = j.settings;
    for (const QString& note : FontMetricNotes({QStringLiteral("Arial"), s.GridFontName, s.LyricsFontName}))
        std::fprintf(stderr, "%s\n", qPrintable(note));
}

void App::Reload() {
    // The old window may be the one whose handler asked for this; it goes
    // once control has left all of its handlers.
    j.shell.MainWindowReloading = true;
    if (form_) {
        form_->Unload();
        form_.release()->Retire();
    }
    j.shell.MainWindowReloading = false;
    Start();
}

}  // namespace zor
