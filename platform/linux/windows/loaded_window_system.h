// The program's window system: a module loaded on the first call that needs it, because it needs
// about ten times as much memory as the rest. It stays loaded. Main thread.
//
// If the module is missing or cannot start, the call fails and the next call tries again. The rest
// of the program continues. An error is logged unless it equals the previous one.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/application/main_loop.h"
#include "platform/window_module.h"
#include "platform/window_system.h"

namespace quillmar {

class LoadedWindowSystem final : public WindowSystem {
 public:
  /// `modulePath` is the module's file. `mainLoop` is handed over to the module's loop once that
  /// has started.
  LoadedWindowSystem(std::string modulePath, WindowModuleHost host, MainLoop& mainLoop);

  /// Path of this program's module: in the library folder beside the folder of the executable,
  /// whether it exists or not.
  static std::string moduleOfThisProgram();

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
  /// The module's window system.
  Result<WindowSystem*> windows();
  /// Fills start_.
  Result<void> load();

  template <class T>
  Result<T> reported(Result<T> outcome);

  std::string modulePath_;
  WindowModuleHost host_;
  MainLoop& mainLoop_;
  /// Null until the module has been loaded and started.
  StartWindowModule* start_ = nullptr;
  WindowModule* module_ = nullptr;
  /// The last logged error.
  std::string reported_;
};

}  // namespace quillmar
