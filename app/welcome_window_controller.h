// The welcome window of the first launch. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/widgets/window.h"

namespace quillmar {

class Bundle;
class Images;
class StackView;

class WelcomeWindowController {
 public:
  /// Creates an empty window. `openURL` opens a URL in the user's browser. The services are not
  /// owned and must outlive the controller.
  WelcomeWindowController(WindowSystem& windows, Images& images, const Bundle& bundle,
                          std::function<void(const std::string& url)> openURL);

  /// Fills the window. The text names the number of installed commands. Called once.
  void buildUI(std::size_t installedItemCount);

  Window& window() { return window_; }

  /// Called by "Open Settings" after the window is closed; may be empty.
  std::function<void()> openSettings;

 private:
  void addButtons(StackView& column);
  void openSettingsPressed();

  Images& images_;
  const Bundle& bundle_;
  std::function<void(const std::string& url)> openURL_;
  Window window_;
};

}  // namespace quillmar
