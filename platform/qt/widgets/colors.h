// Mixed colours, and colours with enough contrast to their background.

#pragma once

#include <QColor>

namespace quillmar {

/// Blends two colours; `share` is the fraction of `other`, 0 to 1.
QColor mixed(const QColor& color, const QColor& other, float share);

/// The fraction of the text colour in secondary labels. The rest is the background's.
inline constexpr float secondaryLabelShare = 0.68F;

/// The colour, mixed with as little of `text` as gives it a contrast of 4.5 to the background (Web
/// Content Accessibility Guidelines 2.1, section 1.4.3).
QColor readableColor(const QColor& color, const QColor& background, const QColor& text);

}  // namespace quillmar
