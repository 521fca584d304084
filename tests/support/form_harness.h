#pragma once
// Starts the real main window on a temporary installation with the test
// doubles, and finds its controls by name.
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <memory>

namespace zor::testing {

struct FormHarness {
    TestInstallation inst;
    std::unique_ptr<App> app;

    // A window left behind by a reload is deleted later; it must go while
    // the installation and the doubles it uses are still there.
    ~FormHarness();

    // Runs Form1's Load; returns its outcome. A second Start is a restart:
    // the old program and any window its reloads left go first.
    bool Start();
    void Stop();
    Form1& form() { return *app->MainWindow(); }
    Jukebox& j() { return app->j; }
    FakeMessageBoxes& boxes() { return inst.tp.messages; }
    // Lets Timer1 fire `n` times.
    void Tick(int n);
    // Triggers a menu entry or clicks a button by its name.
    void Click(const char* name);
};

}  // namespace zor::testing
