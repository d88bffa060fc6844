// The base class of controls that draw themselves. A control derives from it, draws its state on a
// canvas, and handles the mouse and the keyboard.

#pragma once

#include <string>

#include "platform/widgets/canvas.h"
#include "platform/widgets/view.h"

namespace quillmar {

class CustomView : public View {
 public:
  void accept(ViewVisitor& visitor) final;

  // State to show.

  /// The size of a view without a stated width and height. It grows if its text needs more space.
  virtual Size naturalSize() const = 0;

  /// Draws the view. Changes no state.
  virtual void draw(Canvas& canvas) const = 0;

  /// The corner radius of the control. The window system draws the focus ring around it, except
  /// while the view captures the keyboard.
  virtual double cornerRadius() const { return 0; }

  /// If true, and the view is the first responder, the window system delivers all key presses to
  /// the window, as far as the desktop allows. This includes those that the desktop itself would
  /// use, such as the keys that switch windows.
  virtual bool capturesKeyboard() const { return false; }

  /// What screen readers say after the name; empty for nothing.
  virtual std::string accessibilityValue() const { return {}; }
  /// Whether screen readers report the view as pressed.
  virtual bool accessibilityPressed() const { return false; }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// The user pressed the main mouse button on the view, or a screen reader pressed it.
  void mouseDown();

  /// Space presses a view with the role of a button, as everywhere on the desktop.
  bool key(const KeyPress& press) override;

 protected:
  /// Called if the view takes input.
  virtual void handleMouseDown() {}

  /// The view has to be drawn again, or another part of its state to show has changed.
  void redraw() const;
};

}  // namespace quillmar
