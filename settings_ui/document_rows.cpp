#include "settings_ui/document_rows.h"

#include <algorithm>

#include "platform/text.h"
#include "settings_ui/symbol_image.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {

namespace {

constexpr char rowSeparator = '|';
constexpr double noteFontSize = 11;
constexpr const char* fallbackFolderSymbol = "folder";

TextCell noteCell(std::string text) {
  return {.text = std::move(text),
          .font = Font::system(noteFontSize),
          .color = TextColor::secondaryLabel};
}

OutlineRow separatorRow(std::string text, std::string spokenText) {
  return {.cells = {TextCell{.text = std::move(text), .color = TextColor::tertiaryLabel}},
          .accessibilityLabel = std::move(spokenText)};
}

}  // namespace

std::optional<Selection> Selection::fromRow(const std::string* row) {
  if (row == nullptr) return std::nullopt;
  std::vector<std::string> ids = text::split(*row, rowSeparator);
  if (ids.size() == 2) return Selection{std::move(ids[0]), std::move(ids[1])};
  return Selection{*row, std::nullopt};
}

std::string rowOfItem(const std::string& categoryId, const std::string& itemId) {
  return categoryId + rowSeparator + itemId;
}

const MenuCategory* findCategory(const QuillmarConfig& config, std::string_view id) {
  const auto found = std::ranges::find(config.categories, id, &MenuCategory::id);
  return found == config.categories.end() ? nullptr : &*found;
}

const MenuItem* findItem(const MenuCategory& category, std::string_view id) {
  const auto found = std::ranges::find(category.items, id, &MenuItem::id);
  return found == category.items.end() ? nullptr : &*found;
}

std::vector<OutlineChild> DocumentRows::children(const std::string* row) {
  std::vector<OutlineChild> rows;
  if (row == nullptr) {
    for (const MenuCategory* const category : categoriesInDisplayOrder(settings_.config)) {
      // An id with the separator in it would be the row of an item.
      const bool isItem = category->id.find(rowSeparator) != std::string::npos;
      rows.push_back({.row = category->id, .isExpandable = !category->isSeparator && !isItem});
    }
  } else if (const MenuCategory* const category = findCategory(settings_.config, *row)) {
    rows.reserve(category->items.size());
    for (const MenuItem& item : category->items) {
      rows.push_back({.row = rowOfItem(category->id, item.id), .isExpandable = false});
    }
  }
  return rows;
}

OutlineRow DocumentRows::value(const std::string& row) {
  const std::optional<Selection> shown = Selection::fromRow(&row);
  const MenuCategory* const category = findCategory(settings_.config, shown->categoryId);
  if (category == nullptr) return {};
  if (!shown->itemId) return folderRow(*category);
  const MenuItem* const item = findItem(*category, *shown->itemId);
  return item == nullptr ? OutlineRow() : itemRow(*item, row);
}

OutlineRow DocumentRows::folderRow(const MenuCategory& category) const {
  if (category.isSeparator) {
    return separatorRow("————  separator between folders", "separator between folders");
  }
  std::optional<Image> symbol = symbolImage(images_, category.iconSymbolName.value_or(""));
  if (!symbol) symbol = images_.symbol(fallbackFolderSymbol);
  OutlineRow row;
  row.cells = {
      SymbolCell{.image = std::move(symbol)},
      TextCell{
          .text = category.name, .font = Font::boldSystem(Font::defaultSize), .truncates = true}};
  if (category.showAtTopLevel) row.cells.emplace_back(noteCell("shown at top level"));
  return row;
}

OutlineRow DocumentRows::itemRow(const MenuItem& item, const std::string& row) const {
  if (item.isSeparator) return separatorRow("————  separator", "separator");
  OutlineRow shown;
  shown.cells = {CheckboxCell{.identifier = row,
                              .state = item.isEnabled ? ControlState::on : ControlState::off}};
  if (std::optional<Image> symbol = symbolImage(images_, item.iconSymbolName.value_or(""))) {
    shown.cells.emplace_back(SymbolCell{.image = std::move(symbol)});
  }
  shown.cells.emplace_back(TextCell{.text = item.title, .truncates = true});
  if (item.shortcut) {
    shown.cells.emplace_back(noteCell(ShortcutRecorderView::displayString(*item.shortcut)));
  }
  return shown;
}

}  // namespace quillmar
