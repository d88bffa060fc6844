// A window of the model on the screen. Main thread.

#pragma once

#include <QPoint>
#include <QPointer>
#include <optional>

#include "platform/qt/windows/window_widget.h"
#include "platform/widgets/view_peer.h"
#include "platform/widgets/window.h"

namespace quillmar {

class QtWindowPeer final : public WindowPeer {
 public:
  /// While one lives, a change of the focus is the program's doing, not the user's.
  class ProgramActs {
   public:
    explicit ProgramActs(QtWindowPeer& window) : window_(window) { ++window_.programActs_; }
    ~ProgramActs() { --window_.programActs_; }
    ProgramActs(const ProgramActs&) = delete;
    ProgramActs& operator=(const ProgramActs&) = delete;

   private:
    QtWindowPeer& window_;
  };

  explicit QtWindowPeer(Window& window);
  ~QtWindowPeer() override;

  void windowChanged() override;
  void firstResponderChanged() override;
  void show(const Activation& activation) override;
  void hide() override;

  WindowWidget& widget() const { return *widget_; }

  // For the peers of the window's views.

  /// Some view has changed: in a turn of its own the window lays everything out anew.
  void contentChanged();
  /// The focus is at the widget of the view.
  void userFocused(View& view);

 private:
  bool keyPressed(const KeyPress& press);
  void looksChanged();
  /// Gives the window the size that it needs and each view its place.
  void layOut();
  /// The size for what there is on that much room.
  QSize neededSize(const QSize& room) const;
  void updateFlags();
  void placeOnScreen();
  void becomeSheet();
  /// The focus is where the model says, now that widgets may have come or gone.
  void showFocus();

  Window& window_;
  QPointer<WindowWidget> widget_;
  /// Where the window was when it was hidden.
  std::optional<QPoint> place_;
  int programActs_ = 0;
};

}  // namespace quillmar
