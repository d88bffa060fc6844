#include "platform/qt/windows/key_presses.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

namespace quillmar {

namespace {

constexpr char16_t firstFunctionKey = 0xf704;
constexpr int functionKeys = 35;

struct NamedKey {
  Qt::Key key;
  char16_t character;
};

/// Keys whose character is their own, not what the layout makes of them. Of several with one
/// character the first stands for it.
constexpr std::array<NamedKey, 15> namedKeys = {{{Qt::Key_Return, u'\r'},
                                                 {Qt::Key_Enter, u'\r'},
                                                 {Qt::Key_Tab, u'\t'},
                                                 {Qt::Key_Backtab, u'\t'},
                                                 {Qt::Key_Escape, u'\x1b'},
                                                 {Qt::Key_Backspace, u'\x7f'},
                                                 {Qt::Key_Up, 0xf700},
                                                 {Qt::Key_Down, 0xf701},
                                                 {Qt::Key_Left, 0xf702},
                                                 {Qt::Key_Right, 0xf703},
                                                 {Qt::Key_Delete, 0xf728},
                                                 {Qt::Key_Home, 0xf729},
                                                 {Qt::Key_End, 0xf72b},
                                                 {Qt::Key_PageUp, 0xf72c},
                                                 {Qt::Key_PageDown, 0xf72d}}};

QString characterOf(int key) {
  if (key >= Qt::Key_F1 && key < Qt::Key_F1 + functionKeys) {
    return QChar(firstFunctionKey + key - Qt::Key_F1);
  }
  const auto* const named = std::find_if(namedKeys.begin(), namedKeys.end(),
                                         [key](const NamedKey& each) { return each.key == key; });
  if (named != namedKeys.end()) return QChar(named->character);
  if (key >= 0x110000) return {};
  const auto codePoint = static_cast<char32_t>(key);
  return QString::fromUcs4(&codePoint, 1).toLower();
}

int keyOf(char32_t character) {
  if (character >= firstFunctionKey && character < firstFunctionKey + functionKeys) {
    return Qt::Key_F1 + static_cast<int>(character - firstFunctionKey);
  }
  const auto* const named =
      std::find_if(namedKeys.begin(), namedKeys.end(),
                   [character](const NamedKey& each) { return each.character == character; });
  if (named != namedKeys.end()) return named->key;
  return static_cast<int>(QChar::toUpper(character));
}

}  // namespace

std::optional<KeyEquivalent> keyEquivalentOf(const QKeyEvent& event) {
  // Not the event's text: with Control down that is a control character.
  const QString character = characterOf(event.key());
  if (character.isEmpty()) return std::nullopt;
  std::uint64_t mask = 0;
  const Qt::KeyboardModifiers held = event.modifiers();
  if (held & Qt::ShiftModifier) mask |= modifiers::shift;
  if (held & Qt::ControlModifier) mask |= modifiers::control;
  if (held & Qt::AltModifier) mask |= modifiers::option;
  if (held & Qt::MetaModifier) mask |= modifiers::command;
  return KeyEquivalent{.character = character.toStdString(), .modifierMask = mask};
}

QKeySequence keySequenceOf(const KeyEquivalent& keyEquivalent) {
  const auto characters = QString::fromStdString(keyEquivalent.character).toUcs4();
  if (characters.size() != 1) return {};
  const std::uint64_t mask = keyEquivalent.modifierMask;
  const bool isUpper = QChar::isUpper(characters.front());
  Qt::KeyboardModifiers held = Qt::NoModifier;
  if ((mask & modifiers::shift) || isUpper) held |= Qt::ShiftModifier;
  if (mask & modifiers::control) held |= Qt::ControlModifier;
  if (mask & modifiers::option) held |= Qt::AltModifier;
  if (mask & modifiers::command) held |= Qt::MetaModifier;
  return {QKeyCombination(held, static_cast<Qt::Key>(keyOf(characters.front())))};
}

}  // namespace quillmar
