#pragma once
// The main window's menu bar, built from one table that also gives the
// captions of both languages.
#include <span>

namespace zor {

class Form1;

struct MenuEntry {
    enum Kind { Menu, Entry, Separator } kind;
    const char* name;     // the object name: "File", "Open1", ...
    const char* english;
    const char* dutch;    // nullptr: the English caption in both languages
    void (*operation)(Form1&);  // nullptr: not in this build, shown disabled
};

std::span<const MenuEntry> MenuTable();
void BuildMenuBar(Form1& f);
void SetMenuCaptions(Form1& f, bool dutch);

}  // namespace zor
