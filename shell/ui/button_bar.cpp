#include "shell/ui/button_bar.h"

#include "shell/ui/form1.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zor {
namespace {

// Room inside the frame: above the buttons, between them and the legend,
// below the legend, left of the legend, and after the last button or word.
constexpr int kTop = 6;
constexpr int kLegendGap = 1;
constexpr int kBottom = 4;
constexpr int kSide = 3;
constexpr int kEnd = 6;
constexpr int kButtonHeight = 36;
constexpr int kButtonWidth = 48;
// The narrowest a button gets when two words stand close, and the least
// space kept between two buttons.
constexpr int kMinButtonWidth = 30;
constexpr int kButtonSpace = 6;
// The room a picture leaves for the button's own bevel.
constexpr int kPictureMargin = 8;

const QColor kPlaylistFace(0, 128, 128);
const QColor kCatalogueFace(0, 0, 192);

const char* const kPlaylistEnglish =
    "     OPEN             SAVE              BACK          REPEAT           NEXT           SETTINGS    DATABASE     "
    "RANDOM            EXIT       ";
const char* const kPlaylistDutch =
    "     OPEN           BEWAAR         VORIG         HERHAAL    VOLGEND    INSTELLINGEN  DATABASE     WILLEK.      "
    "      EINDE        ";
const char* const kCatalogueEnglish =
    "     OPEN             SAVE               ADD              FIND              EDIT             SETTINGS     "
    "PLAYLIST       ARTIST               EXIT      ";
const char* const kCatalogueDutch =
    "     OPEN           BEWAAR          ERBIJ            ZOEK           BEWERK     INSTELLINGEN  PLAYLIST     "
    "ARTIEST             EINDE        ";

struct BarButton {
    QPushButton* Form1::*button;
    ButtonPicture picture;
};

// Left to right, as the legend names them.
const BarButton kBarButtons[] = {
    {&Form1::Command3, ButtonPicture::Open},     {&Form1::Command4, ButtonPicture::Save},
    {&Form1::Command1, ButtonPicture::Add},      {&Form1::Command8, ButtonPicture::Find},
    {&Form1::Command9, ButtonPicture::Edit},     {&Form1::Command2, ButtonPicture::Settings},
    {&Form1::Command7, ButtonPicture::Playlist}, {&Form1::Command6, ButtonPicture::Artist},
    {&Form1::Command5, ButtonPicture::Exit},
};
constexpr int kButtons = static_cast<int>(std::size(kBarButtons));

// The buttons the playlist turns into its transport, with their faces there.
struct TransportButton {
    QPushButton* Form1::*button;
    const char* face;
    ButtonPicture picture;
};

const TransportButton kTransport[] = {
    {&Form1::Command1, "<<<", ButtonPicture::Add},
    {&Form1::Command8, " ||||||", ButtonPicture::Find},
    {&Form1::Command9, ">>>", ButtonPicture::Edit},
};

// The bar's lettering; in pixels, as the window's layout is, so that the bar
// keeps its width on any screen.
QFont BoldSans(int pixels) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(true);
    return font;
}

// The text on a button's face, where the playlist puts one.
QFont FaceFont() {
    return BoldSans(13);
}

void SetFace(QPushButton& button, const QString& text, const QIcon& icon, const QColor& colour) {
    button.setFont(FaceFont());
    button.setText(text);
    button.setIcon(icon);
    QPalette p = button.palette();
    p.setColor(QPalette::Button, colour);
    // Both face colours are dark.
    p.setColor(QPalette::ButtonText, Qt::white);
    button.setPalette(p);
}

// The legend's line: along the bottom of the frame, under the buttons.
QRectF LegendRect(const QGroupBox& box) {
    const QFontMetricsF fm(box.font(), &box);
    return QRectF(kSide, box.height() - kBottom - fm.height(), box.width() - 2 * kSide, fm.height());
}

// The frame's own text colour where it stands out from what is behind the
// bar, else white or black: the artistic skin turns the window black and
// leaves the text colour as it was.
QColor LegendColour(const QWidget& w) {
    const QColor back = w.palette().color(w.backgroundRole());
    const QColor text = w.palette().color(QPalette::WindowText);
    if (std::abs(text.lightness() - back.lightness()) >= 110) return text;
    return back.lightness() < 128 ? QColor(Qt::white) : QColor(Qt::black);
}

// A line that shows on the light window and on the black one.
QColor FrameColour(const QWidget& w) {
    const QColor back = w.palette().color(w.backgroundRole());
    return back.lightness() < 128 ? QColor(96, 96, 96) : back.darker(140);
}

// Paints Frame2 in place of its style: the frame, and the title as the
// legend under the buttons. A style puts a title on the top edge wherever it
// likes, and the buttons could not follow it.
class LegendPainter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        auto& box = static_cast<QGroupBox&>(*watched);
        QPainter p(&box);
        // The style's group box frame leaves room for a title on top, and
        // the title is not there.
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(FrameColour(box));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(box.rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
        p.setFont(box.font());
        p.setPen(LegendColour(box));
        const QRectF line = LegendRect(box);
        p.drawText(QPointF(line.left(), line.top() + QFontMetricsF(box.font(), &box).ascent()), box.title());
        return true;
    }
};

void PaintLegendUnderButtons(QGroupBox& box) {
    const QString name = QStringLiteral("Frame2Legend");
    if (box.findChild<QObject*>(name, Qt::FindDirectChildrenOnly)) return;
    auto* painter = new LegendPainter(&box);
    painter->setObjectName(name);
    box.installEventFilter(painter);
}

// The horizontal centre of each word of the legend, from its left edge.
std::vector<qreal> WordCentres(const QString& legend, const QFontMetricsF& fm) {
    std::vector<qreal> centres;
    for (qsizetype i = 0; i < legend.size();) {
        if (legend[i].isSpace()) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < legend.size() && !legend[end].isSpace()) ++end;
        centres.push_back(fm.horizontalAdvance(legend.left(i)) + fm.horizontalAdvance(legend.mid(i, end - i)) / 2);
        i = end;
    }
    return centres;
}

void ShowBar(Form1& f, const char* english, const char* dutch, bool playlist) {
    f.Frame2->setTitle(f.j.Lang(QString::fromLatin1(english), QString::fromLatin1(dutch)));
    for (const TransportButton& t : kTransport) {
        QPushButton& button = *(f.*t.button);
        if (playlist)
            SetFace(button, QString::fromLatin1(t.face), QIcon(), kPlaylistFace);
        else
            SetFace(button, QString(), ButtonPictureIcon(t.picture), kCatalogueFace);
    }
    LayOutButtonBar(f, f.Frame2->pos());
}

}  // namespace

QFont ButtonBarLegendFont() {
    // At this size the widest legend leaves the places right of the bar free
    // for the player's and the song's frames.
    return BoldSans(9);
}

void PaintButtonPictures(Form1& f) {
    for (const BarButton& b : kBarButtons) {
        QPushButton& button = *(f.*b.button);
        button.setIcon(ButtonPictureIcon(b.picture));
        // The font of a face text, should a face get one; set here so that
        // the legend's small font on the frame does not pass down to it.
        button.setFont(FaceFont());
    }
}

QSize LayOutButtonBar(Form1& f, QPoint topLeft) {
    QGroupBox& box = *f.Frame2;
    box.setFont(ButtonBarLegendFont());
    PaintLegendUnderButtons(box);
    const QFontMetricsF fm(box.font(), &box);
    const QString legend = box.title();
    std::vector<qreal> centres = WordCentres(legend, fm);
    // The blanks at the end of the legend show nothing: the frame ends after
    // the last word or button.
    qsizetype shown = legend.size();
    while (shown > 0 && legend[shown - 1].isSpace()) --shown;
    qreal legendEnd = fm.horizontalAdvance(legend.left(shown));
    if (static_cast<int>(centres.size()) != kButtons) {
        // Not a legend of nine words: the buttons stand evenly over it.
        legendEnd = std::max<qreal>(legendEnd, kButtons * (kButtonWidth + kButtonSpace));
        centres.clear();
        for (int i = 0; i < kButtons; ++i) centres.push_back((i + 0.5) * legendEnd / kButtons);
    }
    qreal closest = kButtonWidth + kButtonSpace;
    for (int i = 1; i < kButtons; ++i) closest = std::min(closest, centres[i] - centres[i - 1]);
    const int buttonWidth = std::clamp(static_cast<int>(closest) - kButtonSpace, kMinButtonWidth, kButtonWidth);
    std::array<int, kButtons> lefts;
    for (int i = 0; i < kButtons; ++i) lefts[i] = qRound(kSide + centres[i] - buttonWidth / 2.0);
    const int right = std::max(static_cast<int>(std::ceil(kSide + legendEnd)), lefts.back() + buttonWidth);
    const QSize size(right + kEnd, kTop + kButtonHeight + kLegendGap + static_cast<int>(std::ceil(fm.height())) + kBottom);
    box.setGeometry(QRect(topLeft, size));
    for (int i = 0; i < kButtons; ++i) {
        QPushButton& button = *(f.*kBarButtons[i].button);
        button.setGeometry(lefts[i], kTop, buttonWidth, kButtonHeight);
        button.setIconSize(QSize(buttonWidth - kPictureMargin, kButtonHeight - kPictureMargin));
    }
    box.update();
    return size;
}

void ShowPlaylistBar(Form1& f) {
    ShowBar(f, kPlaylistEnglish, kPlaylistDutch, true);
}

void ShowCatalogueBar(Form1& f) {
    ShowBar(f, kCatalogueEnglish, kCatalogueDutch, false);
}

}  // namespace zor
