// The About window: name, version, links and updates. Main thread.

#pragma once

#include <functional>
#include <string>

#include "platform/widgets/window.h"

namespace quillmar {

class Bundle;
class Button;
class Images;
class StackView;
class UpdaterManager;

class AboutWindowController {
 public:
  /// Creates the window and its contents; the window stays empty if the application icon is
  /// missing. `openURL` opens a URL with the default program for it. `windows` and `updaterManager`
  /// are not owned and must outlive the controller.
  AboutWindowController(WindowSystem& windows, Images& images, const Bundle& bundle,
                        const UpdaterManager& updaterManager,
                        std::function<void(const std::string& url)> openURL);

  Window& window() { return window_; }

  /// "Check for Updates…"; null if the window is empty.
  Button* updateButton() const { return updateButton_; }

  /// The https URL of the web site and the mailto URL of the support address; empty if the bundle
  /// has none.
  const std::string& siteURL() const { return siteURL_; }
  const std::string& supportURL() const { return supportURL_; }

  // Actions of the buttons.

  /// Precondition: updates are configured.
  void checkForUpdates();
  void openSite();
  void openSupport();

 private:
  void build(Images& images, const Bundle& bundle);
  void addCopyright(StackView& column, const Bundle& bundle);
  /// Adds a link button; hidden if the title is empty.
  static Button& linkButton(StackView& stack, const std::string& title,
                            std::function<void()> action);

  const UpdaterManager& updaterManager_;
  std::function<void(const std::string& url)> openURL_;
  std::string siteURL_;
  std::string supportURL_;
  Window window_;
  Button* updateButton_ = nullptr;
};

}  // namespace quillmar
