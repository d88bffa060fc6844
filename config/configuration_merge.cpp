#include <cstddef>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include "config/checked_arithmetic.h"
#include "config/quillmar_config.h"

namespace quillmar {

namespace {

// Ordered maps instead of hash maps: packs are untrusted, and their ids may be chosen so that
// hashes collide. The keys refer to strings in the documents.

/// Folders by id; of duplicate ids, the first.
using FolderPositions = std::map<std::string_view, std::size_t>;
using ItemIds = std::set<std::string_view>;

FolderPositions positionsById(const std::vector<MenuCategory>& folders) {
  FolderPositions positions;
  for (std::size_t i = 0; i < folders.size(); ++i) positions.emplace(folders[i].id, i);
  return positions;
}

/// The item ids of folders that a pack adds to. Collected once per folder, because a pack may
/// contain the same folder many times.
class ItemIdsOfFolders {
 public:
  /// The ids in the folder at `position`, which the caller updates when the folder grows. The first
  /// call for a position collects them from `folder`.
  ItemIds& at(std::size_t position, const MenuCategory& folder) {
    const auto [entry, isNew] = idsByPosition_.try_emplace(position);
    if (isNew) {
      for (const MenuItem& item : folder.items) entry->second.insert(item.id);
    }
    return entry->second;
  }

 private:
  std::map<std::size_t, ItemIds> idsByPosition_;
};

}  // namespace

QuillmarConfig QuillmarConfig::merging(const QuillmarConfig& other) const {
  QuillmarConfig merged = *this;
  merged.version = QuillmarConfig().version;
  std::int64_t nextOrder = nextSortOrder(*this);

  // The source of each folder of the result. The strings of the result move when it grows.
  std::vector<const MenuCategory*> origins;
  origins.reserve(categories.size() + other.categories.size());
  for (const MenuCategory& folder : categories) origins.push_back(&folder);

  FolderPositions positions = positionsById(categories);
  ItemIdsOfFolders idsOfFolders;
  for (const MenuCategory* folder : categoriesInDisplayOrder(other)) {
    const auto [found, isNew] = positions.emplace(folder->id, merged.categories.size());
    if (isNew) {
      origins.push_back(folder);
      merged.categories.push_back(*folder);
      merged.categories.back().sortOrder = nextOrder;
      nextOrder = checkedAdd(nextOrder, 1);
      continue;
    }
    const std::size_t position = found->second;
    ItemIds& known = idsOfFolders.at(position, *origins[position]);
    std::vector<std::string_view> added;
    for (const MenuItem& item : folder->items) {
      if (known.contains(item.id)) continue;
      merged.categories[position].items.push_back(item);
      added.emplace_back(item.id);
    }
    // Updated only now: a pack's folder may contain several items with the same new id, and all of
    // them are added.
    known.insert(added.begin(), added.end());
  }
  return merged;
}

std::vector<AddedItem> QuillmarConfig::addedItems(const QuillmarConfig& other) const {
  const FolderPositions positions = positionsById(categories);
  ItemIdsOfFolders idsOfFolders;
  std::vector<AddedItem> added;
  for (const MenuCategory& folder : other.categories) {
    const auto found = positions.find(folder.id);
    const MenuCategory* existing = nullptr;
    const ItemIds* known = nullptr;
    if (found != positions.end()) {
      existing = &categories[found->second];
      known = &idsOfFolders.at(found->second, *existing);
    }
    for (const MenuItem& item : folder.items) {
      if (known != nullptr && known->contains(item.id)) continue;
      added.push_back({.item = &item,
                       .folder = existing != nullptr ? existing : &folder,
                       .isInNewFolder = existing == nullptr});
    }
  }
  return added;
}

MergePreview QuillmarConfig::mergePreview(const QuillmarConfig& other) const {
  const FolderPositions positions = positionsById(categories);
  MergePreview preview;
  for (const MenuCategory& folder : other.categories) {
    if (folder.isSeparator || positions.contains(folder.id)) continue;
    preview.categories = checkedAdd(preview.categories, 1);
  }
  for (const AddedItem& added : addedItems(other)) {
    const bool isInNewSeparator = added.isInNewFolder && added.folder->isSeparator;
    if (!added.item->isSeparator && !isInNewSeparator) {
      preview.items = checkedAdd(preview.items, 1);
    }
  }
  return preview;
}

QuillmarConfig QuillmarConfig::replacingFolders(const QuillmarConfig& other) const {
  QuillmarConfig replaced;
  replaced.version = other.version;
  replaced.categories = other.categories;
  replaced.preferences = preferences;
  return replaced;
}

}  // namespace quillmar
