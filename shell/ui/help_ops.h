#pragma once
// The Help menu's own entries: About, the user guide, the Inspector, the
// links and the e-mail address of the maker.
namespace zor {

class Form1;

void ShowAbout(Form1& f);      // About
void OpenUserGuide(Form1& f);  // User1
void RunInspector(Form1& f);   // Inspect1
void ShowLinks(Form1& f);      // Links0
void ShowEmail(Form1& f);      // Email1

}  // namespace zor
