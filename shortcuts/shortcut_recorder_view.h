// A control that records the keyboard shortcut of an item. A click starts the recording, the next
// combination ends it. Delete removes the shortcut; Escape, another click and the loss of the focus
// leave it as it was. Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "config/quillmar_config.h"
#include "platform/widgets/custom_view.h"

namespace quillmar {

class ShortcutRecorderView final : public CustomView {
 public:
  /// Virtual key codes of F1 to F20. Only these keys can be recorded without Control, Option or
  /// Command.
  static const std::set<std::uint16_t>& functionKeyCodes();

  /// Names of keys whose character is not shown, by virtual key code.
  static const std::map<std::uint16_t, std::string>& specialKeyNames();

  /// The text of a shortcut for people, such as "⇧⌘K". UTF-8.
  static std::string displayString(const KeyboardShortcut& shortcut);
  /// The same text for the key equivalent of a menu entry; empty if it has no character.
  static std::string displayString(const KeyEquivalent& keyEquivalent);

  ShortcutRecorderView();

  // State to show.

  const std::optional<KeyboardShortcut>& shortcut() const { return shortcut_; }
  void setShortcut(std::optional<KeyboardShortcut> shortcut) {
    set(shortcut_, std::move(shortcut));
  }

  /// True while the control waits for a key combination.
  bool isRecording() const { return isRecording_; }

  Size naturalSize() const override { return {.width = 180, .height = 24}; }
  void draw(Canvas& canvas) const override;
  double cornerRadius() const override { return 5; }
  bool capturesKeyboard() const override { return isRecording_; }
  std::string accessibilityValue() const override { return shownText(); }
  bool accessibilityPressed() const override { return isRecording_; }

  // Events from the user.

  bool key(const KeyPress& press) override;
  /// While recording, every key press is handled.
  bool performKeyEquivalent(const KeyPress& press) override;
  void focusLost() override;

  /// Handles a key press while recording: records it, removes the shortcut (Delete), cancels
  /// (Escape), or beeps because the combination cannot be a shortcut.
  void handle(const KeyPress& press);

  // Callbacks.

  /// Called after each change by the user; without a shortcut if the user has removed it.
  void setOnChange(std::function<void(const std::optional<KeyboardShortcut>& shortcut)> onChange) {
    onChange_ = std::move(onChange);
  }

 protected:
  void handleMouseDown() override;

 private:
  std::string shownText() const;
  void stopRecording();
  /// Stores the shortcut, ends the recording and reports the change. The view may be destroyed
  /// afterwards.
  void finish(std::optional<KeyboardShortcut> shortcut);

  std::optional<KeyboardShortcut> shortcut_;
  std::function<void(const std::optional<KeyboardShortcut>&)> onChange_;
  bool isRecording_ = false;
};

}  // namespace quillmar
