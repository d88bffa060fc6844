// Owns the toolkit's application object, its main loop and its screen. There is one in a process,
// and it is never destroyed.

#pragma once

#include <QApplication>
#include <string>
#include <vector>

#include "platform/qt/module/color_scheme.h"
#include "platform/qt/windows/qt_window_system.h"
#include "platform/result.h"
#include "platform/window_module.h"

namespace quillmar {

class QtWindowModule final : public WindowModule {
 public:
  /// Fails, without side effects, if no window could be shown.
  static Result<QtWindowModule*> start(const WindowModuleHost& host);

  WindowSystem& windows() override { return windows_; }
  void run() override;
  void quit() override;

 private:
  /// `platform` must be usable.
  QtWindowModule(const WindowModuleHost& host, std::string platform);

  /// The toolkit keeps pointers into these.
  std::vector<std::string> arguments_;
  std::vector<char*> argumentValues_;
  int argumentCount_;
  QApplication application_;
  ColorScheme colorScheme_;
  QtWindowSystem windows_;
};

}  // namespace quillmar
