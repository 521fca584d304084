#include "shell/ui/button_pictures.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>

namespace zor {
namespace {

// Each pictogram is drawn on a 40 x 28 grid, the size the buttons show them at, and
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

}  // namespace

QIcon ButtonPictureIcon(ButtonPicture picture) {
    return QIcon(new PictureEngine(picture));
}

}  // namespace zor
