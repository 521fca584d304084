#include "playback/picture_fit.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include <cmath>

namespace zor {

QRect FitPictureRect(QSize picture, QSize window) {
    if (picture.isEmpty() || window.isEmpty()) return {};
    // Compare the proportions: a picture wider than the window fills its
    // width, a taller one its height.
    const double pw = picture.width(), ph = picture.height();
    const double ww = window.width(), wh = window.height();
    int w = window.width(), h = window.height();
    if (pw * wh > ww * ph) h = std::max(1, int(std::lround(ph * ww / pw)));
    else w = std::max(1, int(std::lround(pw * wh / ph)));
    return {(window.width() - w) / 2, (window.height() - h) / 2, w, h};
}

QRect TrueSizeRect(QSize picture, QSize window) {
    if (picture.isEmpty() || window.isEmpty()) return {};
    return {(window.width() - picture.width()) / 2, (window.height() - picture.height()) / 2, picture.width(),
            picture.height()};
}

QImage RenderPicture(const QImage& clip, QSize window, const QColor& background, bool trueSize) {
    if (window.isEmpty()) return {};
    QImage face(window, QImage::Format_RGB32);
    face.fill(background);
    const QRect target = trueSize ? TrueSizeRect(clip.size(), window) : FitPictureRect(clip.size(), window);
    if (!target.isEmpty()) {
        QPainter p(&face);
        // scaled() averages the pixels a shrink drops; a painter's smooth
        // transform only interpolates between neighbours and shimmers.
        p.drawImage(target.topLeft(), trueSize ? clip : clip.scaled(target.size(), Qt::IgnoreAspectRatio,
                                                                     Qt::SmoothTransformation));
    }
    return face;
}

QImage LoadPicture(const QString& path) {
    if (!QFileInfo(path).isFile()) return {};
    QImageReader reader(path);
    reader.setAllocationLimit(kMaxPictureMegabytes);
    QImage image;
    if (!reader.read(&image)) return {};
    return image;
}

}  // namespace zor
