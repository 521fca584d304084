#pragma once
// Form10, "ZOR JUKEBOX - MP3 FILE INFORMATION": what the frame analyser finds
// in the song of MFGrid1's current row. Labels only, all set once, at load.
#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;

namespace zor {

class Form1;

class Form10 : public QWidget {
    Q_OBJECT
public:
    // A window of the main window; closing it unloads it, so each opening
    // loads it anew for the row of that moment.
    explicit Form10(Form1& f);
    Form1& f;
    // Label50 … Label13, the captions, in the window's order.
    std::array<QLabel*, 12> captions;
    // Label60 … Label72, their values.
    std::array<QLabel*, 12> values;
    QLabel* Label73;
    QLabel* Label74;
    QCheckBox* Check12;  // mono
    QCheckBox* Check13;  // stereo

    // Load: captions, the analysis of column 6 of the current row, the
    // values. A missing file is told by the analyser; the values are then
    // those its record still holds, and "???" after a failed analysis.
    void Load();
};

// Tag2, "Mp3 file information": opens the window on the grid's current
// row, or loads the open one again for it.
void ShowFileInformation(Form1& f);

}  // namespace zor
