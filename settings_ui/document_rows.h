// The rows of the outline in the settings window: the folders of the document and their items.
//
// The row of a folder is its id. The row of an item is the id of its folder, "|" and its own id.
// Ids are escaped in rows: an empty id becomes "\e", "|" becomes "\p" and "\" becomes "\\". Main
// thread.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "config/settings_manager.h"
#include "platform/image.h"
#include "platform/widgets/outline_view.h"

namespace quillmar {

/// What a row stands for.
struct Selection {
  std::string categoryId;
  /// Absent for a folder.
  std::optional<std::string> itemId;

  /// Null for no row.
  static std::optional<Selection> fromRow(const std::string* row);

  bool operator==(const Selection&) const = default;
};

std::string rowOfFolder(const std::string& categoryId);
std::string rowOfItem(const std::string& categoryId, const std::string& itemId);

/// Null if there is none. The pointers are valid until the document changes.
const MenuCategory* findCategory(const QuillmarConfig& config, std::string_view id);
const MenuItem* findItem(const MenuCategory& category, std::string_view id);

/// Reads the live document at each call.
class DocumentRows final : public OutlineDataSource {
 public:
  /// Not owned; both must outlive the rows.
  DocumentRows(const SettingsManager& settings, Images& images)
      : settings_(settings), images_(images) {}

  std::vector<OutlineChild> children(const std::string* row) override;
  OutlineRow value(const std::string& row) override;

 private:
  void noteIndexes();
  /// The same as findCategory(). Fast unless the folders have changed since the top level was read.
  const MenuCategory* folder(const std::string& id) const;
  OutlineRow folderRow(const MenuCategory& category) const;
  OutlineRow itemRow(const MenuItem& item, const std::string& row) const;

  const SettingsManager& settings_;
  Images& images_;
  /// Where the folders were when the top level was read, by id.
  std::unordered_map<std::string, std::size_t> indexes_;
};

}  // namespace quillmar
