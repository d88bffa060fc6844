#include "settings_ui/editor_sheet_controller.h"

#include "platform/key_equivalent.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "settings_ui/symbol_completions.h"
#include "settings_ui/symbol_image.h"

namespace quillmar {

namespace {

constexpr double initialHeight = 200;
constexpr double margin = 20;
constexpr double rowSpacing = 16;
constexpr double buttonSpacing = 8;
constexpr double gridSpacing = 10;
constexpr double labelColumnWidth = 90;
constexpr double hintFontSize = 10;
constexpr double hintPadding = -6;
constexpr double symbolFieldWidth = 260;
constexpr double symbolPreviewSize = 22;
constexpr double symbolFieldSpacing = 8;

}  // namespace

EditorSheetController::EditorSheetController(WindowSystem& windows, Images& images, double width,
                                             const std::string& title, const std::string& saveTitle)
    : images_(images), window_(windows) {
  window_.setTitle(title);
  window_.setContentSize({.width = width, .height = initialHeight});
  window_.setDelegate(this);

  auto& column = window_.setContent<StackView>(Orientation::vertical);
  column.setAlignment(StackAlignment::leading);
  column.setSpacing(rowSpacing);
  column.setEdgeInsets({margin, margin, margin, margin});

  const double contentWidth = width - 2 * margin;
  grid_ = &column.add<GridView>();
  grid_->setWidth(contentWidth);
  grid_->setRowSpacing(gridSpacing);
  grid_->setColumnSpacing(gridSpacing);
  grid_->setFirstColumnWidth(labelColumnWidth);
  // Keeps the buttons at the bottom if the sheet is taller than the form.
  column.setCustomSpacing(0, *grid_);
  column.add<FlexibleSpace>();
  addButtons(column, contentWidth, saveTitle);
}

void EditorSheetController::addButtons(StackView& column, double width,
                                       const std::string& saveTitle) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setWidth(width);
  row.setSpacing(buttonSpacing);
  row.add<FlexibleSpace>();

  auto& cancel = row.add<Button>("Cancel");
  cancel.setKeyEquivalent(keys::escape);
  cancel.setOnPress([this] { cancelPressed(); });

  saveButton_ = &row.add<Button>(saveTitle);
  saveButton_->setKeyEquivalent(keys::returnKey);
  saveButton_->setOnPress([this] { savePressed(); });
}

void EditorSheetController::addHint(const std::string& text) {
  auto& hint = grid_->addRow<Label>("", text, Font::system(hintFontSize));
  hint.setColor(TextColor::secondaryLabel);
  hint.setWraps(true);
  grid_->setTopPadding(hintPadding, hint);
}

EditorSheetController::SymbolField EditorSheetController::addSymbolField(
    const std::string& label, const std::string& initial) {
  auto& row = grid_->addRow<StackView>(label, Orientation::horizontal);
  row.setSpacing(symbolFieldSpacing);

  auto& field = row.add<TextField>();
  field.setAccessibilityLabel(row.accessibilityLabel());
  field.setPlaceholder("SF Symbol name, e.g. bolt.fill");
  field.setText(initial);
  field.setWidth(symbolFieldWidth);
  field.setCompletions(
      [this](const std::string& typed) { return symbolCompletions(images_, typed); });

  auto& preview = row.add<ImageView>(symbolImage(images_, initial));
  preview.setWidth(symbolPreviewSize);
  preview.setHeight(symbolPreviewSize);
  preview.setAccessibilityLabel("Preview of the icon");
  field.setOnEdit(
      [this, &preview](const std::string& name) { preview.setImage(symbolImage(images_, name)); });
  return {field, preview};
}

Result<void> EditorSheetController::present(Window& parent, Completion completion) {
  completion_ = std::move(completion);
  isSaved_ = false;
  Result<void> shown = parent.beginSheet(window_, {});
  if (shown) focusFirstField();
  return shown;
}

void EditorSheetController::cancelPressed() {
  end(false);
}

void EditorSheetController::savePressed() {
  if (save()) end(true);
}

void EditorSheetController::end(bool saved) {
  isSaved_ = saved;
  window_.close();
}

void EditorSheetController::windowWillClose(Window& /*window*/) {
  // Copies, because the completion may destroy the controller.
  const Completion completion = std::exchange(completion_, {});
  const bool saved = isSaved_;
  if (completion) completion(saved);
}

}  // namespace quillmar
