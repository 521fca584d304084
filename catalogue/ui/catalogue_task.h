#pragma once
// The catalogue's long tasks (the import, deletions, opening, saving,
// clearing, compacting, the walks over the grid) let events through while
// they work. A click then must not start a second one: it would reopen the
// store under the first one's transaction, or walk a grid that is being
// filled. And a skin or language change must not take the window away: the
// task's grids and store live in it.
#include <functional>

namespace zor {

class Form1;
struct Jukebox;

// Holds back a reload of the main window asked for while long work runs in
// it; the reload comes when the outermost hold ends, once the work no longer
// touches its window. Holds nest.
class ReloadHold {
public:
    explicit ReloadHold(Jukebox& j);
    ~ReloadHold();
    // A reload was asked for meanwhile: work that can end early ends.
    bool Asked() const { return asked_; }
    ReloadHold(const ReloadHold&) = delete;
    ReloadHold& operator=(const ReloadHold&) = delete;

private:
    Jukebox& j_;
    std::function<void()> reload_;  // the real reload, while this hold stands in for it
    bool asked_ = false;
};

// Whether a catalogue task runs in a window; Form1 keeps one.
struct CatalogueTasks {
    bool running = false;
};

// One catalogue task, from its start to its end. A task that finds another
// one running is refused: the message line says so, and Started() is false.
class CatalogueTask {
public:
    explicit CatalogueTask(Form1& f);
    ~CatalogueTask();
    CatalogueTask(const CatalogueTask&) = delete;
    CatalogueTask& operator=(const CatalogueTask&) = delete;
    bool Started() const { return started_; }

private:
    Form1& f_;
    ReloadHold hold_;
    bool started_ = false;
};

// The message line's word on a task that was refused.
void ShowTaskRefused(Form1& f);
// For a step that starts no walk of its own but would upset one (opening
// the path selector for an import): true, with the word shown, while a
// task runs.
bool RefusedWhileBusy(Form1& f);

}  // namespace zor
