#include "platform/qt/windows/key_presses.h"

#include <QKeyEvent>

namespace quillmar {

namespace {

constexpr char16_t firstFunctionKey = 0xf704;

/// Keys whose character is their own, not what the layout makes of them.
QString namedKey(int key) {
  if (key >= Qt::Key_F1 && key <= Qt::Key_F35) return QChar(firstFunctionKey + key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return QStringLiteral("\r");
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return QStringLiteral("\t");
    case Qt::Key_Escape:
      return QStringLiteral("\x1b");
    case Qt::Key_Backspace:
      return QStringLiteral("\x7f");
    case Qt::Key_Up:
      return QChar(0xf700);
    case Qt::Key_Down:
      return QChar(0xf701);
    case Qt::Key_Left:
      return QChar(0xf702);
    case Qt::Key_Right:
      return QChar(0xf703);
    case Qt::Key_Delete:
      return QChar(0xf728);
    case Qt::Key_Home:
      return QChar(0xf729);
    case Qt::Key_End:
      return QChar(0xf72b);
    case Qt::Key_PageUp:
      return QChar(0xf72c);
    case Qt::Key_PageDown:
      return QChar(0xf72d);
    default:
      return {};
  }
}

}  // namespace

std::optional<KeyEquivalent> keyEquivalentOf(const QKeyEvent& event) {
  QString character = namedKey(event.key());
  // With Control down the text is a control character, so the key itself counts.
  if (character.isEmpty() && event.key() < 0x110000) {
    const auto codePoint = static_cast<char32_t>(event.key());
    character = QString::fromUcs4(&codePoint, 1).toLower();
  }
  if (character.isEmpty()) return std::nullopt;
  std::uint64_t mask = 0;
  const Qt::KeyboardModifiers held = event.modifiers();
  if (held & Qt::ShiftModifier) mask |= modifiers::shift;
  if (held & Qt::ControlModifier) mask |= modifiers::control;
  if (held & Qt::AltModifier) mask |= modifiers::option;
  if (held & Qt::MetaModifier) mask |= modifiers::command;
  return KeyEquivalent{.character = character.toStdString(), .modifierMask = mask};
}

}  // namespace quillmar
