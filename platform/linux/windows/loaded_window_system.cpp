#include "platform/linux/windows/loaded_window_system.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>

#include "platform/error_text.h"
#include "platform/file_descriptor.h"
#include "platform/status_item.h"
#include "platform/widgets/file_panel.h"
#include "platform/widgets/view_peer.h"

namespace quillmar {

namespace {

/// File descriptors that a toolkit needs to connect to a display and to its services. With fewer it
/// would end the program instead of reporting an error.
constexpr std::size_t descriptorsNeeded = 24;

bool hasDescriptors() {
  std::vector<FileDescriptor> taken;
  for (std::size_t i = 0; i < descriptorsNeeded; ++i) {
    if (!taken.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC))) return false;
  }
  return true;
}

/// The loader's reason, without the module's name in front of it.
std::string loaderReason(const std::string& modulePath) {
  const char* told = dlerror();
  std::string reason = told ? told : "unknown error";
  if (reason.starts_with(modulePath + ": ")) reason.erase(0, modulePath.size() + 2);
  return reason;
}

Error cannotLoad(const std::string& modulePath) {
  return {"Quillmar cannot show windows, because the file " + quotedPath(modulePath) +
          " could not be loaded (" + loaderReason(modulePath) + ")."};
}

}  // namespace

LoadedWindowSystem::LoadedWindowSystem(std::string modulePath, WindowModuleHost host,
                                       MainLoop& mainLoop)
    : modulePath_(std::move(modulePath)), host_(std::move(host)), mainLoop_(mainLoop) {}

std::string LoadedWindowSystem::moduleOfThisProgram() {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path().parent_path();
  const fs::path file = fs::path("quillmar") / "quillmar_qt.so";
  // The build tree has one folder of libraries, whatever that of an installation is called.
  const fs::path built = folder / "lib" / file;
  return (fs::exists(built, ignored) ? built : folder / QUILLMAR_LIBRARY_FOLDER / file).string();
}

Result<std::unique_ptr<WindowPeer>> LoadedWindowSystem::makeWindowPeer(Window& window) {
  const auto system = windows();
  if (!system) return system.error();
  return system.value()->makeWindowPeer(window);
}

Result<void> LoadedWindowSystem::popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                                           const Activation& activation,
                                           std::function<void(const ActionEntry& entry)> choose) {
  const auto system = reported(windows());
  if (!system) return system.error();
  return reported(
      system.value()->popUpMenu(std::move(menu), position, activation, std::move(choose)));
}

Result<std::unique_ptr<FilePanelPeer>> LoadedWindowSystem::showOpenPanel(
    Window& parent, const OpenPanel& panel, FilePanelCompletion onEnd) {
  const auto system = windows();
  if (!system) return system.error();
  return system.value()->showOpenPanel(parent, panel, std::move(onEnd));
}

Result<std::unique_ptr<FilePanelPeer>> LoadedWindowSystem::showSavePanel(
    Window& parent, const SavePanel& panel, FilePanelCompletion onEnd) {
  const auto system = windows();
  if (!system) return system.error();
  return system.value()->showSavePanel(parent, panel, std::move(onEnd));
}

Result<std::unique_ptr<StatusItem>> LoadedWindowSystem::makeEmbeddedStatusItem() {
  const auto system = reported(windows());
  if (!system) return system.error();
  return reported(system.value()->makeEmbeddedStatusItem());
}

Result<WindowSystem*> LoadedWindowSystem::windows() {
  if (module_) return &module_->windows();
  if (!hasDescriptors()) {
    return Error{"Quillmar cannot show windows, because it has too many files open."};
  }
  if (const auto loaded = load(); !loaded) return loaded.error();
  Error error;
  WindowModule* const module = start_(host_, error);
  if (!module) return error;
  module_ = module;
  mainLoop_.handOver({.run = [module] { module->run(); }, .quit = [module] { module->quit(); }});
  return &module_->windows();
}

Result<void> LoadedWindowSystem::load() {
  if (start_) return {};
  // Never unloaded: threads and exit handlers of the toolkit may run in it until the process ends.
  void* const library = dlopen(modulePath_.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) return cannotLoad(modulePath_);
  start_ = reinterpret_cast<StartWindowModule*>(dlsym(library, windowModuleEntryPoint));
  if (!start_) return cannotLoad(modulePath_);
  return {};
}

template <class T>
Result<T> LoadedWindowSystem::reported(Result<T> outcome) {
  if (!outcome && outcome.error().description != reported_) {
    reported_ = outcome.error().description;
    host_.log(reported_);
  }
  return outcome;
}

}  // namespace quillmar
