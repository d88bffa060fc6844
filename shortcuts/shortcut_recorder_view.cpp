#include "shortcuts/shortcut_recorder_view.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/key_press.h"
#include "platform/text.h"
#include "platform/virtual_key_codes.h"
#include "platform/visible_text.h"
#include "platform/widgets/window.h"

namespace quillmar {

namespace {

constexpr std::uint16_t deleteKey = 51;
constexpr std::uint16_t escapeKey = 53;
constexpr std::uint16_t forwardDeleteKey = 117;

/// F1, F2 and so on to F20.
constexpr auto functionKeys = std::to_array<std::uint16_t>(
    {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90});

constexpr std::uint64_t allModifiers =
    modifiers::shift | modifiers::control | modifiers::option | modifiers::command;

/// Shift alone would take a typed character away from every program.
constexpr std::uint64_t requiredModifiers =
    modifiers::control | modifiers::option | modifiers::command;

struct ModifierGlyph {
  std::uint64_t modifier;
  std::string_view glyph;
};

/// In the order in which they are written.
constexpr auto modifierGlyphs = std::to_array<ModifierGlyph>({{modifiers::control, "⌃"},
                                                              {modifiers::option, "⌥"},
                                                              {modifiers::shift, "⇧"},
                                                              {modifiers::command, "⌘"}});

}  // namespace

const std::set<std::uint16_t>& ShortcutRecorderView::functionKeyCodes() {
  static const std::set<std::uint16_t> codes(functionKeys.begin(), functionKeys.end());
  return codes;
}

const std::map<std::uint16_t, std::string>& ShortcutRecorderView::specialKeyNames() {
  static const std::map<std::uint16_t, std::string> names = [] {
    std::map<std::uint16_t, std::string> all = {
        {36, "↩"},        {48, "⇥"},  {49, "Space"}, {deleteKey, "⌫"}, {forwardDeleteKey, "⌦"},
        {escapeKey, "⎋"}, {123, "←"}, {124, "→"},    {126, "↑"},       {125, "↓"},
        {115, "↖"},       {119, "↘"}, {116, "⇞"},    {121, "⇟"}};
    for (std::size_t i = 0; i < functionKeys.size(); ++i) {
      all[functionKeys[i]].append("F").append(std::to_string(i + 1));
    }
    return all;
  }();
  return names;
}

std::string ShortcutRecorderView::displayString(const KeyboardShortcut& shortcut) {
  std::string text;
  for (const auto& [modifier, glyph] : modifierGlyphs) {
    if ((shortcut.modifiers & modifier) != 0) text += glyph;
  }
  const auto name = specialKeyNames().find(shortcut.keyCode);
  return text +
         (name == specialKeyNames().end() ? text::uppercased(shortcut.character) : name->second);
}

std::string ShortcutRecorderView::displayString(const KeyEquivalent& keyEquivalent) {
  if (keyEquivalent.character.empty()) return "";
  KeyboardShortcut shortcut{.character = keyEquivalent.character,
                            .modifiers = keyEquivalent.modifierMask};
  const VirtualKey* const key =
      virtualKeyForCharacter(text::firstCodePoint(keyEquivalent.character));
  if (key != nullptr) shortcut.keyCode = key->code;
  return displayString(shortcut);
}

ShortcutRecorderView::ShortcutRecorderView() {
  setAccessibilityRole(AccessibilityRole::button);
  setAccessibilityLabel("Keyboard shortcut");
}

std::string ShortcutRecorderView::shownText() const {
  if (isRecording_) return "Type shortcut…";
  if (!shortcut_) return "Click to record";
  // Keys such as the keypad's Enter type a control character.
  return text::withVisibleCharacters(displayString(*shortcut_));
}

void ShortcutRecorderView::draw(Canvas& canvas) const {
  const Size size = canvas.size();
  const RoundedRect shape{.rect = Rect{.origin = {}, .size = size}.insetBy(0.5),
                          .radius = cornerRadius()};
  canvas.fill(shape, isRecording_ ? Paint{.color = CanvasColor::selectedControl, .alpha = 0.25}
                                  : Paint{.color = CanvasColor::controlBackground});
  canvas.stroke(shape, {.color = isRecording_ ? CanvasColor::accent : CanvasColor::separator}, 1);

  const Font font = Font::system(12);
  const std::string text = shownText();
  const Size textSize = canvas.textSize(text, font);
  const Point origin{.x = (size.width - textSize.width) / 2,
                     .y = (size.height - textSize.height) / 2};
  CanvasColor color = shortcut_ ? CanvasColor::label : CanvasColor::tertiaryLabel;
  if (isRecording_) color = CanvasColor::secondaryLabel;
  canvas.drawText(text, origin, font, {.color = color});
}

void ShortcutRecorderView::handleMouseDown() {
  isRecording_ = !isRecording_;
  // After the change: a window system that gives the view the focus sees whether it records.
  window()->makeFirstResponder(this);
  redraw();
}

bool ShortcutRecorderView::key(const KeyPress& press) {
  return performKeyEquivalent(press) || CustomView::key(press);
}

bool ShortcutRecorderView::performKeyEquivalent(const KeyPress& press) {
  if (!isRecording_) return false;
  handle(press);
  return true;
}

void ShortcutRecorderView::focusLost() {
  stopRecording();
}

void ShortcutRecorderView::handle(const KeyPress& press) {
  // A key without a virtual key code cannot be stored.
  if (!press.keyCode) return window()->beep();
  const std::uint16_t code = *press.keyCode;
  const std::uint64_t held = press.modifiers & allModifiers;
  if ((code == deleteKey || code == forwardDeleteKey) && held == 0) return finish({});
  if (code == escapeKey && held == 0) return stopRecording();
  if (!functionKeyCodes().contains(code) && (held & requiredModifiers) == 0) {
    return window()->beep();
  }
  finish(KeyboardShortcut{.keyCode = code,
                          .character = text::lowercased(press.character),
                          .modifiers = held,
                          .isGlobal = !shortcut_ || shortcut_->isGlobal});
}

void ShortcutRecorderView::stopRecording() {
  if (!isRecording_) return;
  isRecording_ = false;
  redraw();
}

void ShortcutRecorderView::finish(std::optional<KeyboardShortcut> shortcut) {
  shortcut_ = std::move(shortcut);
  isRecording_ = false;
  redraw();
  if (!onChange_) return;
  // Copies, because the handler may destroy this view.
  const auto onChange = onChange_;
  const std::optional<KeyboardShortcut> changed = shortcut_;
  onChange(changed);
}

}  // namespace quillmar
