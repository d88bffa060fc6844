// Makes invisible characters of a text visible.

#pragma once

#include <QString>

namespace quillmar {

/// Replaces each character that a reader would not see by its number, such as "‹U+202E›":
/// characters that change the direction of writing, that have no meaning by themselves or no shape,
/// and controls and line separators other than the line feed and the tab. Otherwise a command could
/// look like another one. Joiners stay where emoji and scripts other than Latin need them.
QString withVisibleCharacters(const QString& text);

}  // namespace quillmar
