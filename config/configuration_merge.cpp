#include <cstddef>
#include <cstdint>
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

std::vector<MergeStep> QuillmarConfig::mergeSteps(const QuillmarConfig& other) const {
  // The folders of the result.
  std::vector<const MenuCategory*> folders;
  folders.reserve(categories.size() + other.categories.size());
  for (const MenuCategory& folder : categories) folders.push_back(&folder);

  FolderPositions positions = positionsById(categories);
  ItemIdsOfFolders idsOfFolders;
  std::vector<MergeStep> steps;
  for (const MenuCategory* folder : categoriesInDisplayOrder(other)) {
    const auto [found, isNew] = positions.emplace(folder->id, folders.size());
    const std::size_t position = found->second;
    if (isNew) folders.push_back(folder);
    MergeStep& step = steps.emplace_back(MergeStep{.source = folder,
                                                   .target = folders[position],
                                                   .position = position,
                                                   .items = {},
                                                   .addsFolder = isNew});
    if (isNew) {
      for (const MenuItem& item : folder->items) step.items.push_back(&item);
      continue;
    }
    ItemIds& known = idsOfFolders.at(position, *step.target);
    for (const MenuItem& item : folder->items) {
      if (!known.contains(item.id)) step.items.push_back(&item);
    }
    // Updated only now: a pack's folder may contain several items with the same new id, and all of
    // them are added.
    for (const MenuItem* item : step.items) known.insert(item->id);
  }
  return steps;
}

QuillmarConfig QuillmarConfig::merging(const QuillmarConfig& other) const {
  QuillmarConfig merged = *this;
  merged.version = QuillmarConfig().version;
  std::int64_t nextOrder = nextSortOrder(*this);
  for (const MergeStep& step : mergeSteps(other)) {
    if (step.addsFolder) {
      merged.categories.push_back(*step.source);
      merged.categories.back().sortOrder = nextOrder;
      nextOrder = checkedAdd(nextOrder, 1);
      continue;
    }
    std::vector<MenuItem>& items = merged.categories[step.position].items;
    for (const MenuItem* item : step.items) items.push_back(*item);
  }
  return merged;
}

MergePreview QuillmarConfig::mergePreview(const QuillmarConfig& other) const {
  const FolderPositions positions = positionsById(categories);
  ItemIdsOfFolders idsOfFolders;
  MergePreview preview;
  for (const MenuCategory& folder : other.categories) {
    const auto found = positions.find(folder.id);
    const bool isNew = found == positions.end();
    if (isNew && folder.isSeparator) continue;
    if (isNew) preview.categories = checkedAdd(preview.categories, 1);
    const ItemIds noIds;
    const ItemIds& known =
        isNew ? noIds : idsOfFolders.at(found->second, categories[found->second]);
    for (const MenuItem& item : folder.items) {
      if (item.isSeparator || known.contains(item.id)) continue;
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
