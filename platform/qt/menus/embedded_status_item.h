// The status icon in an XEmbed tray. Main thread.

#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <memory>
#include <optional>

#include "platform/status_item.h"
#include "platform/task_queue.h"

namespace quillmar {

class EmbeddedStatusItem final : public StatusItem {
 public:
  /// The icon appears with the first image, or as the program's icon if that image is missing.
  /// Actions run in tasks of `mainQueue`. Precondition: there is no StatusNotifier host; otherwise
  /// the toolkit shows the icon there.
  explicit EmbeddedStatusItem(TaskQueue& mainQueue);
  ~EmbeddedStatusItem() override;
  EmbeddedStatusItem(const EmbeddedStatusItem&) = delete;
  EmbeddedStatusItem& operator=(const EmbeddedStatusItem&) = delete;

  void setImage(std::optional<Image> image) override;
  void setMenu(Menu menu) override;

  /// The toolkit's tray icon, which reports clicks.
  QSystemTrayIcon& trayIcon() { return icon_; }

 private:
  TaskQueue& mainQueue_;
  std::unique_ptr<QMenu> menu_;
  /// The previous menu. It may still be open.
  std::unique_ptr<QMenu> previous_;
  QSystemTrayIcon icon_;
  /// Tells queued tasks whether this object still exists.
  std::shared_ptr<EmbeddedStatusItem*> self_;
};

}  // namespace quillmar
