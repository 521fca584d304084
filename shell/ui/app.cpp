#include "shell/ui/app.h"

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
    if (!Form1Load(*form_)) return false;
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
    j.shell.MainWindowReloading = true;
    if (form_) {
        form_->Unload();
        form_.release()->deleteLater();
    }
    j.shell.MainWindowReloading = false;
    Start();
}

}  // namespace zor
