#include "settings_ui/document_rows.h"

#include <algorithm>

#include "platform/text.h"
#include "settings_ui/symbol_image.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {

namespace {

constexpr char rowSeparator = '|';
constexpr char escape = '\\';
constexpr char escapedSeparator = 'p';
/// Stands for an empty id.
constexpr std::string_view escapedEmptyId = "\\e";
constexpr double noteFontSize = 11;
constexpr const char* fallbackFolderSymbol = "folder";

void appendEscaped(std::string& row, std::string_view id) {
  if (id.empty()) {
    row += escapedEmptyId;
  } else if (id.find(rowSeparator) == std::string_view::npos &&
             id.find(escape) == std::string_view::npos) {
    row += id;
  } else {
    for (const char character : id) {
      if (character == rowSeparator || character == escape) row += escape;
      row += character == rowSeparator ? escapedSeparator : character;
    }
  }
}

std::string unescaped(const std::string& text) {
  if (text == escapedEmptyId) return "";
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != escape || i + 1 == text.size()) {
      result += text[i];
    } else {
      ++i;
      result += text[i] == escapedSeparator ? rowSeparator : text[i];
    }
  }
  return result;
}

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
  const std::vector<std::string> ids = text::split(*row, rowSeparator);
  if (ids.size() == 2) return Selection{unescaped(ids[0]), unescaped(ids[1])};
  return Selection{unescaped(*row), std::nullopt};
}

std::string rowOfFolder(const std::string& categoryId) {
  std::string row;
  appendEscaped(row, categoryId);
  return row;
}

std::string rowOfItem(const std::string& categoryId, const std::string& itemId) {
  std::string row;
  row.reserve(categoryId.size() + 1 + itemId.size());
  appendEscaped(row, categoryId);
  row += rowSeparator;
  appendEscaped(row, itemId);
  return row;
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
    noteIndexes();
    for (const MenuCategory* const category : categoriesInDisplayOrder(settings_.config)) {
      rows.push_back({.row = rowOfFolder(category->id), .isExpandable = !category->isSeparator});
    }
  } else if (const MenuCategory* const category = folder(unescaped(*row))) {
    rows.reserve(category->items.size());
    for (const MenuItem& item : category->items) {
      rows.push_back({.row = rowOfItem(category->id, item.id), .isExpandable = false});
    }
  }
  return rows;
}

OutlineRow DocumentRows::value(const std::string& row) {
  const std::optional<Selection> shown = Selection::fromRow(&row);
  const MenuCategory* const category = folder(shown->categoryId);
  if (category == nullptr) return {};
  if (!shown->itemId) return folderRow(*category);
  const MenuItem* const item = findItem(*category, *shown->itemId);
  return item == nullptr ? OutlineRow() : itemRow(*item, row);
}

void DocumentRows::noteIndexes() {
  const std::vector<MenuCategory>& folders = settings_.config.categories;
  indexes_.clear();
  indexes_.reserve(folders.size());
  for (std::size_t i = 0; i < folders.size(); ++i) indexes_.try_emplace(folders[i].id, i);
}

const MenuCategory* DocumentRows::folder(const std::string& id) const {
  const std::vector<MenuCategory>& folders = settings_.config.categories;
  const auto noted = indexes_.find(id);
  if (noted != indexes_.end() && noted->second < folders.size() &&
      folders[noted->second].id == id) {
    return &folders[noted->second];
  }
  return findCategory(settings_.config, id);
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
