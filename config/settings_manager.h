// Owns the live document: loads it, answers queries, performs edits, and after each edit saves the
// document and posts a notification. Main thread.

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/quillmar_config.h"
#include "config/settings_file.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/log.h"
#include "platform/notification_center.h"
#include "platform/user_directories.h"
#include "platform/uuid.h"

namespace quillmar {

/// Posted after every save, whether or not the file could be written.
inline constexpr std::string_view menuItemSettingsChanged = "menuItemSettingsChanged";

/// An item and the id of the folder that holds it.
struct ItemInCategory {
  MenuItem item;
  std::string categoryId;

  bool operator==(const ItemInCategory&) const = default;
};

class SettingsManager {
 public:
  /// Not owned; all must outlive the manager.
  struct Collaborators {
    const Environment& environment;
    const UserDirectories& userDirectories;
    FileSystem& files;
    NotificationCenter& notificationCenter = NotificationCenter::defaultCenter();
    LogLine log = logToStandardOutput;
    SettingsFile::Clock now = std::chrono::system_clock::now;
    /// Creates ids for loaded folders and items without one.
    std::function<std::string()> makeIdentifier = makeUuid;
  };

  /// Loads the settings file.
  explicit SettingsManager(Collaborators collaborators);

  SettingsManager(const SettingsManager&) = delete;
  SettingsManager& operator=(const SettingsManager&) = delete;

  /// The process-wide manager, created on first use from the installed platform.
  static SettingsManager& shared();

  /// The live document. Call save() after changing it directly.
  QuillmarConfig config;

  /// True if there was no settings file to load.
  bool isFirstLaunch() const { return isFirstLaunch_; }

  /// The error of the last load; absent if it succeeded or there was no file.
  const std::optional<Error>& loadError() const { return loadError_; }

  // Location and persistence.

  /// Path of the settings file, determined at every call; see settingsFilePath().
  std::string settingsFileURL() const;

  /// Replaces the document with the contents of the file. Uses an empty document if there is no
  /// file (a first launch) or if it cannot be read or decoded (logs one line). Writes nothing.
  void loadFromFile();

  /// Writes the document to the settings file and posts menuItemSettingsChanged. Logs a failure to
  /// write.
  void save();

  /// Encodes a document as save() does.
  static std::string encode(const QuillmarConfig& config);

  // Queries.

  /// The folders in display order, including separators.
  std::vector<MenuCategory> categories() const;

  /// The first folder with the id.
  std::optional<MenuCategory> getCategory(std::string_view id) const;

  /// The first item with the id, in document order.
  std::optional<ItemInCategory> getItem(std::string_view id) const;

  /// The enabled items of all folders in display order, without separators of either kind.
  std::vector<ItemInCategory> allRunnableItems() const;

  // Edits. Each edit that changes the document calls save(). An unknown id changes nothing.

  /// Appends a new folder that sorts last, and returns it.
  MenuCategory addCategory(std::string name, std::optional<std::string> iconSymbolName,
                           bool showAtTopLevel);

  /// Replaces the folder that has the same id.
  void updateCategory(const MenuCategory& category);

  /// Removes all folders with the id and their items. The sort orders of the others stay. Saves
  /// even if there was none.
  void deleteCategory(std::string_view id);

  /// Swaps the first folder with the id and the folder `offset` positions after it in display
  /// order, and renumbers all sort orders: 0, 1, 2, ... Does nothing if there is no such position.
  void moveCategory(std::string_view id, std::int64_t offset);

  /// Inserts a separator after the folder (at the end if the id is unknown), renumbers all sort
  /// orders, and returns the separator.
  MenuCategory addCategorySeparator(std::optional<std::string_view> afterId);

  /// Inserts the item after the other one (at the end if that id is unknown).
  void addItem(const MenuItem& item, std::string_view categoryId,
               std::optional<std::string_view> afterItemId);

  /// Replaces the folder's first item that has the same id.
  void updateItem(const MenuItem& item, std::string_view categoryId);

  /// Removes all items with the id from the folder. Saves even if there was none.
  void deleteItem(std::string_view id, std::string_view categoryId);

  /// Swaps the item with the one `offset` positions after it. Does nothing if there is no such
  /// position.
  void moveItem(std::string_view id, std::string_view categoryId, std::int64_t offset);

  /// Sets the flag. Saves even if it does not change.
  void setItemEnabled(std::string_view id, std::string_view categoryId, bool enabled);

 private:
  MenuCategory* findCategory(std::string_view id);
  /// The first entry of `order`, a list of folder indexes, whose folder has the id.
  std::vector<std::size_t>::iterator findInOrder(std::vector<std::size_t>& order,
                                                 std::string_view id) const;
  /// Sets the `sortOrder` of every folder to the position of its index in `order`.
  void renumber(const std::vector<std::size_t>& order);

  Collaborators collaborators_;
  SettingsFile settingsFile_;
  bool isFirstLaunch_ = false;
  std::optional<Error> loadError_;
};

}  // namespace quillmar
