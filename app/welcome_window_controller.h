// The window that greets the user on the first launch. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/widgets/window.h"

namespace quillmar {

class StackView;
struct Platform;

class WelcomeWindowController {
 public:
  /// Makes an empty window. `openURL` opens an address with the user's browser. The platform is not
  /// owned and must outlive the controller.
  WelcomeWindowController(Platform& platform, std::function<void(const std::string& url)> openURL);

  /// Fills the window, which says how many commands were installed. Called once.
  void buildUI(std::size_t installedItemCount);

  Window& window() { return window_; }

  /// What "Open Settings" calls once the window is closed; may be empty.
  std::function<void()> openSettings;

 private:
  void addButtons(StackView& column);
  void openSettingsPressed();

  Platform& platform_;
  std::function<void(const std::string& url)> openURL_;
  Window window_;
};

}  // namespace quillmar
