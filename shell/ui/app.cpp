#include "shell/ui/app.h"

#include "platform/guard.h"
#include "playback/play_log.h"
#include "shell/ui/form1.h"
#include "shell/ui/startup.h"

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
    }
    form_->show();
    return true;
}

void App::Reload() {
    // The old window may be the one whose handler asked for this; it goes
    // once control has left it.
    j.MainWindowReloading = true;
    if (form_) {
        form_->Unload();
        form_.release()->deleteLater();
    }
    j.MainWindowReloading = false;
    Start();
}

}  // namespace zor
