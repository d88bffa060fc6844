// What is to be seen of views on the screen, in its pixels.

#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include "platform/widgets/view.h"

namespace quillmar {

/// The view as it looks in its window.
QImage pictureOf(const View& view);

/// Of pixels that differ from the picture's first one, the colour that differs most; that one's own
/// where all are alike.
QColor inkColor(const QImage& picture);

/// What holds all pixels that differ from the picture's first one.
QRect inkFrame(const QImage& picture);

/// How much of the picture is drawn on, from 0 to 1: faint pixels count less.
double inkShare(const QImage& picture);

/// From 1 for the same colours to 21 for black and white, as guidelines for readable texts have it.
double contrast(const QColor& one, const QColor& other);

}  // namespace quillmar
