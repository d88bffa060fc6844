// The box of a checkbox.

#pragma once

#include <QPainter>
#include <QStyleOptionButton>
#include <QWidget>

namespace quillmar {

/// Draws the box as the style of `widget` does. In the toolkit's own style, an empty box on a dark
/// background has hardly any edge, so this function adds one.
void drawCheckboxIndicator(QPainter& painter, const QStyleOptionButton& option,
                           const QWidget& widget);

}  // namespace quillmar
