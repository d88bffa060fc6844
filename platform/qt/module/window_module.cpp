#include "platform/window_module.h"

#include <QApplication>
#include <QIcon>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/qt/module/desktop_appearance.h"
#include "platform/qt/module/display_probe.h"
#include "platform/qt/windows/qt_window_system.h"

namespace quillmar {

namespace {

class QtWindowModule final : public WindowModule {
 public:
  QtWindowModule(const WindowModuleHost& host, std::string platform)
      : platform_(std::move(platform)),
        program_(host.applicationName),
        arguments_{program_.data(), option_.data(), platform_.data(), nullptr},
        application_(count_, arguments_.data()),
        windows_(host.mainQueue) {
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QString::fromStdString(host.applicationName));
    QApplication::setApplicationVersion(QString::fromStdString(host.applicationVersion));
    QApplication::setDesktopFileName(QString::fromStdString(host.applicationId));
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths()
                               << QString::fromStdString(host.iconThemePath));
    QApplication::setWindowIcon(QIcon::fromTheme(QString::fromStdString(host.applicationId)));
    followDesktopAppearance(host.environment);
  }

  WindowSystem& windows() override { return windows_; }

  void run() override {
    running_ = true;
    QApplication::exec();
    running_ = false;
  }

  void quit() override { QApplication::quit(); }

  bool running() const { return running_; }

 private:
  std::string platform_;
  std::string program_;
  std::string option_ = "-platform";
  int count_ = 3;
  std::array<char*, 4> arguments_;
  QApplication application_;
  QtWindowSystem windows_;
  bool running_ = false;
};

QtWindowModule* module = nullptr;

/// The toolkit ends the process where it stands when its display has gone, while commands still run
/// on threads of their own. Nothing that they use may be destroyed under them.
void endWithoutDisplay() {
  if (module == nullptr || !module->running()) return;
  std::puts("The display is gone, so Quillmar ends.");
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

}  // namespace quillmar

quillmar::WindowModule* quillmar_start_window_module(const quillmar::WindowModuleHost& host,
                                                     quillmar::Error& error) {
  using namespace quillmar;
  auto display = findDisplay(host.environment);
  if (!display) {
    error = display.error();
    return nullptr;
  }
  module = new QtWindowModule(host, std::move(display).value());
  // Registered after the toolkit's own handlers, so it runs before them.
  std::atexit(endWithoutDisplay);
  return module;
}
