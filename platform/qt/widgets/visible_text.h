// Texts of which nothing stays unseen.

#pragma once

#include <QString>

namespace quillmar {

/// The text with the number of each character, as "‹U+202E›", that a reader would not see: those
/// that turn the direction of writing, that mean nothing by themselves or are drawn as nothing, and
/// controls and line separators other than the line feed and the tab. A command could look like
/// another without it. Joiners stay where emoji and scripts other than Latin need them.
QString withVisibleCharacters(const QString& text);

}  // namespace quillmar
