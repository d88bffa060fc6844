// A menu as plain data: what it shows and what each entry asks for. It is built whole, handed to
// the status item, and replaced by the next one; nothing edits a menu in place.

#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/image.h"
#include "platform/key_equivalent.h"

namespace quillmar {

/// What choosing an entry asks the application to do.
enum class MenuAction { runCommand, showAbout, openSettings, checkForUpdates, quit };

struct SeparatorEntry {
  bool operator==(const SeparatorEntry&) const = default;
};

struct ActionEntry {
  std::string title;
  MenuAction action = MenuAction::runCommand;
  /// For runCommand: the id of the item to run.
  std::optional<std::string> representedObject;
  std::optional<Image> image;
  std::optional<KeyEquivalent> keyEquivalent;

  bool operator==(const ActionEntry&) const = default;
};

struct SubmenuEntry;

using MenuEntry = std::variant<SeparatorEntry, ActionEntry, SubmenuEntry>;

struct Menu {
  std::string title;
  std::vector<MenuEntry> entries;

  bool operator==(const Menu& other) const;
};

struct SubmenuEntry {
  std::string title;
  std::optional<Image> image;
  Menu submenu;

  bool operator==(const SubmenuEntry&) const = default;
};

inline bool Menu::operator==(const Menu& other) const {
  return title == other.title && entries == other.entries;
}

}  // namespace quillmar
