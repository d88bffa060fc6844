// The box of a checkbox.

#pragma once

#include <QPainter>
#include <QStyleOptionButton>
#include <QWidget>

namespace quillmar {

/// Draws the box as the style of `widget` does. The toolkit's own style gives an empty box on a
/// dark background hardly any edge, so it gets one.
void drawCheckboxIndicator(QPainter& painter, const QStyleOptionButton& option,
                           const QWidget& widget);

}  // namespace quillmar
