// The configuration document: the user's folders, their items, and the preferences. Settings files
// and shareable packs have the same form. Plain value types; copies are deep.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

/// How a command's value is interpreted.
enum class CommandType { shellCommand, scriptFile, appleScript };

/// All types, in the order in which editors show them.
inline constexpr CommandType allCommandTypes[] = {
    CommandType::shellCommand, CommandType::scriptFile, CommandType::appleScript};

/// The type's name in documents and its label in editors.
std::string_view rawValue(CommandType type);

/// The type with this raw value; absent if there is none.
std::optional<CommandType> commandTypeFromRawValue(std::string_view rawValue);

/// What an item runs. A missing command decodes to the default value.
struct MenuCommand {
  CommandType type = CommandType::shellCommand;
  /// Depending on the type: the command line, the path of the script, or the source of the script.
  std::string value;
  bool runInBackground = true;
  bool showNotification = false;
  bool copyToClipboard = false;
  bool openInTerminal = false;

  bool operator==(const MenuCommand&) const = default;
};

struct KeyboardShortcut {
  /// Virtual key code (platform/virtual_key_codes.h).
  std::uint16_t keyCode = 0;
  /// The character that the key produced when it was recorded.
  std::string character;
  /// Bits of quillmar::modifiers.
  std::uint64_t modifiers = 0;
  /// If true, the shortcut is also a hot key, which works in all programs. If false, it is only
  /// shown in the menu.
  bool isGlobal = true;

  bool operator==(const KeyboardShortcut&) const = default;
};

/// A runnable entry of a folder, or a separator line in it. Items are shown in the order of the
/// folder.
struct MenuItem {
  std::string id;
  std::string title;
  bool isEnabled = true;
  MenuCommand command;
  std::optional<std::string> iconSymbolName;
  std::optional<KeyboardShortcut> shortcut;
  bool confirmBeforeRunning = false;
  bool isSeparator = false;
  /// The question for the value of "{{input}}".
  std::optional<std::string> inputPrompt;

  /// A new separator line with a new identifier.
  static MenuItem separator();

  bool operator==(const MenuItem&) const = default;
};

/// A folder, or a separator line between folders. Folders are ordered by `sortOrder`.
struct MenuCategory {
  std::string id;
  std::string name;
  std::int64_t sortOrder = 0;
  std::vector<MenuItem> items;
  std::optional<std::string> iconSymbolName;
  /// Shows the items in the top-level menu instead of a submenu.
  bool showAtTopLevel = false;
  bool isSeparator = false;

  bool operator==(const MenuCategory&) const = default;
};

struct Preferences {
  bool flattenSingleFolder = false;
  bool notifyOnFailure = true;
  bool useLoginShell = true;

  bool operator==(const Preferences&) const = default;
};

/// How a document is imported: with QuillmarConfig::merging() or
/// QuillmarConfig::replacingFolders().
enum class ImportMode { merge, replace };

/// The number of folders and items that a merge would add, not counting separators.
struct MergePreview {
  std::int64_t categories = 0;
  std::int64_t items = 0;

  bool operator==(const MergePreview&) const = default;
};

/// What a merge does with one folder of the pack. The pointers refer to the merged documents.
struct MergeStep {
  /// The folder of the pack.
  const MenuCategory* source = nullptr;
  /// The folder that gets the items: `source` if its id is new, otherwise the folder with this id,
  /// which the user or an earlier step has added.
  const MenuCategory* target = nullptr;
  /// Index of the target in the folders of the result.
  std::size_t position = 0;
  /// The items that are added, separators included.
  std::vector<const MenuItem*> items;
  /// True if the target is new, with all its items.
  bool addsFolder = false;
};

/// The document. The default value is the empty document of a first launch.
struct QuillmarConfig {
  /// Preserved, not interpreted. A document without a version decodes as version 1.
  std::int64_t version = 2;
  /// Name and description of a pack; settings usually have neither.
  std::optional<std::string> name;
  std::optional<std::string> description;
  std::vector<MenuCategory> categories;
  Preferences preferences;

  /// This document plus the new contents of the pack `other`. Folders with an unknown id are
  /// appended in the pack's display order. Of a folder with a known id, only items with unknown ids
  /// are added. Existing contents do not change. O(n log n) for any pack. Aborts if a sort order
  /// overflows, even one that no folder gets.
  QuillmarConfig merging(const QuillmarConfig& other) const;

  /// What merging(other) would add, for display. Ids are looked up only in this document, so a new
  /// folder id that the pack repeats counts each time.
  MergePreview mergePreview(const QuillmarConfig& other) const;

  /// The steps of merging(other), in their order: one for each folder of the pack.
  std::vector<MergeStep> mergeSteps(const QuillmarConfig& other) const;

  /// The pack's folders and version in place of this document's, with this document's preferences.
  QuillmarConfig replacingFolders(const QuillmarConfig& other) const;

  bool operator==(const QuillmarConfig&) const = default;
};

/// The folders, including separators, in display order: ascending by `sortOrder`; equal ones in
/// document order. The pointers refer to `config` and are valid until it changes.
std::vector<const MenuCategory*> categoriesInDisplayOrder(const QuillmarConfig& config);

/// A sort order greater than all others; 0 in a document without folders. Aborts on overflow.
std::int64_t nextSortOrder(const QuillmarConfig& config);

}  // namespace quillmar
