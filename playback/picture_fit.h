#pragma once
// A picture fitted into a window: scaled with its proportions kept so that it
// fills the window in one direction and stands centred in the other, with
// smooth scaling (what StretchBlt did in its halftone mode).
#include <QColor>
#include <QImage>
#include <QRect>
#include <QSize>

namespace zor {

// Where the scaled picture goes inside a window of `window`; empty when
// either size is empty.
QRect FitPictureRect(QSize picture, QSize window);
// The picture at its own size, centred (cut at the edges when larger).
QRect TrueSizeRect(QSize picture, QSize window);

// The window's face: its background with the picture drawn in, fitted or at
// its own size.
QImage RenderPicture(const QImage& clip, QSize window, const QColor& background, bool trueSize);

// Pictures are decoded up to this many megabytes; a larger one (or a file
// that claims to be) is refused rather than allowed to take the memory.
inline constexpr int kMaxPictureMegabytes = 256;
// Loads a picture file; a null image when it is no picture the toolkit reads.
QImage LoadPicture(const QString& path);

}  // namespace zor
