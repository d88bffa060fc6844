#include "config/settings_manager.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "config/checked_arithmetic.h"
#include "config/document_encoder.h"
#include "config/settings_location.h"
#include "platform/platform.h"

namespace quillmar {

namespace {

/// The first item with the id, or the end.
auto findItem(std::vector<MenuItem>& items, std::string_view id) {
  return std::ranges::find(items, id, &MenuItem::id);
}

/// `index + offset`; absent if it is not less than `count` or is negative.
std::optional<std::size_t> movedIndex(std::size_t index, std::int64_t offset, std::size_t count) {
  const std::int64_t target = checkedAdd(static_cast<std::int64_t>(index), offset);
  if (target < 0 || target >= static_cast<std::int64_t>(count)) return std::nullopt;
  return static_cast<std::size_t>(target);
}

/// The folder indexes in display order. Indexes, because ids may not be unique.
std::vector<std::size_t> indexesInDisplayOrder(const QuillmarConfig& config) {
  std::vector<std::size_t> indexes(config.categories.size());
  std::iota(indexes.begin(), indexes.end(), std::size_t{0});
  std::ranges::stable_sort(indexes, {},
                           [&](std::size_t index) { return config.categories[index].sortOrder; });
  return indexes;
}

}  // namespace

SettingsManager::SettingsManager(Collaborators collaborators)
    : collaborators_(std::move(collaborators)),
      settingsFile_(collaborators_.files, collaborators_.log, collaborators_.now) {
  loadFromFile();
}

SettingsManager& SettingsManager::shared() {
  static auto* manager = [] {
    const Platform& platform = Platform::shared();
    return new SettingsManager({platform.environment, platform.userDirectories, platform.files});
  }();
  return *manager;
}

std::string SettingsManager::settingsFileURL() const {
  return settingsFilePath(collaborators_.environment, collaborators_.userDirectories,
                          collaborators_.files);
}

void SettingsManager::loadFromFile() {
  const std::string path = settingsFileURL();
  config = QuillmarConfig{};
  loadError_.reset();
  if (!collaborators_.files.exists(path)) {
    isFirstLaunch_ = true;
    return;
  }

  if (auto loaded = settingsFile_.load(path, collaborators_.makeIdentifier)) {
    config = std::move(loaded).value();
  } else {
    loadError_ = loaded.error();
    collaborators_.log("Failed to load settings: " + loadError_->description);
  }
}

void SettingsManager::save() {
  const Result<void> saved = settingsFile_.overwrite(settingsFileURL(), encode(config));
  if (!saved) collaborators_.log("Failed to save settings: " + saved.error().description);
  collaborators_.notificationCenter.post(menuItemSettingsChanged);
}

std::string SettingsManager::encode(const QuillmarConfig& config) {
  return encodeDocument(config);
}

std::vector<MenuCategory> SettingsManager::categories() const {
  std::vector<MenuCategory> sorted;
  sorted.reserve(config.categories.size());
  for (const MenuCategory* category : categoriesInDisplayOrder(config)) sorted.push_back(*category);
  return sorted;
}

std::optional<MenuCategory> SettingsManager::getCategory(std::string_view id) const {
  const auto found = std::ranges::find(config.categories, id, &MenuCategory::id);
  if (found == config.categories.end()) return std::nullopt;
  return *found;
}

std::optional<ItemInCategory> SettingsManager::getItem(std::string_view id) const {
  for (const MenuCategory& category : config.categories) {
    for (const MenuItem& item : category.items) {
      if (item.id == id) return ItemInCategory{item, category.id};
    }
  }
  return std::nullopt;
}

std::vector<ItemInCategory> SettingsManager::allRunnableItems() const {
  std::vector<ItemInCategory> runnable;
  for (const MenuCategory* category : categoriesInDisplayOrder(config)) {
    if (category->isSeparator) continue;
    for (const MenuItem& item : category->items) {
      if (item.isEnabled && !item.isSeparator) runnable.push_back({item, category->id});
    }
  }
  return runnable;
}

MenuCategory SettingsManager::addCategory(std::string name,
                                          std::optional<std::string> iconSymbolName,
                                          bool showAtTopLevel) {
  MenuCategory category;
  category.id = makeUuid();
  category.name = std::move(name);
  category.sortOrder = nextSortOrder(config);
  category.iconSymbolName = std::move(iconSymbolName);
  category.showAtTopLevel = showAtTopLevel;
  config.categories.push_back(category);
  save();
  return category;
}

void SettingsManager::updateCategory(const MenuCategory& category) {
  MenuCategory* stored = findCategory(category.id);
  if (!stored) return;
  *stored = category;
  save();
}

void SettingsManager::deleteCategory(std::string_view id) {
  std::erase_if(config.categories, [&](const MenuCategory& category) { return category.id == id; });
  save();
}

void SettingsManager::moveCategory(std::string_view id, std::int64_t offset) {
  std::vector<std::size_t> order = indexesInDisplayOrder(config);
  const auto found = findInOrder(order, id);
  if (found == order.end()) return;

  const auto position = static_cast<std::size_t>(found - order.begin());
  const auto target = movedIndex(position, offset, order.size());
  if (!target) return;
  std::swap(order[position], order[*target]);
  renumber(order);
  save();
}

MenuCategory SettingsManager::addCategorySeparator(std::optional<std::string_view> afterId) {
  std::vector<std::size_t> order = indexesInDisplayOrder(config);
  auto position = order.end();
  if (afterId) {
    position = findInOrder(order, *afterId);
    if (position != order.end()) ++position;
  }
  order.insert(position, config.categories.size());

  MenuCategory separator;
  separator.id = makeUuid();
  separator.isSeparator = true;
  config.categories.push_back(separator);
  renumber(order);
  separator = config.categories.back();
  save();
  return separator;
}

void SettingsManager::addItem(const MenuItem& item, std::string_view categoryId,
                              std::optional<std::string_view> afterItemId) {
  MenuCategory* category = findCategory(categoryId);
  if (!category) return;
  auto position = category->items.end();
  if (afterItemId) {
    position = findItem(category->items, *afterItemId);
    if (position != category->items.end()) ++position;
  }
  category->items.insert(position, item);
  save();
}

void SettingsManager::updateItem(const MenuItem& item, std::string_view categoryId) {
  MenuCategory* category = findCategory(categoryId);
  if (!category) return;
  const auto stored = findItem(category->items, item.id);
  if (stored == category->items.end()) return;
  *stored = item;
  save();
}

void SettingsManager::deleteItem(std::string_view id, std::string_view categoryId) {
  MenuCategory* category = findCategory(categoryId);
  if (!category) return;
  // The id may be a view into one of the removed items.
  std::erase_if(category->items,
                [id = std::string(id)](const MenuItem& item) { return item.id == id; });
  save();
}

void SettingsManager::moveItem(std::string_view id, std::string_view categoryId,
                               std::int64_t offset) {
  MenuCategory* category = findCategory(categoryId);
  if (!category) return;
  std::vector<MenuItem>& items = category->items;
  const auto item = findItem(items, id);
  if (item == items.end()) return;

  const auto target =
      movedIndex(static_cast<std::size_t>(item - items.begin()), offset, items.size());
  if (!target) return;
  std::swap(*item, items[*target]);
  save();
}

void SettingsManager::setItemEnabled(std::string_view id, std::string_view categoryId,
                                     bool enabled) {
  MenuCategory* category = findCategory(categoryId);
  if (!category) return;
  const auto item = findItem(category->items, id);
  if (item == category->items.end()) return;
  item->isEnabled = enabled;
  save();
}

MenuCategory* SettingsManager::findCategory(std::string_view id) {
  const auto found = std::ranges::find(config.categories, id, &MenuCategory::id);
  return found == config.categories.end() ? nullptr : &*found;
}

std::vector<std::size_t>::iterator SettingsManager::findInOrder(std::vector<std::size_t>& order,
                                                                std::string_view id) const {
  return std::ranges::find_if(order,
                              [&](std::size_t index) { return config.categories[index].id == id; });
}

void SettingsManager::renumber(const std::vector<std::size_t>& order) {
  for (std::size_t position = 0; position < order.size(); ++position) {
    config.categories[order[position]].sortOrder = static_cast<std::int64_t>(position);
  }
}

}  // namespace quillmar
