// A module that only logs its calls.
// The variable FAKE_WINDOWS_ERROR keeps it from starting.

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/memory/memory_window_system.h"
#include "platform/task_queue.h"
#include "platform/window_module.h"

namespace quillmar {
namespace {

class FakeWindowModule final : public WindowModule, private WindowSystem {
 public:
  explicit FakeWindowModule(const WindowModuleHost& host) : host_(host), memory_(host.mainQueue) {
    host_.log("started for " + host.applicationName);
  }

  WindowSystem& windows() override { return *this; }

  void run() override {
    host_.log("loop");
    g_main_loop_run(loop_.get());
    host_.log("loop over");
  }
  void quit() override { g_main_loop_quit(loop_.get()); }

 private:
  Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) override {
    return memory_.makeWindowPeer(window);
  }

  /// Chooses the first entry.
  Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> /*position*/,
                         const Activation& activation,
                         std::function<void(const ActionEntry& entry)> choose) override {
    host_.log("menu " + menu.title + " " + activation.token);
    if (menu.entries.empty()) return Error{"There is nothing to show."};
    host_.mainQueue.async([choose = std::move(choose),
                           entry = std::get<ActionEntry>(menu.entries.front())] { choose(entry); });
    return {};
  }

  Result<std::unique_ptr<FilePanelPeer>> showOpenPanel(Window& parent, const OpenPanel& panel,
                                                       FilePanelCompletion onEnd) override {
    return memory_.showOpenPanel(parent, panel, std::move(onEnd));
  }

  Result<std::unique_ptr<FilePanelPeer>> showSavePanel(Window& parent, const SavePanel& panel,
                                                       FilePanelCompletion onEnd) override {
    return memory_.showSavePanel(parent, panel, std::move(onEnd));
  }

  Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() override {
    return memory_.makeEmbeddedStatusItem();
  }

  WindowModuleHost host_;
  MemoryWindowSystem memory_;
  GMainLoopPtr loop_{g_main_loop_new(nullptr, false)};
};

}  // namespace
}  // namespace quillmar

quillmar::WindowModule* quillmar_start_window_module(const quillmar::WindowModuleHost& host,
                                                     quillmar::Error& error) {
  if (const auto reason = host.environment.value("FAKE_WINDOWS_ERROR")) {
    error.description = *reason;
    return nullptr;
  }
  static std::unique_ptr<quillmar::FakeWindowModule> module;
  module = std::make_unique<quillmar::FakeWindowModule>(host);
  return module.get();
}
