// The sheet that creates or changes a folder. Main thread.

#pragma once

#include <optional>

#include "config/settings_manager.h"
#include "settings_ui/editor_sheet_controller.h"

namespace quillmar {

class Checkbox;

class FolderEditorController final : public EditorSheetController {
 public:
  /// Without `existing`, the sheet creates a folder. The services are not owned and must outlive
  /// the controller.
  FolderEditorController(SettingsManager& settings, WindowSystem& windows, Images& images,
                         std::optional<MenuCategory> existing);

  TextField& nameField() const { return *nameField_; }
  TextField& iconField() const { return *iconField_; }
  ImageView& iconPreview() const { return *iconPreview_; }
  Checkbox& topLevelCheckbox() const { return *topLevelCheckbox_; }

 protected:
  void focusFirstField() override;
  bool save() override;

 private:
  SettingsManager& settings_;
  std::optional<MenuCategory> existing_;
  TextField* nameField_ = nullptr;
  TextField* iconField_ = nullptr;
  ImageView* iconPreview_ = nullptr;
  Checkbox* topLevelCheckbox_ = nullptr;
};

}  // namespace quillmar
