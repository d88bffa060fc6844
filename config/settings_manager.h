// The one owner of the live document: loads it once, answers questions about folders and items,
// performs every edit, writes the whole document after each and announces it. Main thread only.

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
    /// What a folder or an item without an id gets as its own when it is loaded.
    std::function<std::string()> makeIdentifier = makeUuid;
  };

  /// Loads the settings file.
  explicit SettingsManager(Collaborators collaborators);

  SettingsManager(const SettingsManager&) = delete;
  SettingsManager& operator=(const SettingsManager&) = delete;

  /// The process's one manager, made on first use from the installed platform.
  static SettingsManager& shared();

  /// The live document. Whoever changes it directly calls save() afterwards.
  QuillmarConfig config;

  /// True when there was no settings file to load.
  bool isFirstLaunch() const { return isFirstLaunch_; }

  /// Why the settings file could not be loaded; absent when it was, or when there was none.
  const std::optional<Error>& loadError() const { return loadError_; }

  // Location and persistence.

  /// Path of the settings file, worked out anew at every call; see settingsFilePath().
  std::string settingsFileURL() const;

  /// Replaces the document by the file's: by the empty one when there is no file (a first launch)
  /// or when it cannot be read or decoded (one line is logged). Writes nothing.
  void loadFromFile();

  /// Writes the document to the settings file, logging a failure, and posts menuItemSettingsChanged
  /// in every case.
  void save();

  /// The bytes of a document as every writer of one writes it.
  static std::string encode(const QuillmarConfig& config);

  // Queries.

  /// The folders in display order, separators included.
  std::vector<MenuCategory> categories() const;

  /// The first folder with the id.
  std::optional<MenuCategory> getCategory(std::string_view id) const;

  /// The first item with the id, folders and items as they stand in the document.
  std::optional<ItemInCategory> getItem(std::string_view id) const;

  /// The enabled items of all folders in display order; separators of both kinds left out.
  std::vector<ItemInCategory> allRunnableItems() const;

  // Edits. Each that changes anything ends with save(); an unknown id changes nothing.

  /// Appends a new folder that sorts last, and returns it.
  MenuCategory addCategory(std::string name, std::optional<std::string> iconSymbolName,
                           bool showAtTopLevel);

  /// Replaces the folder with the same id as a whole.
  void updateCategory(const MenuCategory& category);

  /// Swaps the first folder with the id and the one `offset` places on in display order, and
  /// numbers all folders anew: 0, 1, 2, ... in display order. Does nothing when there is no such
  /// place.
  void moveCategory(std::string_view id, std::int64_t offset);

  /// Puts a separator behind the folder (last, when there is none with the id), numbers all folders
  /// anew, and returns the separator.
  MenuCategory addCategorySeparator(std::optional<std::string_view> afterId);

  /// Stores the item behind the other one (last, when there is none with that id).
  void addItem(const MenuItem& item, std::string_view categoryId,
               std::optional<std::string_view> afterItemId);

  /// Replaces the folder's first item with the same id as a whole.
  void updateItem(const MenuItem& item, std::string_view categoryId);

  /// Removes every item with the id from the folder; saves also when there was none.
  void deleteItem(std::string_view id, std::string_view categoryId);

  /// Swaps the item with the one `offset` places on. Does nothing when there is no such place.
  void moveItem(std::string_view id, std::string_view categoryId, std::int64_t offset);

  /// Sets the flag; saves also when it was so already.
  void setItemEnabled(std::string_view id, std::string_view categoryId, bool enabled);

 private:
  MenuCategory* findCategory(std::string_view id);
  /// The first entry of `order`, which holds indexes of folders, whose folder has the id.
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
