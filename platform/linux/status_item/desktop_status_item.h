// Shows the program's status icon in whatever the desktop provides.
//
// While a panel shows icons through the session bus (StatusNotifierItem), only that is used. If
// there is no such panel for a while, the window system shows the icon in an XEmbed tray, if there
// is one, until such a panel appears. Without either, the menu can still be popped up. Main thread.

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
  /// How long to wait for a panel that starts together with this program, or restarts.
  static constexpr std::chrono::milliseconds panelTimeout = std::chrono::seconds(5);

  /// Runs the task in the main loop after the delay, when setHost() has received all changes of
  /// that time. The returned function cancels it.
  using RunLater =
      std::function<std::function<void()>(std::chrono::milliseconds delay, TaskQueue::Task task)>;

  /// Not owned; all must outlive the item.
  struct Collaborators {
    /// The icon for panels. Its handlers perform the actions.
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

  /// Whether a panel shows the notifier; unknown at first. The wait for a panel begins when there
  /// is none. It does not begin while a watcher has not replied: an XEmbed icon would query that
  /// watcher again, and block until it replies.
  void setHost(StatusNotifierHost host);

  /// True while the icon is visible somewhere, as far as is known.
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
  /// Cancels the wait for a panel; empty before the first wait.
  std::function<void()> stopWaiting_;
  /// The icon in an XEmbed tray; null if it is not shown there.
  std::unique_ptr<StatusItem> embedded_;
  /// Tells queued tasks whether this object still exists.
  std::shared_ptr<DesktopStatusItem*> self_;
};

}  // namespace quillmar
