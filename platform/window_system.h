// Where windows are shown. The widget model (platform/widgets) is shown by peers that a window
// system makes; it may be loaded with the first of them, so each of the calls can fail for want of
// it or of a display. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/application.h"
#include "platform/menu.h"
#include "platform/result.h"

namespace quillmar {

class StatusItem;
class Window;
class WindowPeer;

/// In pixels from the top left corner of the screen.
struct ScreenPoint {
  int x = 0;
  int y = 0;

  bool operator==(const ScreenPoint&) const = default;
};

class WindowSystem {
 public:
  virtual ~WindowSystem() = default;

  /// What shows the window and all the views in it; nothing is on the screen yet. The window
  /// outlives its peer.
  virtual Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) = 0;

  /// Opens the menu at the position, at the pointer if there is none, or where the desktop allows
  /// it, and returns. The action of the chosen entry, or `choose` for an entry without one, runs in
  /// its own turn of the main queue. A menu that is still open closes.
  ///
  /// A request with a position comes from a click on something that opens and closes the menu: if
  /// the menu is open, or if this click has just closed it, it stays closed. A position far from
  /// the pointer is taken for a mistake of the panel.
  virtual Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                                 const Activation& activation,
                                 std::function<void(const ActionEntry& entry)> choose) = 0;

  /// An icon in a tray of the older kind, which takes windows in (XEmbed); shown until destroyed,
  /// at once or as soon as there is such a tray. The window system outlives it.
  virtual Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() = 0;
};

}  // namespace quillmar
