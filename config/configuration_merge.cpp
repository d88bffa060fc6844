#include <cstddef>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include "config/checked_arithmetic.h"
#include "config/quillmar_config.h"

namespace quillmar {

namespace {

// Ordered rather than hashed: a pack comes from anywhere, and its author may have picked ids whose
// hashes collide. The texts stay in the documents.

/// Folders by their ids; of several with the same id, the first.
using FolderPositions = std::map<std::string_view, std::size_t>;
using ItemIds = std::set<std::string_view>;

FolderPositions positionsById(const std::vector<MenuCategory>& folders) {
  FolderPositions positions;
  for (std::size_t i = 0; i < folders.size(); ++i) positions.emplace(folders[i].id, i);
  return positions;
}

/// The item ids of folders that a pack adds to, collected at the first question for a folder: a
/// pack may name the same folder any number of times.
class ItemIdsOfFolders {
 public:
  /// The ids in the folder at `position`, to be added to when the folder grows. At the first call
  /// for a position they are taken from `folder`.
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

  // Where each folder of the result came from. The result's own strings move when it grows.
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
    // Only now: a pack's folder may hold several items with the same new id, and all of them count.
    known.insert(added.begin(), added.end());
  }
  return merged;
}

MergePreview QuillmarConfig::mergePreview(const QuillmarConfig& other) const {
  const FolderPositions positions = positionsById(categories);
  ItemIdsOfFolders idsOfFolders;
  MergePreview preview;
  for (const MenuCategory& folder : other.categories) {
    const auto found = positions.find(folder.id);
    const ItemIds* known = nullptr;
    if (found != positions.end()) {
      known = &idsOfFolders.at(found->second, categories[found->second]);
    } else if (folder.isSeparator) {
      continue;
    } else {
      preview.categories = checkedAdd(preview.categories, 1);
    }
    for (const MenuItem& item : folder.items) {
      if (item.isSeparator || (known && known->contains(item.id))) continue;
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
