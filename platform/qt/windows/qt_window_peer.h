// A window of the model on the screen. Main thread.

#pragma once

#include <QPoint>
#include <QPointer>
#include <optional>

#include "platform/qt/widgets/extent.h"
#include "platform/qt/windows/window_widget.h"
#include "platform/widgets/view_peer.h"
#include "platform/widgets/window.h"

namespace quillmar {

class QtWindowPeer final : public WindowPeer {
 public:
  /// While an instance exists, focus changes count as made by the program.
  class ProgramFocusChange {
   public:
    explicit ProgramFocusChange(QtWindowPeer& window) : window_(window) { ++window_.programActs_; }
    ~ProgramFocusChange() { --window_.programActs_; }
    ProgramFocusChange(const ProgramFocusChange&) = delete;
    ProgramFocusChange& operator=(const ProgramFocusChange&) = delete;

   private:
    QtWindowPeer& window_;
  };

  explicit QtWindowPeer(Window& window);
  ~QtWindowPeer() override;

  void windowChanged() override;
  void firstResponderChanged() override;
  void show(const Activation& activation) override;
  void hide() override;
  void beep() override;

  WindowWidget& widget() const { return *widget_; }

  // For the peers of the window's views.

  /// A view has changed: the window is laid out again in a later iteration of the main loop.
  void contentChanged();
  /// The widget of the view has got the focus.
  void userFocused(View& view);
  /// The window has lost the keyboard to another window or a menu.
  void keyboardLost();
  /// Delivers all key presses to the window while it has the keyboard, as far as the desktop
  /// allows.
  void captureKeyboard(bool captures);

 private:
  /// The view that the widget belongs to; null if there is none.
  View* viewOf(const QWidget& widget) const;
  bool keyEquivalentPressed(const KeyPress& press);
  bool keyPressed(const KeyPress& press);
  void windowDestroyed();
  /// Gives the keyboard to the window's sheet, if there is one. When a sheet of a sheet closes,
  /// some window managers give the keyboard to the window below both.
  void activateSheet();
  void looksChanged();
  /// Gives the window the size that it needs and each view its place.
  void layOut();
  /// The stated size, or more where the content needs it, up to `room`. `contentLength` selects the
  /// length that the content gets.
  QSize neededSize(const Size& stated, const QSize& room, int Extent::*contentLength) const;
  void updateSize(const QSize& room);
  /// The content fills the window.
  void placeContent();
  void updateFlags();
  void placeOnScreen();
  /// A place for a window with that frame, moved until it covers no title bar of another window.
  QPoint cascaded(QRect frame, const QRect& screen) const;
  void becomeSheet();
  /// Gives the focus to the first responder, if it can have the focus.
  void showFocus();
  /// Scrolls the scroll views around the view until it is visible.
  static void reveal(const View& view);

  Window& window_;
  QPointer<WindowWidget> widget_;
  /// Where the window was when it was hidden.
  std::optional<QPoint> place_;
  /// A resizable window has got its first size.
  bool hasSize_ = false;
  int programActs_ = 0;
};

}  // namespace quillmar
