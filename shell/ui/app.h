#pragma once
// Holds the Jukebox state and the current main window for the life of the
// process. The window is unloaded and made anew for a skin or language
// change; the state stays.
#include "shell/jukebox.h"

#include <memory>

namespace zor {

class Form1;

class App {
public:
    explicit App(Platform& platform);
    ~App();
    Jukebox j;
    // Loads and shows the main window; false when start-up ended the process.
    bool Start();
    Form1* MainWindow() const { return form_.get(); }

private:
    void Reload();
    // Says on stderr, once a process, which of the settings' fonts only have
    // a stand-in with other metrics.
    void ReportFontStandIns();
    std::unique_ptr<Form1> form_;
    bool started_ = false;
};

}  // namespace zor
