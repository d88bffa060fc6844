#include "platform/qt/windows/key_presses.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <string_view>

#include <xkbcommon/xkbcommon.h>

#include "platform/qt/windows/keyboard_layout.h"
#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

/// Characters for keys that write none lie here.
bool standsForKey(char32_t character) {
  return character >= 0xf700 && character <= 0xf8ff;
}

/// Shift, Control and their like, locks, and the keys that choose a level of the layout.
bool isModifier(xkb_keysym_t keysym) {
  return (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R) ||
         (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Level5_Lock) ||
         keysym == XKB_KEY_Mode_switch || keysym == XKB_KEY_Num_Lock;
}

/// The key without regard to the layout; null when it has no virtual key code.
const VirtualKey* physicalKey(const QKeyEvent& event) {
  constexpr quint32 firstScanCode = 8;
  const quint32 scanCode = event.nativeScanCode();
  return scanCode < firstScanCode ? nullptr : virtualKeyForEvdevCode(scanCode - firstScanCode);
}

/// The name of the symbol; of the keypad's the one of the same key elsewhere.
std::string_view keysymName(xkb_keysym_t keysym, std::array<char, 64>& buffer) {
  constexpr std::string_view keypad = "KP_";
  xkb_keysym_get_name(keysym, buffer.data(), buffer.size());
  std::string_view name(buffer.data());
  if (name.starts_with(keypad)) name.remove_prefix(keypad.size());
  return name == "ISO_Left_Tab" ? "Tab" : name;
}

struct DeadKey {
  xkb_keysym_t keysym;
  char32_t character;
};

/// A dead key changes the next letter. Followed by a space it writes this character.
constexpr std::array<DeadKey, 20> deadKeys = {
    {{XKB_KEY_dead_grave, U'`'},      {XKB_KEY_dead_acute, U'´'},
     {XKB_KEY_dead_circumflex, U'^'}, {XKB_KEY_dead_tilde, U'~'},
     {XKB_KEY_dead_macron, U'¯'},     {XKB_KEY_dead_breve, U'˘'},
     {XKB_KEY_dead_abovedot, U'˙'},   {XKB_KEY_dead_diaeresis, U'¨'},
     {XKB_KEY_dead_abovering, U'°'},  {XKB_KEY_dead_doubleacute, U'˝'},
     {XKB_KEY_dead_caron, U'ˇ'},      {XKB_KEY_dead_cedilla, U'¸'},
     {XKB_KEY_dead_ogonek, U'˛'},     {XKB_KEY_dead_iota, U'ͺ'},
     {XKB_KEY_dead_belowdot, U'.'},   {XKB_KEY_dead_belowcomma, U','},
     {XKB_KEY_dead_stroke, U'/'},     {XKB_KEY_dead_greek, U'µ'},
     {XKB_KEY_dead_currency, U'¤'},   {XKB_KEY_dead_semivoiced_sound, U'゜'}}};

char32_t characterOfDeadKey(xkb_keysym_t keysym) {
  const auto* const found =
      std::find_if(deadKeys.begin(), deadKeys.end(),
                   [keysym](const DeadKey& each) { return each.keysym == keysym; });
  return found == deadKeys.end() ? 0 : found->character;
}

char32_t characterOf(const QKeyEvent& event) {
  const xkb_keysym_t keysym = keysymWithoutModifiers(event).value_or(event.nativeVirtualKey());
  std::array<char, 64> buffer{};
  // Before the characters: a keypad's key and one that erases have characters of their own.
  const VirtualKey* const named = virtualKeyForKeysym(keysymName(keysym, buffer));
  if (named != nullptr && named->character != 0) return named->character;
  if (const char32_t written = xkb_keysym_to_utf32(keysym); written != 0) return written;
  if (const char32_t dead = characterOfDeadKey(keysym); dead != 0) return dead;
  // F13 and those after it have other meanings in most layouts.
  const VirtualKey* const physical = physicalKey(event);
  return physical != nullptr && standsForKey(physical->character) ? physical->character : 0;
}

}  // namespace

std::optional<KeyPress> keyPressOf(const QKeyEvent& event) {
  const VirtualKey* const key = physicalKey(event);
  const char32_t character = characterOf(event);
  if (isModifier(event.nativeVirtualKey()) || (key == nullptr && character == 0)) return {};
  KeyPress press;
  if (key != nullptr) press.keyCode = key->code;
  if (character != 0) press.character = QString::fromUcs4(&character, 1).toLower().toStdString();
  const Qt::KeyboardModifiers held = event.modifiers();
  if (held & Qt::ShiftModifier) press.modifiers |= modifiers::shift;
  if (held & Qt::ControlModifier) press.modifiers |= modifiers::control;
  if (held & Qt::AltModifier) press.modifiers |= modifiers::option;
  if (held & Qt::MetaModifier) press.modifiers |= modifiers::command;
  return press;
}

}  // namespace quillmar
