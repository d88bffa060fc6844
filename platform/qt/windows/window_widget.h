// The toolkit's widget of a window: reports what the user does to the window as a whole.

#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "platform/key_press.h"
#include "platform/qt/windows/destroyed_window_filter.h"
#include "platform/qt/windows/file_drop_filter.h"
#include "platform/qt/windows/held_key_filter.h"
#include "platform/qt/windows/key_equivalent_filter.h"

namespace quillmar {

class WindowWidget final : public QWidget {
 public:
  /// Each may destroy the window, and with it these handlers.
  struct Handlers {
    /// A key, before any widget uses it. Returns true if the key was used.
    std::function<bool(const KeyPress& press)> keyEquivalent;
    /// A key that no widget has used. Returns true if the key was used.
    std::function<bool(const KeyPress& press)> key;
    /// A mouse button was pressed and no widget has used it.
    std::function<void()> mouseDown;
    std::function<void()> close;
    /// The window has got the keyboard.
    std::function<void()> activated;
    /// Files were dragged over a widget. Returns true if the view there would take them.
    std::function<bool(QWidget& widget, const std::vector<std::string>& files)> dragFiles;
    /// Files were dropped on a widget. Returns true if the view there has taken them.
    std::function<bool(QWidget& widget, const std::vector<std::string>& files)> dropFiles;
    /// Another program has destroyed the window on the display.
    std::function<void()> destroyed;
    /// A font or the style has changed.
    std::function<void()> looksChanged;
    /// Called once for several calls of updateGeometry().
    std::function<void()> layOut;
    std::function<void()> resized;
  };

  explicit WindowWidget(Handlers handlers);

  /// From now on the window does nothing; it is about to be deleted.
  void detach() { handlers_ = {}; }

  void requestLayout();

  /// Destroys the window on the display. It is created again when it is next shown.
  void forgetDisplayWindow() { destroy(); }

  /// Delivers all key presses to the window while it has the keyboard, as far as the desktop
  /// allows.
  void captureKeyboard(bool captures) { keyEquivalents_.setCapturing(captures); }

  /// See KeyEquivalentFilter::awaitsPermission().
  bool awaitsPermissionToCapture() const { return keyEquivalents_.awaitsPermission(); }

  bool ignoresEarlyClicks() const { return ignoresEarlyClicks_; }
  void setIgnoresEarlyClicks(bool ignores) { ignoresEarlyClicks_ = ignores; }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  /// The innermost widget at the position.
  QWidget& widgetAt(const QPoint& position);

  Handlers handlers_;
  KeyEquivalentFilter keyEquivalents_;
  HeldKeyFilter heldKeys_;
  FileDropFilter fileDrops_;
  DestroyedWindowFilter destroyedWindow_;
  bool ignoresEarlyClicks_ = false;
};

}  // namespace quillmar
