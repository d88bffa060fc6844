// How long texts are wrapped.

#pragma once

#include <QString>
#include <QTextOption>

namespace quillmar {

/// Breaks lines between words, and words that are longer than a line anywhere. A text with an
/// extremely long word is broken anywhere: looking for the end of that word takes time that grows
/// with the square of its length.
QTextOption::WrapMode wrapModeFor(const QString& text);

}  // namespace quillmar
