// A checkbox with a title.

#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/control_state.h"
#include "platform/font.h"
#include "platform/widgets/view.h"

namespace quillmar {

/// The state after the user has toggled a control: a mixed one becomes on.
constexpr ControlState toggled(ControlState state) {
  return state == ControlState::on ? ControlState::off : ControlState::on;
}

class Checkbox final : public View {
 public:
  explicit Checkbox(std::string title) : title_(std::move(title)) {}

  void accept(ViewVisitor& visitor) override;

  // State to show.

  /// Plain text: no mnemonics. It wraps if it has less space than it needs.
  const std::string& title() const { return title_; }
  void setTitle(std::string title) { set(title_, std::move(title)); }

  ControlState state() const { return state_; }
  void setState(ControlState state) { set(state_, state); }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// Space toggles the checkbox.
  bool key(const KeyPress& press) override;

  void toggle();

  // Callbacks.

  /// Called after the user has changed the state.
  void setOnToggle(std::function<void(ControlState state)> onToggle) {
    onToggle_ = std::move(onToggle);
  }

 private:
  std::string title_;
  ControlState state_ = ControlState::off;
  Font font_;
  std::function<void(ControlState)> onToggle_;
};

}  // namespace quillmar
