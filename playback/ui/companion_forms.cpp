#include "playback/ui/companion_forms.h"

#include "catalogue/ui/song_grid_view.h"
#include "platform/guard.h"
#include "playback/picture_fit.h"
#include "playback/ui/lyrics_ops.h"
#include "shell/ui/form1.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace zor {
namespace {

QColor FromBgr(int bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

void SetColours(QWidget* w, const QColor& base, const QColor& text) {
    QPalette p = w->palette();
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::Text, text);
    w->setPalette(p);
}

// Runs a companion event's operation; a run-time error ends only it.
template <typename F>
void On(Form1& f, F&& operation) {
    Guarded(f.j.platform.messages, std::forward<F>(operation));
}

}  // namespace

CompanionWindow::CompanionWindow(Form1& form, const char* name, const char* title)
    : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint), f(form) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(QString::fromLatin1(title));
    // Topmost without activating: the main window keeps the keyboard.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAutoFillBackground(true);
    resize(480, 360);
}

void CompanionWindow::PlaceAndShow(const QRect& place) {
    setGeometry(place);
    show();
}

void CompanionWindow::ApplySkin(const Jukebox& j) {
    QPalette p = palette();
    if (j.settings.ArtisticScreen == 1) p.setColor(QPalette::Window, Qt::black);
    else if (j.shell.ScreenWidthPx >= 1024) p.setColor(QPalette::Window, QColor(200, 200, 200));
    else p = QPalette();
    setPalette(p);
}

QColor CompanionWindow::Background() const { return palette().color(QPalette::Window); }

LyricsForm::LyricsForm(Form1& form) : CompanionWindow(form, "Form3", "ZOR JUKEBOX LYRICS") {
    auto box = [this](const char* name) {
        auto* t = new QPlainTextEdit(this);
        t->setObjectName(QString::fromLatin1(name));
        t->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        t->installEventFilter(this);
        t->viewport()->installEventFilter(this);
        return t;
    };
    Text1 = box("Text1");
    Text2 = box("Text2");
    Text2->hide();
    // Only the box itself fits at the window's right edge; the caption
    // stands in the tip.
    Check1 = new QCheckBox(this);
    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->setGeometry(0, 2, TwipsToPx(700), 20);
    PlaceCheck1();
    Check1->raise();
    Command1 = new QPushButton(this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->hide();
    connect(Check1, &QCheckBox::clicked, this, [this] { On(f, [&] { LyricsTextSizeClick(f); }); });
    connect(Command1, &QPushButton::clicked, this, [this] { On(f, [&] { SaveLyrics(f); }); });
    SetEditingLook(false);
}

QPlainTextEdit* LyricsForm::Face() const { return f.j.settings.ArtisticScreen == 1 ? Text2 : Text1; }

void LyricsForm::SetLyrics(const QString& text) {
    Text2->clear();
    Text1->clear();
    Text1->setPlainText(text);
    Text2->setPlainText(text);
}

void LyricsForm::ApplySkin(const Jukebox& j) {
    CompanionWindow::ApplySkin(j);
    const bool artistic = j.settings.ArtisticScreen == 1;
    Text1->setVisible(!artistic);
    Text2->setVisible(artistic);
    Check1->setToolTip(j.Lang(QStringLiteral("Lyrics text size"), QStringLiteral("Lyrics tekstgrootte")));
    Command1->setText(j.Lang(QStringLiteral("SAVE"), QStringLiteral("BEWAAR")));
    textColour_ = j.companion.LyricsFont.name.isEmpty() ? QColor(255, 255, 0) : FromBgr(j.companion.LyricsFont.colour);
}

void LyricsForm::SetEditingLook(bool editing) {
    for (QPlainTextEdit* t : {Text1, Text2}) {
        // A light background takes dark text; the lyrics colours are made
        // for the dark one.
        if (editing) {
            SetColours(t, QColor(255, 200, 120), Qt::black);
        } else {
            // A dark lyrics colour chosen by the user stands on white instead.
            const QColor text = textColour_.isValid() ? textColour_ : QColor(255, 255, 0);
            const double luma = 0.299 * text.red() + 0.587 * text.green() + 0.114 * text.blue();
            SetColours(t, luma < 100 ? Qt::white : Qt::black, text);
        }
    }
}

void LyricsForm::ApplyFont(const Jukebox& j) {
    QFont font;
    if (Check1->isChecked()) {
        font.setFamily(QStringLiteral("MS Sans Serif"));
        font.setPointSizeF(Text1->font().pointSizeF());
    } else {
        const LyricsFontSpec& lf = j.companion.LyricsFont;
        font.setFamily(lf.name.isEmpty() ? QStringLiteral("Arial") : lf.name);
        font.setPointSizeF(lf.size > 0 ? lf.size : 10);
        font.setBold(lf.bold);
        font.setItalic(lf.italic);
        font.setUnderline(lf.underline);
        font.setStrikeOut(lf.strikeout);
    }
    Text1->setFont(font);
    Text2->setFont(font);
}

void LyricsForm::PlaceCheck1() { Check1->move(TwipsToPx(PxToTwips(width()) - 700), Check1->y()); }

void LyricsForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    const int w = PxToTwips(width()), h = PxToTwips(height());
    if (w < 1000 || h < 1000) return;
    const QRect box(0, 0, TwipsToPx(w - 250), TwipsToPx(h - 250));
    Text1->setGeometry(box);
    Text2->setGeometry(box);
    Command1->setGeometry(box.width() / 2 - 50, box.height() - 40, 100, 30);
    Command1->raise();
    Check1->raise();
}

bool LyricsForm::eventFilter(QObject* watched, QEvent* event) {
    // A key that types, or a press of the mouse, in the lyrics: the user
    // takes them over. Arrow and page keys only move through the text.
    const bool typed = event->type() == QEvent::KeyPress && !static_cast<QKeyEvent*>(event)->text().isEmpty();
    const bool pressed = event->type() == QEvent::MouseButtonPress;
    if (typed || pressed) {
        On(f, [&] { TakeOverCompanions(f); });
        // Outside an edit a stray key must not change the text on show.
        if (typed && f.j.companion.LyricsEditing == 0) return true;
    }
    return QWidget::eventFilter(watched, event);
}

PictureForm::PictureForm(Form1& form, const char* name, const char* title) : CompanionWindow(form, name, title) {
    Picture1 = new QLabel(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setAlignment(Qt::AlignCenter);
    Picture1->installEventFilter(this);
}

void PictureForm::Redraw() {
    Picture1->setGeometry(rect());
    Picture1->setPixmap(QPixmap::fromImage(RenderPicture(PicClip1, size(), Background(), TrueSize)));
}

void PictureForm::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    Redraw();
}

bool PictureForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Picture1 && event->type() == QEvent::MouseButtonPress) {
        emit PictureClicked();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

ArtistPictureForm::ArtistPictureForm(Form1& form) : PictureForm(form, "Form4", "ZOR JUKEBOX PICTURE") {
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->addItems({QStringLiteral("Maximize"), QStringLiteral("Normal"), QStringLiteral("True size"),
                     QStringLiteral("Hide")});
    List1->setGeometry(8, 8, 120, 4 * List1->sizeHintForRow(0) + 2 * List1->frameWidth());
    List1->hide();
    connect(this, &PictureForm::PictureClicked, this, [this] {
        List1->show();
        List1->raise();
    });
    connect(List1, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { On(f, [&] { PictureListClick(f, List1->row(item)); }); });
}

}  // namespace zor
