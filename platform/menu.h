// A menu as plain data: what it shows and what each entry asks for. It is built whole, handed to
// the status item, and replaced by the next one; nothing edits a menu in place.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/image.h"

namespace quillmar {

/// Bits of a modifier mask, for key equivalents and recorded shortcuts.
namespace modifiers {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
}  // namespace modifiers

/// The key that stands beside an entry. `character` is what the key produces, function keys
/// included (U+F704 is F1 and so on); empty means none.
struct KeyEquivalent {
  std::string character;
  std::uint64_t modifierMask = modifiers::command;

  bool operator==(const KeyEquivalent&) const = default;
};

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
