#include "tests/support/form_harness.h"

#include "shell/ui/startup.h"

#include <QAction>
#include <QCoreApplication>
#include <QPushButton>

#include <stdexcept>

namespace zor::testing {

void FormHarness::Tick(int n) {
    for (int i = 0; i < n; ++i) Timer1Tick(form());
}

bool FormHarness::Start() {
    Stop();
    app = std::make_unique<App>(inst.tp.platform);
    return app->Start();
}

void FormHarness::Stop() {
    app.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

FormHarness::~FormHarness() { Stop(); }

void FormHarness::Click(const char* name) {
    const QString n = QString::fromLatin1(name);
    if (auto* a = form().findChild<QAction*>(n)) {
        a->trigger();
    } else if (auto* b = form().findChild<QPushButton*>(n)) {
        b->click();
    } else {
        throw std::runtime_error(std::string("no control ") + name);
    }
}

}  // namespace zor::testing
