#include "settings_ui/item_editor_controller.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "platform/uuid.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/pop_up_button.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "settings_ui/form_values.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {

namespace {

constexpr double sheetWidth = 520;
constexpr double fieldWidth = 370;
constexpr double commandHeight = 90;
constexpr double commandFontSize = 11;
constexpr double recorderWidth = 180;
constexpr double recorderHeight = 24;
constexpr double shortcutSpacing = 10;
constexpr double optionSpacing = 6;

std::vector<std::string> typeTitles() {
  std::vector<std::string> titles;
  for (const CommandType type : allCommandTypes) titles.emplace_back(rawValue(type));
  return titles;
}

std::size_t indexOf(CommandType type) {
  return static_cast<std::size_t>(std::ranges::find(allCommandTypes, type) -
                                  std::begin(allCommandTypes));
}

bool isOn(const Checkbox& checkbox) {
  return checkbox.state() == ControlState::on;
}

Checkbox& addOption(StackView& column, const std::string& title, bool isOn) {
  auto& checkbox = column.add<Checkbox>(title);
  checkbox.setState(controlState(isOn));
  return checkbox;
}

}  // namespace

ItemEditorController::ItemEditorController(SettingsManager& settings, WindowSystem& windows,
                                           Images& images, Place place,
                                           std::optional<MenuItem> existing)
    : EditorSheetController(windows, images, sheetWidth, existing ? "Edit Item" : "Add Item",
                            existing ? "Save" : "Add"),
      settings_(settings),
      place_(std::move(place)),
      existing_(std::move(existing)) {
  const MenuItem shown = existing_.value_or(MenuItem());
  addTitleAndIcon(shown);
  addCommand(shown);
  addShortcut(shown.shortcut);
  addOptions(shown);
  typeChanged();
}

void ItemEditorController::addTitleAndIcon(const MenuItem& item) {
  titleField_ = &addRow<TextField>("Title:");
  titleField_->setPlaceholder("Menu item title");
  titleField_->setWidth(fieldWidth);
  titleField_->setText(item.title);

  const SymbolField icon = addSymbolField("Icon:", item.iconSymbolName.value_or(""));
  iconField_ = &icon.field;
  iconPreview_ = &icon.preview;
}

void ItemEditorController::addCommand(const MenuItem& item) {
  typePopup_ = &addRow<PopUpButton>("Type:", typeTitles());
  typePopup_->setSelectedIndex(indexOf(item.command.type));
  typePopup_->setOnSelect([this](std::size_t) { typeChanged(); });

  commandView_ = &addRow<TextView>("Command:");
  commandView_->setFont({.size = commandFontSize, .monospaced = true});
  commandView_->setWidth(fieldWidth);
  commandView_->setHeight(commandHeight);
  commandView_->setText(item.command.value);
  addHint("Use {{input}} anywhere in the command to be asked for a value when it runs.");

  inputPromptField_ = &addRow<TextField>("Input label:");
  inputPromptField_->setPlaceholder("Question shown when asking for {{input}}");
  inputPromptField_->setWidth(fieldWidth);
  inputPromptField_->setText(item.inputPrompt.value_or(""));
}

void ItemEditorController::addShortcut(const std::optional<KeyboardShortcut>& shortcut) {
  auto& row = addRow<StackView>("Shortcut:", Orientation::horizontal);
  row.setSpacing(shortcutSpacing);

  recorder_ = &row.add<ShortcutRecorderView>();
  recorder_->setWidth(recorderWidth);
  recorder_->setHeight(recorderHeight);
  recorder_->setShortcut(shortcut);

  globalCheckbox_ = &row.add<Checkbox>("Works system-wide");
  globalCheckbox_->setState(controlState(!shortcut || shortcut->isGlobal));
  addHint(
      "Click, then press keys. Delete clears it. System-wide shortcuts work even when the menu is "
      "closed.");
}

void ItemEditorController::addOptions(const MenuItem& item) {
  auto& column = addRow<StackView>("Options:", Orientation::vertical);
  column.setAlignment(StackAlignment::leading);
  column.setSpacing(optionSpacing);
  notificationCheckbox_ =
      &addOption(column, "Show notification with output", item.command.showNotification);
  clipboardCheckbox_ = &addOption(column, "Copy output to clipboard", item.command.copyToClipboard);
  confirmCheckbox_ = &addOption(column, "Ask before running", item.confirmBeforeRunning);
  terminalCheckbox_ = &addOption(column, "Open in Terminal", item.command.openInTerminal);
}

CommandType ItemEditorController::selectedType() const {
  return commandTypeFromRawValue(typePopup_->selectedTitle()).value_or(CommandType::shellCommand);
}

void ItemEditorController::typeChanged() {
  const bool canOpenInTerminal = selectedType() != CommandType::appleScript;
  terminalCheckbox_->setEnabled(canOpenInTerminal);
  if (!canOpenInTerminal) terminalCheckbox_->setState(ControlState::off);
}

void ItemEditorController::focusFirstField() {
  window().makeFirstResponder(titleField_);
}

bool ItemEditorController::save() {
  const std::string original = existing_ ? existing_->title : "";
  std::optional<std::string> title = trimmedOrAbsent(editedText(*titleField_, original));
  if (!title) {
    window().makeFirstResponder(titleField_);
    return false;
  }
  std::string commandText(text::trimWhitespaceAndNewlines(commandView_->text()));
  if (commandText.empty()) {
    window().makeFirstResponder(commandView_);
    return false;
  }
  const MenuItem item = editedItem(std::move(*title), std::move(commandText));
  if (existing_) {
    settings_.updateItem(item, place_.categoryId);
  } else {
    settings_.addItem(item, place_.categoryId, place_.afterItemId);
  }
  return true;
}

MenuItem ItemEditorController::editedItem(std::string title, std::string commandText) const {
  MenuItem item = existing_.value_or(MenuItem());
  if (!existing_) item.id = makeUuid();
  item.title = std::move(title);
  item.command = {
      .type = selectedType(),
      .value = std::move(commandText),
      .runInBackground = true,
      .showNotification = isOn(*notificationCheckbox_),
      .copyToClipboard = isOn(*clipboardCheckbox_),
      .openInTerminal = isOn(*terminalCheckbox_),
  };
  item.shortcut = recorder_->shortcut();
  if (item.shortcut) item.shortcut->isGlobal = isOn(*globalCheckbox_);
  item.iconSymbolName = trimmedOrAbsent(iconField_->text());
  item.inputPrompt = trimmedOrAbsent(editedText(*inputPromptField_, item.inputPrompt.value_or("")));
  item.confirmBeforeRunning = isOn(*confirmCheckbox_);
  return item;
}

}  // namespace quillmar
