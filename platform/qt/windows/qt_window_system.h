// Shows the windows of the model with Qt. Precondition: a QApplication. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/qt/windows/early_click_filter.h"
#include "platform/task_queue.h"
#include "platform/window_system.h"

namespace quillmar {

class QtWindowSystem final : public WindowSystem {
 public:
  /// Actions of menus run in tasks of `mainQueue`, which is not owned.
  explicit QtWindowSystem(TaskQueue& mainQueue);

  Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) override;
  Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                         const Activation& activation,
                         std::function<void(const ActionEntry& entry)> choose) override;
  Result<std::unique_ptr<FilePanelPeer>> showOpenPanel(Window& parent, const OpenPanel& panel,
                                                       FilePanelCompletion onEnd) override;
  Result<std::unique_ptr<FilePanelPeer>> showSavePanel(Window& parent, const SavePanel& panel,
                                                       FilePanelCompletion onEnd) override;
  Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() override;

 private:
  TaskQueue& mainQueue_;
  EarlyClickFilter earlyClicks_;
};

}  // namespace quillmar
