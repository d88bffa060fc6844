// The program's window system: a module that is loaded with the first call that needs it, because
// it costs several times the memory of the rest, and stays loaded. Main thread.
//
// A module that is missing or cannot start is an error of the call, and is tried again with the
// next one; the rest of the program goes on. Each error that is another than the one before is also
// written to the log.

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
  /// `modulePath` is the module's file. `mainLoop` is handed over to the module's once that is at
  /// work.
  LoadedWindowSystem(std::string modulePath, WindowModuleHost host, MainLoop& mainLoop);

  /// The file of the module that belongs to this program: in the folder of libraries beside the
  /// folder that the program was started from, whether it exists or not.
  static std::string moduleOfThisProgram();

  Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) override;
  Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                         const Activation& activation,
                         std::function<void(const ActionEntry& entry)> choose) override;
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
  /// Null until it has been loaded, and it has started.
  StartWindowModule* start_ = nullptr;
  WindowModule* module_ = nullptr;
  /// The error that was written last.
  std::string reported_;
};

}  // namespace quillmar
