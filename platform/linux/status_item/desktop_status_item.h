// The program's status icon on whatever the desktop has for it.
//
// As long as some panel shows icons by way of the session bus (StatusNotifierItem), that is all.
// When there has been none for a while, it may be that the desktop has a tray of the older kind
// only: then, if there is one, the window system shows the icon in it, until a panel of the newer
// kind appears. Without any of these the menu can still be popped up. Main thread.

#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/application.h"
#include "platform/image.h"
#include "platform/linux/status_item/status_notifier_host.h"
#include "platform/linux/status_item/tray_watch.h"
#include "platform/menu.h"
#include "platform/result.h"
#include "platform/status_item.h"
#include "platform/task_queue.h"
#include "platform/window_system.h"

namespace quillmar {

class DesktopStatusItem final : public StatusItem {
 public:
  /// A panel that starts together with this program, or again, gets this long to appear.
  static constexpr std::chrono::milliseconds patience = std::chrono::seconds(5);

  /// Runs the task in the main loop once the delay is over and setHost() has been told all that
  /// has happened meanwhile, unless what it returned is called before.
  using RunLater =
      std::function<std::function<void()>(std::chrono::milliseconds delay, TaskQueue::Task task)>;

  /// Not owned; all must outlive the item.
  struct Collaborators {
    /// The icon for panels, and what becomes of its actions.
    StatusItem& notifier;
    WindowSystem& windows;
    TrayWatch& trays;
    RunLater runLater;
  };

  explicit DesktopStatusItem(Collaborators collaborators);
  ~DesktopStatusItem() override;
  DesktopStatusItem(const DesktopStatusItem&) = delete;
  DesktopStatusItem& operator=(const DesktopStatusItem&) = delete;

  void setImage(std::optional<Image> image) override;
  void setMenu(Menu menu) override;

  /// Whether some panel shows the notifier; unknown at first. Patience begins when there is none.
  /// One that does not say is left the time it takes: it would be asked again by an icon of the
  /// older kind, and make that wait.
  void setHost(StatusNotifierHost host);

  /// True while the icon is to be seen somewhere, as far as is known.
  bool isShown() const { return host_ == StatusNotifierHost::present || embedded_; }

  /// Opens the menu as WindowSystem::popUpMenu does. Its entries do the same as those of the icon's
  /// menu.
  Result<void> popUp(const Activation& activation, std::optional<ScreenPoint> position = {});

 private:
  void stopLooking();
  void trayChanged(bool hasTray);
  ActionHandler forwarder();

  Collaborators collaborators_;
  std::optional<Image> image_;
  Menu menu_;
  StatusNotifierHost host_ = StatusNotifierHost::unknown;
  /// Ends the wait for a panel; empty before the first.
  std::function<void()> stopWaiting_;
  /// The icon in a tray of the older kind; null when it is not shown there.
  std::unique_ptr<StatusItem> embedded_;
  /// What tasks that wait in a queue look back through: gone when this object is.
  std::shared_ptr<DesktopStatusItem*> self_;
};

}  // namespace quillmar
