// The configuration document: the user's folders, their items, and the preferences. The same value
// is the settings file and a shareable pack. Plain values; copying one copies everything it holds.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

/// What kind of text a command's value is.
enum class CommandType { shellCommand, scriptFile, appleScript };

/// Every case, in the order in which editors offer them.
inline constexpr CommandType allCommandTypes[] = {
    CommandType::shellCommand, CommandType::scriptFile, CommandType::appleScript};

/// The type's text in documents, which is also its label in editors.
std::string_view rawValue(CommandType type);

/// The type with exactly that raw value; absent when there is none.
std::optional<CommandType> commandTypeFromRawValue(std::string_view rawValue);

/// What an item runs. A default value is what stands for a missing one.
struct MenuCommand {
  CommandType type = CommandType::shellCommand;
  /// The command line, the script's path, or the script's source, by type.
  std::string value;
  bool runInBackground = true;
  bool showNotification = false;
  bool copyToClipboard = false;
  bool openInTerminal = false;

  bool operator==(const MenuCommand&) const = default;
};

struct KeyboardShortcut {
  /// The hardware's virtual key code (Apple's numbering).
  std::uint16_t keyCode = 0;
  /// What the key produced when it was recorded.
  std::string character;
  /// Bits as in quillmar::modifiers.
  std::uint64_t modifiers = 0;
  /// Works from any program, not only in the open menu.
  bool isGlobal = true;

  bool operator==(const KeyboardShortcut&) const = default;
};

/// A runnable entry of a folder, or a separator line inside one. Items are ordered by their
/// position in the folder.
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
  /// The items stand in the top-level menu instead of in a submenu.
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

/// How an imported document is brought into the current one: by QuillmarConfig::merging(), or by
/// QuillmarConfig::replacingFolders().
enum class ImportMode { merge, replace };

/// What a merge would add, separators not counted.
struct MergePreview {
  std::int64_t categories = 0;
  std::int64_t items = 0;

  bool operator==(const MergePreview&) const = default;
};

/// The document. A default value is the empty document that the program makes itself.
struct QuillmarConfig {
  /// Carried and written back as it stands. A document without one decodes as version 1.
  std::int64_t version = 2;
  /// Name and description of a pack; settings usually have neither.
  std::optional<std::string> name;
  std::optional<std::string> description;
  std::vector<MenuCategory> categories;
  Preferences preferences;

  /// This document with what is new in the pack `other`: folders whose id is unknown come after all
  /// others, in the pack's display order; a folder with the id of a known one only gives it the
  /// items whose ids that one lacks. All that is here stays as it is. Takes n log n, whatever the
  /// pack holds. Fatal when a sort order would overflow, even one that no folder gets.
  QuillmarConfig merging(const QuillmarConfig& other) const;

  /// How many folders and items merging(other) would add, for display. Ids are looked up in this
  /// document alone, so a pack that repeats the id of a new folder counts it each time.
  MergePreview mergePreview(const QuillmarConfig& other) const;

  /// The pack's folders and version in place of this document's, with this document's preferences.
  QuillmarConfig replacingFolders(const QuillmarConfig& other) const;

  bool operator==(const QuillmarConfig&) const = default;
};

/// The folders, separators included, in display order: ascending by `sortOrder`, equal ones as they
/// stand in the document. The pointers go into `config` and are valid until it changes.
std::vector<const MenuCategory*> categoriesInDisplayOrder(const QuillmarConfig& config);

/// The sort order that puts a folder behind all others: 0 in a document without folders. Fatal when
/// there is none beyond the largest.
std::int64_t nextSortOrder(const QuillmarConfig& config);

}  // namespace quillmar
