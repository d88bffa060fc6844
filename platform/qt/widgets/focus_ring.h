// The focus ring.

#pragma once

#include <QColor>

class QPainter;
class QRect;
class QWidget;

namespace quillmar {

/// In device-independent pixels.
inline constexpr int focusRingWidth = 2;

/// Draws the ring inside of the widget's edges, `inset` pixels away from them.
void drawFocusRing(QPainter& painter, const QWidget& widget, const QColor& color, int inset,
                   double radius = 3);

/// Draws the ring inside of the rectangle's edges.
void drawFocusRing(QPainter& painter, const QRect& rectangle, const QColor& color);

}  // namespace quillmar
