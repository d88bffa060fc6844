// The settings window: the tab "Menu Items" shows the whole document as an outline with buttons
// that add, edit, delete, reorder and enable entries; the tab "General" is a GeneralTab. Each
// change goes to the settings manager at once. The window is updated when the manager posts a
// change, so it also shows changes made elsewhere. Packs can be dropped on the window. Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "about/updater_manager.h"
#include "config/settings_manager.h"
#include "platform/log.h"
#include "platform/notification_center.h"
#include "platform/widgets/window.h"
#include "settings_ui/document_rows.h"

namespace quillmar {

class EditorSheetController;
class FileSystem;
class GeneralTab;
class ImportCoordinator;
class LoginItem;
class StackView;
class TabView;
class TaskQueue;
class Workspace;

class SettingsWindowController {
 public:
  /// Not owned; all must outlive the controller.
  struct Collaborators {
    SettingsManager& settings;
    UpdaterManager& updaterManager;
    ImportCoordinator& importCoordinator;
    FileSystem& files;
    TaskQueue& mainQueue;
    WindowSystem& windows;
    Images& images;
    LoginItem& loginItem;
    Workspace& workspace;
    NotificationCenter& notificationCenter;
    LogLine log;
  };

  /// Builds the window without showing it.
  explicit SettingsWindowController(Collaborators collaborators);
  ~SettingsWindowController();

  SettingsWindowController(const SettingsWindowController&) = delete;
  SettingsWindowController& operator=(const SettingsWindowController&) = delete;

  Window& window() { return window_; }

  /// Shows the window, with the current state of the login item, which other programs can change.
  Result<void> show(const Activation& activation);

  OutlineView& outlineView() const { return *outlineView_; }
  TabView& tabView() const { return *tabView_; }
  GeneralTab& generalTab() const { return *generalTab_; }
  /// Null if no editor is open.
  EditorSheetController* activeSheet() const { return activeSheet_.get(); }

  /// What the selected row stands for; absent if no row is selected.
  std::optional<Selection> selection() const;

  // Actions of the controls. An action that does not apply to the selection does nothing.

  void addFolder();
  void addItem();
  void addSeparator();
  void editSelected();
  /// Deletes separators at once, and asks before it deletes other entries.
  void deleteSelected();
  void moveSelectionUp() { moveSelection(-1); }
  void moveSelectionDown() { moveSelection(1); }
  /// Enables or disables the item of a row.
  void itemCheckboxChanged(const std::string& row, ControlState state);
  /// Asks for a file with a pack or settings, and imports it.
  void importSettings();
  /// Asks for a file, and writes the document to it without its name and description.
  void exportSettings();
  void closeWindow();

  /// Called when the document has changed.
  void settingsChanged();

 private:
  void buildMenuTab(StackView& column);
  void addEditButtons(StackView& column);
  void addFileButtons(StackView& column);
  /// The folder that gets a new item. Creates one if the document has no folder.
  std::string targetCategoryId();
  void present(std::unique_ptr<EditorSheetController> editor);
  void confirmDeletion(const std::string& message, const std::string& name,
                       const std::string& consequence, std::function<void()> deleteEntry);
  void deleteFolder(const MenuCategory& category);
  void deleteItem(const MenuCategory& category, const std::string& itemId);
  void moveSelection(std::int64_t offset);
  void exportTo(const std::string& path);

  Collaborators collaborators_;
  DocumentRows rows_;
  Window window_;
  std::unique_ptr<GeneralTab> generalTab_;
  std::unique_ptr<EditorSheetController> activeSheet_;
  OutlineView* outlineView_ = nullptr;
  TabView* tabView_ = nullptr;
  NotificationCenter::Observation settingsObservation_;
};

}  // namespace quillmar
