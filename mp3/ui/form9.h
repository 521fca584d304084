#pragma once
// Form9, "ZOR JUKEBOX - MP3 FILE EDITOR": shortens the beginning or the end
// of the song of MFGrid1's current row by up to 2 seconds. TRY plays a trial
// of the cut (ZOR1.mp3) with the window's own player; only SAVE changes the
// song. The byte work is in mp3/trim.h.
#include "mp3/trim.h"

#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;

namespace zor {

class Form1;
class MediaPlayer;

class Form9 : public QWidget {
    Q_OBJECT
public:
    // A window of the main window, kept when hidden.
    explicit Form9(Form1& f);
    ~Form9() override;
    Form1& f;
    QScrollBar* HScroll1;
    QLineEdit* Text1;
    QLabel* Label1;
    QLabel* Label4;
    QRadioButton* Option1;
    QRadioButton* Option2;
    QLineEdit* Text2;
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command3;
    // The trial's player, made by the platform's factory.
    std::unique_ptr<MediaPlayer> MediaPlayer1;

    // Load: the captions, the slider at 0, the song of the grid's current
    // row, the dummy ZOR3.mp3 and a first trial.
    void Load();
    // The trial ZOR1.mp3 made anew from the song, after the player has let
    // go of the old one. Quiet on every failure.
    void PrepareTrial();
    // TRY: a new trial, played.
    void Try();
    // SAVE: the player lets go of song and trial, then the song is trimmed.
    // Quiet on every failure, which leaves the song as it was.
    void Save();

    // The song the window works on, chosen when it opened.
    const QString& Song() const { return song_; }
    qint64 Cut() const;
    TrimEnd End() const;

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    void SetCaptions();
    void ShowText2();
    void SliderChanged(int value);
    void TextChanged(const QString& text);
    void OptionClicked();
    // The song is one of the window's own scratch files: nothing is done
    // to it, as the trial and the save would delete it first.
    bool SongIsScratch() const;
    QString Scratch(const char* name) const;
    template <typename F>
    void On(F&& operation);
    QString song_;
};

// Short1, "Shorten beginning or end of mp3 file": opens the window on the
// grid's current row, or brings it forward with that row when it is open.
void ShowTrimWindow(Form1& f);

}  // namespace zor
