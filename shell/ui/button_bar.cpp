#include "shell/ui/button_bar.h"

#include "shell/ui/form1.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zor {
namespace {

// ---- The pictograms --------------------------------------------------------
//
// Each is drawn on a 40 x 28 grid, the size the buttons show them at, and
// scaled to the size asked for. Coloured fills inside a dark outline read on
// the light buttons and on the coloured transport buttons alike.

constexpr QSizeF kPictureGrid(40, 28);

const QColor kInk(28, 28, 28);

QPen Outline() {
    return QPen(kInk, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void Fill(QPainter& p, const QPainterPath& path, const QColor& colour) {
    p.setPen(Outline());
    p.setBrush(colour);
    p.drawPath(path);
}

QPainterPath Polygon(std::initializer_list<QPointF> points) {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    path.closeSubpath();
    return path;
}

QPainterPath Rect(qreal x, qreal y, qreal w, qreal h) {
    QPainterPath path;
    path.addRect(x, y, w, h);
    return path;
}

void DrawOpenFolder(QPainter& p) {
    Fill(p, Polygon({{6, 6.5}, {14, 6.5}, {16.5, 9}, {30, 9}, {30, 23}, {6, 23}}), QColor(214, 150, 30));
    // The front flap leans forward: the folder is open.
    Fill(p, Polygon({{11, 13}, {35.5, 13}, {30, 23}, {6, 23}}), QColor(255, 208, 72));
}

void DrawFloppy(QPainter& p) {
    Fill(p, Polygon({{10.5, 2.5}, {26.5, 2.5}, {30, 6}, {30, 25.5}, {10.5, 25.5}}), QColor(44, 92, 190));
    Fill(p, Rect(15, 2.5, 10.5, 8), QColor(205, 210, 220));
    p.setPen(Qt::NoPen);
    p.setBrush(kInk);
    p.drawRect(QRectF(21, 4.3, 2.6, 4.6));
    Fill(p, Rect(14, 15, 12.5, 10.5), Qt::white);
    p.setPen(QPen(QColor(150, 150, 150), 1.0));
    p.drawLine(QPointF(16, 18.5), QPointF(24.5, 18.5));
    p.drawLine(QPointF(16, 21.5), QPointF(24.5, 21.5));
}

void DrawPlus(QPainter& p) {
    Fill(p, Rect(16.5, 4, 7, 20).united(Rect(10, 10.5, 20, 7)), QColor(46, 178, 66));
}

void DrawMagnifier(QPainter& p) {
    // The handle first, so that the rim covers its end.
    p.setPen(QPen(kInk, 7, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(23, 17.5), QPointF(30.5, 25));
    p.setPen(QPen(QColor(150, 90, 40), 4, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(23, 17.5), QPointF(30.5, 25));
    p.setPen(QPen(kInk, 2.8));
    p.setBrush(QColor(200, 236, 255));
    p.drawEllipse(QPointF(17.5, 12), 8, 8);
    // A glint on the glass.
    p.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(QRectF(12.5, 7, 10, 10), 100 * 16, 70 * 16);
}

void DrawPencil(QPainter& p) {
    p.save();
    p.translate(20, 14);
    p.rotate(-38);
    Fill(p, Rect(-15.5, -4, 4.5, 8), QColor(240, 128, 150));
    Fill(p, Rect(-11, -4, 3, 8), QColor(190, 192, 202));
    Fill(p, Rect(-8, -4, 15, 8), QColor(250, 196, 36));
    Fill(p, Polygon({{7, -4}, {15, 0}, {7, 4}}), QColor(238, 204, 152));
    p.setPen(Qt::NoPen);
    p.setBrush(kInk);
    p.drawPolygon(QPolygonF({QPointF(12, -1.6), QPointF(15.4, 0), QPointF(12, 1.6)}));
    p.restore();
}

void DrawGear(QPainter& p) {
    const QPointF centre(20, 14);
    constexpr int kTeeth = 8;
    constexpr qreal kOuter = 12.2, kRoot = 9, kHole = 3.6;
    auto at = [&](qreal radius, qreal degrees) {
        const qreal a = degrees * M_PI / 180;
        return centre + QPointF(radius * std::cos(a), radius * std::sin(a));
    };
    QPolygonF rim;
    for (int i = 0; i < kTeeth; ++i) {
        const qreal a = i * 360.0 / kTeeth;
        rim << at(kRoot, a - 15) << at(kOuter, a - 8) << at(kOuter, a + 8) << at(kRoot, a + 15);
    }
    QPainterPath gear;
    gear.addPolygon(rim);
    gear.closeSubpath();
    gear.addEllipse(centre, kHole, kHole);
    gear.setFillRule(Qt::OddEvenFill);
    Fill(p, gear, QColor(140, 150, 166));
}

void DrawPlaylist(QPainter& p) {
    for (const qreal y : {7.5, 14.0, 20.5}) {
        p.setPen(Qt::NoPen);
        p.setBrush(kInk);
        p.drawEllipse(QPointF(7.5, y), 2, 2);
        p.setPen(QPen(kInk, 2.8, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(12, y), QPointF(22, y));
    }
    Fill(p, Polygon({{25, 6.5}, {25, 21.5}, {35.5, 14}}), QColor(46, 178, 66));
}

void DrawPerson(QPainter& p) {
    QPainterPath body;
    body.moveTo(9.5, 26);
    body.cubicTo(9.5, 13.5, 30.5, 13.5, 30.5, 26);
    body.closeSubpath();
    Fill(p, body, QColor(58, 108, 200));
    QPainterPath head;
    head.addEllipse(QPointF(20, 8), 5.5, 5.5);
    Fill(p, head, QColor(246, 200, 160));
}

void DrawExit(QPainter& p) {
    // The doorway, dark behind the door that stands open.
    Fill(p, Rect(7, 3, 14, 22), QColor(70, 70, 76));
    Fill(p, Polygon({{7, 3}, {14.5, 5.5}, {14.5, 27}, {7, 25}}), QColor(168, 104, 52));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 220, 80));
    p.drawEllipse(QPointF(12.8, 15.5), 1.1, 1.1);
    Fill(p, Rect(17, 11.5, 11, 5).united(Polygon({{26.5, 6.5}, {36, 14}, {26.5, 21.5}})), QColor(224, 52, 40));
}

void DrawPicture(ButtonPicture picture, QPainter& p) {
    switch (picture) {
        case ButtonPicture::Open: return DrawOpenFolder(p);
        case ButtonPicture::Save: return DrawFloppy(p);
        case ButtonPicture::Add: return DrawPlus(p);
        case ButtonPicture::Find: return DrawMagnifier(p);
        case ButtonPicture::Edit: return DrawPencil(p);
        case ButtonPicture::Settings: return DrawGear(p);
        case ButtonPicture::Playlist: return DrawPlaylist(p);
        case ButtonPicture::Artist: return DrawPerson(p);
        case ButtonPicture::Exit: return DrawExit(p);
    }
}

// A disabled button's picture: grey and paler, but with its outline still
// there, so the button keeps its meaning on either skin.
void Fade(QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = QColor::fromRgba(qUnpremultiply(line[x]));
            const int grey = 72 + qGray(c.rgb()) * 5 / 8;
            line[x] = qPremultiply(qRgba(grey, grey, grey, c.alpha() * 17 / 20));
        }
    }
}

// Draws the pictogram anew for each size, so it stays sharp on screens that
// scale.
class PictureEngine : public QIconEngine {
public:
    explicit PictureEngine(ButtonPicture picture) : picture_(picture) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        QPixmap image = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
        image.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, image);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter p(&image);
            p.setRenderHint(QPainter::Antialiasing);
            const qreal scale = std::min(size.width() / kPictureGrid.width(), size.height() / kPictureGrid.height());
            p.translate((size.width() - kPictureGrid.width() * scale) / 2, (size.height() - kPictureGrid.height() * scale) / 2);
            p.scale(scale, scale);
            DrawPicture(picture_, p);
        }
        if (mode == QIcon::Disabled) Fade(image);
        return QPixmap::fromImage(std::move(image));
    }

    QIconEngine* clone() const override { return new PictureEngine(picture_); }

private:
    ButtonPicture picture_;
};

// ---- The bar ----------------------------------------------------------------

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

QIcon ButtonPictureIcon(ButtonPicture picture) {
    return QIcon(new PictureEngine(picture));
}

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
