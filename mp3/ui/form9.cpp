#include "mp3/ui/form9.h"

#include "mp3/header_repair.h"
#include "platform/binary_file.h"
#include "platform/guard.h"
#include "platform/vb.h"
#include "shell/ui/form1.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <algorithm>

namespace zor {
namespace {

template <typename T>
T* Named(T* w, const char* name) {
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

}  // namespace

template <typename F>
void Form9::On(F&& operation) {
    Guarded(f.j.platform.messages, std::forward<F>(operation), f.j.HidePictureForms);
}

Form9::Form9(Form1& form) : QWidget(&form, Qt::Window), f(form) {
    setObjectName(QStringLiteral("Form9"));
    setWindowTitle(QStringLiteral("ZOR JUKEBOX - MP3 FILE EDITOR"));
    MediaPlayer1 = f.j.platform.players.MakePlayer();

    HScroll1 = Named(new QScrollBar(Qt::Horizontal, this), "HScroll1");
    HScroll1->setRange(0, kTrimMaxMs);
    HScroll1->setSingleStep(1);
    HScroll1->setPageStep(kTrimLargeStepMs);
    HScroll1->setMinimumWidth(360);
    Text1 = Named(new QLineEdit(QStringLiteral("0000"), this), "Text1");
    Text1->setMaxLength(6);
    Text1->setFixedWidth(Text1->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    Label1 = Named(new QLabel(this), "Label1");
    Label4 = Named(new QLabel(this), "Label4");
    Option1 = Named(new QRadioButton(QStringLiteral("BEG."), this), "Option1");
    Option1->setToolTip(QStringLiteral("Shorten the beginning of the mp3 file"));
    Option2 = Named(new QRadioButton(QStringLiteral("END"), this), "Option2");
    Option2->setToolTip(QStringLiteral("Shorten the end of the mp3 file"));
    // The beginning is what a first trial plays.
    Option1->setChecked(true);
    Text2 = Named(new QLineEdit(this), "Text2");
    Text2->setReadOnly(true);
    Command1 = Named(new QPushButton(this), "Command1");
    Command1->setToolTip(
        QStringLiteral("Move slider below and press TRY to listen to the result; Press SAVE only when OK!"));
    Command2 = Named(new QPushButton(this), "Command2");
    Command2->setToolTip(QStringLiteral("Save the shortened mp3 file"));
    Command3 = Named(new QPushButton(this), "Command3");
    Command3->setToolTip(QStringLiteral("Close this window"));

    // What will happen on top, the buttons, and the slider below them, as
    // TRY's tip tells the user.
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(10, 10, 10, 10);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(10);
    grid->addWidget(Text2, 0, 0, 1, 4);
    auto* choice = new QHBoxLayout;
    choice->setSpacing(16);
    for (QWidget* c : {static_cast<QWidget*>(Label1), static_cast<QWidget*>(Option1), static_cast<QWidget*>(Option2)})
        choice->addWidget(c);
    choice->addStretch();
    grid->addLayout(choice, 1, 0, 1, 4);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {Command1, Command2, Command3}) {
        b->setMinimumWidth(90);
        buttons->addWidget(b);
    }
    grid->addLayout(buttons, 2, 0, 1, 4);
    grid->addWidget(Label4, 3, 0);
    grid->addWidget(Text1, 3, 1);
    grid->addWidget(HScroll1, 3, 2, 1, 2);
    grid->setColumnStretch(3, 1);

    connect(HScroll1, &QScrollBar::valueChanged, this, [this](int v) { On([&] { SliderChanged(v); }); });
    connect(Text1, &QLineEdit::textChanged, this, [this](const QString& t) { On([&] { TextChanged(t); }); });
    for (QRadioButton* o : {Option1, Option2})
        connect(o, &QRadioButton::clicked, this, [this] { On([this] { OptionClicked(); }); });
    connect(Command1, &QPushButton::clicked, this, [this] { On([this] { Try(); }); });
    connect(Command2, &QPushButton::clicked, this, [this] { On([this] { Save(); }); });
    connect(Command3, &QPushButton::clicked, this, [this] { hide(); });
}

Form9::~Form9() = default;

QString Form9::Scratch(const char* name) const { return f.j.ProgramFile(QString::fromLatin1(name)); }

qint64 Form9::Cut() const { return TrimCut(HScroll1->value()); }

TrimEnd Form9::End() const { return Option2->isChecked() ? TrimEnd::End : TrimEnd::Beginning; }

bool Form9::SongIsScratch() const {
    for (const char* name : {"ZOR1.mp3", "ZOR2.mp3", "ZOR3.mp3"})
        if (IsSameFile(song_, Scratch(name))) return true;
    return false;
}

void Form9::SetCaptions() {
    const Jukebox& j = f.j;
    Label1->setText(j.Lang("Shorten by at max. 2 seconds:", "Inkorten met maximaal 2 seconden:"));
    Label4->setText(QStringLiteral("msec.:"));
    Command1->setText(j.Lang("TRY", "PROBEER"));
    Command2->setText(j.Lang("SAVE", "BEWAAR"));
    Command3->setText(j.Lang("BACK", "TERUG"));
}

void Form9::ShowText2() {
    const Jukebox& j = f.j;
    const QString what = End() == TrimEnd::Beginning
                             ? j.Lang("Shortening of the BEGINNING of file: ", "Inkorten van het BEGIN van bestand: ")
                             : j.Lang("Shortening of the END of file: ", "Inkorten van het EINDE van bestand: ");
    Text2->setText(what + song_);
    Text2->setCursorPosition(0);
    // Wide enough for the whole path where the screen allows it: the user
    // must see which file is to be cut.
    const int room = Text2->fontMetrics().horizontalAdvance(Text2->text()) + 24;
    Text2->setMinimumWidth(std::min(room, 900));
    adjustSize();
}

void Form9::Load() {
    SetCaptions();
    {
        // Back to 0 before Text1 says so, so that the slider's change
        // doesn't write "0" over the "0000".
        const QSignalBlocker quiet(HScroll1);
        HScroll1->setValue(0);
    }
    Text1->setText(QStringLiteral("0000"));
    f.MFGrid1.SetCol(kPathColumn);
    song_ = f.j.SongFileOnDisk(f.MFGrid1.Text());
    ShowText2();
    // The dummy is made before the first trial, which has the player open
    // it to let go of the trial before that is deleted.
    BinaryFile dummy(f.j.platform.files, Scratch("ZOR3.mp3"));
    PrepareTrial();
}

void Form9::SliderChanged(int value) {
    const QString digits = QString::number(value);
    if (Text1->text() != digits) Text1->setText(digits);
}

void Form9::TextChanged(const QString& text) {
    const double v = vb::IsNumeric(text) ? vb::NumericValue(text) : -1;
    if (v < HScroll1->minimum() || v > HScroll1->maximum()) {
        f.j.platform.beeper.Beep();
        return;
    }
    HScroll1->setValue(vb::CInt(v));
}

void Form9::OptionClicked() {
    if (MediaPlayer1->PlayState() == mpPlaying) MediaPlayer1->Stop();
    ShowText2();
    PrepareTrial();
}

void Form9::PrepareTrial() {
    if (SongIsScratch()) return;
    if (MediaPlayer1->PlayState() == mpPlaying) MediaPlayer1->Stop();
    MediaPlayer1->Open(Scratch("ZOR3.mp3"));
    FileSystem& fs = f.j.platform.files;
    const QString trial = Scratch("ZOR1.mp3");
    try {
        if (fs.FileExists(trial)) fs.Kill(trial);
        MakeTrial(fs, song_, trial, Cut(), End());
    } catch (const RuntimeError&) {
        // The trial is what could be made of it; the song is only read.
    }
}

void Form9::Try() {
    if (SongIsScratch()) return;
    MediaPlayer1->Stop();
    PrepareTrial();
    MediaPlayer1->Open(Scratch("ZOR1.mp3"));
    MediaPlayer1->Play();
}

void Form9::Save() {
    if (SongIsScratch()) return;
    // Twice, as the player has always been asked, so that neither the song
    // nor the trial is held.
    MediaPlayer1->Stop();
    for (int i = 0; i < 2; ++i) {
        MediaPlayer1->Open(Scratch("ZOR3.mp3"));
        MediaPlayer1->Stop();
    }
    try {
        SaveTrim(f.j.platform.files, song_, Scratch("ZOR2.mp3"), Cut(), End());
    } catch (const RuntimeError&) {
        // Nothing is said; the song is as it was.
    }
}

void Form9::closeEvent(QCloseEvent* e) {
    // Closed by its frame the window hides, as BACK makes it, and the trial
    // stops with it.
    MediaPlayer1->Stop();
    QWidget::closeEvent(e);
}

void ShowTrimWindow(Form1& f) {
    auto* w = f.findChild<Form9*>(QStringLiteral("Form9"), Qt::FindDirectChildrenOnly);
    if (w && w->isVisible()) {
        w->raise();
        w->activateWindow();
    }
    if (!w) w = new Form9(f);
    w->show();
    w->Load();
}

}  // namespace zor
