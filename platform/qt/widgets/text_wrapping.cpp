#include "platform/qt/widgets/text_wrapping.h"

#include <algorithm>

namespace quillmar {

namespace {

constexpr qsizetype longWord = 2000;

qsizetype longestWord(const QString& text) {
  qsizetype longest = 0;
  qsizetype length = 0;
  for (const QChar character : text) {
    length = character.isSpace() ? 0 : length + 1;
    longest = std::max(longest, length);
  }
  return longest;
}

}  // namespace

QTextOption::WrapMode wrapModeFor(const QString& text) {
  return longestWord(text) > longWord ? QTextOption::WrapAnywhere
                                      : QTextOption::WrapAtWordBoundaryOrAnywhere;
}

}  // namespace quillmar
