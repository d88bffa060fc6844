#include "platform/qt/widgets/visible_text.h"

#include <QList>
#include <algorithm>
#include <array>

namespace quillmar {

namespace {

/// Letters that are drawn as nothing: Unicode has Hangul "fillers".
constexpr std::array<char32_t, 4> fillers = {U'\u115f', U'\u1160', U'\u3164', U'\uffa0'};

/// Of the general category "format", but drawn: the signs that Arabic, Syriac and Kaithi write
/// before or around a number (Unicode's property Prepended_Concatenation_Mark).
bool isNumberSign(char32_t character) {
  constexpr std::array<char32_t, 7> others = {U'\u06dd', U'\u070f', U'\u0890', U'\u0891',
                                              U'\u08e2', 0x110BD,   0x110CD};
  return (character >= U'\u0600' && character <= U'\u0605') ||
         std::find(others.begin(), others.end(), character) != others.end();
}

bool isUnseen(char32_t character, char32_t before) {
  constexpr char32_t nonJoiner = U'\u200c';
  constexpr char32_t joiner = U'\u200d';
  constexpr char32_t endOfAscii = 0x80;
  switch (QChar::category(character)) {
    case QChar::Other_Control:
      return character != U'\n' && character != U'\t';
    case QChar::Other_Format:
      if (character == joiner || character == nonJoiner) return before < endOfAscii;
      return !isNumberSign(character);
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return true;
    default:
      return std::find(fillers.begin(), fillers.end(), character) != fillers.end();
  }
}

}  // namespace

QString withVisibleCharacters(const QString& text) {
  QString visible;
  char32_t before = 0;
  for (const char32_t character : text.toUcs4()) {
    if (isUnseen(character, before)) {
      visible += QStringLiteral("‹U+%1›").arg(character, 4, 16, QLatin1Char('0')).toUpper();
    } else {
      visible += QString::fromUcs4(&character, 1);
    }
    before = character;
  }
  return visible;
}

}  // namespace quillmar
