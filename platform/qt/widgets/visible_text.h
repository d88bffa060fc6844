// Makes invisible characters of a QString visible.

#pragma once

#include <QString>

namespace quillmar {

/// text::withVisibleCharacters() for a QString.
QString withVisibleCharacters(const QString& text);

}  // namespace quillmar
