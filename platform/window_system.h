// Shows windows and pop-up menus. A window system creates a peer for each object of the widget
// model (platform/widgets). It may be loaded on first use, so every call can fail because the
// module or a display is missing. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/application.h"
#include "platform/menu.h"
#include "platform/result.h"
#include "platform/widgets/file_panel.h"

namespace quillmar {

class StatusItem;
class Window;
class WindowPeer;

/// A position in pixels from the top left corner of the screen.
struct ScreenPoint {
  int x = 0;
  int y = 0;

  bool operator==(const ScreenPoint&) const = default;
};

class WindowSystem {
 public:
  virtual ~WindowSystem() = default;

  /// Creates the peers of the window and all its views, without showing them. The window outlives
  /// its peer.
  virtual Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) = 0;

  /// Opens the menu at the position, or at the pointer if there is none, and returns. Some desktops
  /// choose the position themselves. The action of the chosen entry, or `choose` if it has none,
  /// runs as a task of the main queue. A menu that is still open is closed.
  ///
  /// A request with a position comes from a click on an icon that toggles the menu: if the menu is
  /// open, or if the same click has just closed it, it stays closed. A position far from the
  /// pointer is treated as an error of the panel.
  virtual Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                                 const Activation& activation,
                                 std::function<void(const ActionEntry& entry)> choose) = 0;

  /// Shows a panel above `parent`, in which the user chooses a file to open, and returns.
  virtual Result<std::unique_ptr<FilePanelPeer>> showOpenPanel(Window& parent,
                                                               const OpenPanel& panel,
                                                               FilePanelCompletion onEnd) = 0;

  /// Like showOpenPanel(), for a file to save. Asks the user before it returns the path of a file
  /// that exists.
  virtual Result<std::unique_ptr<FilePanelPeer>> showSavePanel(Window& parent,
                                                               const SavePanel& panel,
                                                               FilePanelCompletion onEnd) = 0;

  /// Creates an icon for a legacy system tray (XEmbed). It is shown until destroyed, once there is
  /// such a tray. The window system outlives it.
  virtual Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() = 0;
};

}  // namespace quillmar
