// The sheet that creates or changes an item. Main thread.

#pragma once

#include <optional>
#include <string>

#include "config/settings_manager.h"
#include "settings_ui/editor_sheet_controller.h"

namespace quillmar {

class Checkbox;
class PopUpButton;
class ShortcutRecorderView;
class TextView;

class ItemEditorController final : public EditorSheetController {
 public:
  /// Where the item is, or will be.
  struct Place {
    std::string categoryId;
    /// A new item is inserted after this one; absent for the end of the folder.
    std::optional<std::string> afterItemId;
  };

  /// Without `existing`, the sheet creates an item. The services are not owned and must outlive the
  /// controller.
  ItemEditorController(SettingsManager& settings, WindowSystem& windows, Images& images,
                       Place place, std::optional<MenuItem> existing);

  TextField& titleField() const { return *titleField_; }
  TextField& iconField() const { return *iconField_; }
  ImageView& iconPreview() const { return *iconPreview_; }
  PopUpButton& typePopup() const { return *typePopup_; }
  TextView& commandView() const { return *commandView_; }
  TextField& inputPromptField() const { return *inputPromptField_; }
  ShortcutRecorderView& recorder() const { return *recorder_; }
  Checkbox& globalCheckbox() const { return *globalCheckbox_; }
  Checkbox& notificationCheckbox() const { return *notificationCheckbox_; }
  Checkbox& clipboardCheckbox() const { return *clipboardCheckbox_; }
  Checkbox& confirmCheckbox() const { return *confirmCheckbox_; }
  Checkbox& terminalCheckbox() const { return *terminalCheckbox_; }

  /// The type with the selected title.
  CommandType selectedType() const;

 protected:
  void focusFirstField() override;
  bool save() override;

 private:
  void addTitleAndIcon(const MenuItem& item);
  void addCommand(const MenuItem& item);
  void addShortcut(const std::optional<KeyboardShortcut>& shortcut);
  void addOptions(const MenuItem& item);
  /// AppleScripts cannot be opened in a terminal.
  void typeChanged();
  /// What the form describes, with the given title and command text.
  MenuItem editedItem(std::string title, std::string commandText) const;

  SettingsManager& settings_;
  Place place_;
  std::optional<MenuItem> existing_;
  TextField* titleField_ = nullptr;
  TextField* iconField_ = nullptr;
  ImageView* iconPreview_ = nullptr;
  PopUpButton* typePopup_ = nullptr;
  TextView* commandView_ = nullptr;
  TextField* inputPromptField_ = nullptr;
  ShortcutRecorderView* recorder_ = nullptr;
  Checkbox* globalCheckbox_ = nullptr;
  Checkbox* notificationCheckbox_ = nullptr;
  Checkbox* clipboardCheckbox_ = nullptr;
  Checkbox* confirmCheckbox_ = nullptr;
  Checkbox* terminalCheckbox_ = nullptr;
};

}  // namespace quillmar
