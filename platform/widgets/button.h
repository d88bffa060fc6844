// A push button or a link.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/font.h"
#include "platform/widgets/view.h"

namespace quillmar {

enum class ButtonStyle {
  push,
  /// Without a border; the title has the link colour.
  link,
};

class Button final : public View {
 public:
  explicit Button(std::string title, ButtonStyle style = ButtonStyle::push)
      : title_(std::move(title)), style_(style) {}

  void accept(ViewVisitor& visitor) override;

  // State to show.

  /// Plain text: no mnemonics.
  const std::string& title() const { return title_; }
  void setTitle(std::string title) { set(title_, std::move(title)); }

  /// Fixed at construction.
  ButtonStyle style() const { return style_; }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  /// The key that presses the button from anywhere in the window. A button for Return is the
  /// default button and drawn as such; a button for Escape is the cancel button.
  const std::optional<KeyEquivalent>& keyEquivalent() const { return keyEquivalent_; }
  void setKeyEquivalent(std::optional<KeyEquivalent> key) { set(keyEquivalent_, std::move(key)); }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// Return and space press the button.
  bool key(const KeyPress& press) override;

  void press();

  // Callbacks.

  void setOnPress(std::function<void()> onPress) { onPress_ = std::move(onPress); }

 private:
  std::string title_;
  ButtonStyle style_;
  Font font_;
  std::optional<KeyEquivalent> keyEquivalent_;
  std::function<void()> onPress_;
};

}  // namespace quillmar
