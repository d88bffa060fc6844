// The tab "General" of the settings window: start at login, the preferences of the document,
// updates, and where the settings are stored. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "about/updater_manager.h"
#include "config/settings_manager.h"
#include "platform/log.h"
#include "platform/login_item.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/window.h"
#include "platform/workspace.h"

namespace quillmar {

class Checkbox;

class GeneralTab {
 public:
  /// Not owned; all must outlive the tab.
  struct Collaborators {
    SettingsManager& settings;
    UpdaterManager& updaterManager;
    LoginItem& loginItem;
    Workspace& workspace;
    LogLine log;
  };

  /// Fills the column and refreshes the tab. `window` contains the column; alerts are its sheets.
  GeneralTab(Collaborators collaborators, Window& window, StackView& column);

  GeneralTab(const GeneralTab&) = delete;
  GeneralTab& operator=(const GeneralTab&) = delete;

  /// Shows the current state of the login item, the preferences and the updater.
  void refresh();

  Checkbox& launchAtLoginCheckbox() const { return *launchAtLoginCheckbox_; }
  Checkbox& failureCheckbox() const { return *failureCheckbox_; }
  Checkbox& loginShellCheckbox() const { return *loginShellCheckbox_; }
  Checkbox& flattenCheckbox() const { return *flattenCheckbox_; }
  Checkbox& autoUpdateCheckbox() const { return *autoUpdateCheckbox_; }

  // Actions of the controls.

  void launchAtLoginChanged();
  /// Stores the three preferences and saves the document, if one of them has changed.
  void preferenceChanged();
  void autoUpdateChanged();
  void checkForUpdates();
  void revealSettingsFile();

 private:
  void addStartup(StackView& column);
  void addRunningCommands(StackView& column);
  void addMenu(StackView& column);
  void addUpdates(StackView& column);
  void addStorage(StackView& column);
  Checkbox& addPreference(StackView& column, const std::string& title);
  void showAlert(const std::string& message, const std::string& informativeText);

  Collaborators collaborators_;
  Window& window_;
  Checkbox* launchAtLoginCheckbox_ = nullptr;
  Checkbox* failureCheckbox_ = nullptr;
  Checkbox* loginShellCheckbox_ = nullptr;
  Checkbox* flattenCheckbox_ = nullptr;
  Checkbox* autoUpdateCheckbox_ = nullptr;
  /// Expires when the tab is destroyed.
  std::shared_ptr<GeneralTab*> self_ = std::make_shared<GeneralTab*>(this);
};

}  // namespace quillmar
