#include "settings_ui/folder_editor_controller.h"

#include <utility>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/text_field.h"
#include "settings_ui/form_values.h"

namespace quillmar {

namespace {

constexpr double sheetWidth = 500;
constexpr double fieldWidth = 350;

}  // namespace

FolderEditorController::FolderEditorController(SettingsManager& settings, WindowSystem& windows,
                                               Images& images, std::optional<MenuCategory> existing)
    : EditorSheetController(windows, images, sheetWidth, existing ? "Edit Folder" : "Add Folder",
                            existing ? "Save" : "Add"),
      settings_(settings),
      existing_(std::move(existing)) {
  const MenuCategory shown = existing_.value_or(MenuCategory());

  nameField_ = &addRow<TextField>("Name:");
  nameField_->setPlaceholder("Folder name");
  nameField_->setWidth(fieldWidth);
  nameField_->setText(shown.name);

  const SymbolField icon = addSymbolField("Icon:", shown.iconSymbolName.value_or(""));
  iconField_ = &icon.field;
  iconPreview_ = &icon.preview;
  addHint("Optional. Any SF Symbol name; the SF Symbols app lists them all.");

  topLevelCheckbox_ = &addRow<Checkbox>("", "Show items directly in the menu, not in a submenu");
  topLevelCheckbox_->setState(controlState(shown.showAtTopLevel));
}

void FolderEditorController::focusFirstField() {
  window().makeFirstResponder(nameField_);
}

bool FolderEditorController::save() {
  const std::string original = existing_ ? existing_->name : "";
  const std::optional<std::string> name = trimmedOrAbsent(editedText(*nameField_, original));
  if (!name) {
    window().makeFirstResponder(nameField_);
    return false;
  }
  std::optional<std::string> icon = trimmedOrAbsent(iconField_->text());
  const bool showAtTopLevel = topLevelCheckbox_->state() == ControlState::on;

  if (existing_) {
    MenuCategory category = *existing_;
    category.name = *name;
    category.iconSymbolName = std::move(icon);
    category.showAtTopLevel = showAtTopLevel;
    settings_.updateCategory(category);
  } else {
    settings_.addCategory(*name, std::move(icon), showAtTopLevel);
  }
  return true;
}

}  // namespace quillmar
