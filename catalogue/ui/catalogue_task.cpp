#include "catalogue/ui/catalogue_task.h"

#include "platform/guard.h"
#include "shell/ui/form1.h"

namespace zor {

ReloadHold::ReloadHold(Jukebox& j) : j_(j) {
    if (!j_.ReloadMainWindow) return;
    reload_ = std::move(j_.ReloadMainWindow);
    j_.ReloadMainWindow = [this] { asked_ = true; };
}

ReloadHold::~ReloadHold() {
    if (!reload_) return;
    j_.ReloadMainWindow = std::move(reload_);
    if (!asked_) return;
    // The reload is the last thing the work does; its failure shows as the
    // skin change's own would.
    try {
        Guarded(j_.platform.messages, [this] { j_.ReloadMainWindow(); });
    } catch (...) {
    }
}

CatalogueTask::CatalogueTask(Form1& f) : f_(f), hold_(f.j) {
    if (RefusedWhileBusy(f_)) return;
    f_.catalogueTasks.running = true;
    started_ = true;
}

CatalogueTask::~CatalogueTask() {
    if (started_) f_.catalogueTasks.running = false;
}

void ShowTaskRefused(Form1& f) {
    f.ShowMessage(kYellow, f.j.Lang(QStringLiteral("Busy with another task; this one is not started - Please Wait ...."),
                                    QStringLiteral("Bezig met een andere taak; deze wordt niet gestart - Wacht s.v.p. ....")));
}

bool RefusedWhileBusy(Form1& f) {
    if (!f.catalogueTasks.running) return false;
    ShowTaskRefused(f);
    return true;
}

}  // namespace zor
