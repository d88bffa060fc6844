// A menu as plain data: what it shows and what its entries do. Used for status items and pop-up
// menus. A menu is built as a whole and replaced as a whole, never edited in place.
//
// An entry has either an action or an id. The owner of the menu maps the id to what it does. Use
// ids if menus are compared or rebuilt often, because actions cannot be compared.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/application.h"
#include "platform/control_state.h"
#include "platform/image.h"
#include "platform/key_equivalent.h"

namespace quillmar {

struct SeparatorEntry {
  bool operator==(const SeparatorEntry&) const = default;
};

struct ActionEntry {
  std::string title;
  /// Identifies the entry for the owner of the menu. Not shown.
  std::string id;
  /// Runs when the entry is chosen, instead of the handler of the menu's owner; may be empty.
  /// `activation` comes from the user's click.
  std::function<void(const Activation& activation)> action;
  /// If false, the entry is greyed out and cannot be chosen.
  bool enabled = true;
  /// Present for a toggle. Choosing the entry does not change the state; the owner sets it in the
  /// next menu.
  std::optional<ControlState> state;
  std::optional<Image> image;
  /// Shown beside the title. Pressing the key does not choose the entry.
  std::optional<KeyEquivalent> keyEquivalent;

  /// Compares everything except the actions.
  bool operator==(const ActionEntry& other) const;
};

struct SubmenuEntry;

using MenuEntry = std::variant<SeparatorEntry, ActionEntry, SubmenuEntry>;

struct Menu {
  std::string title;
  std::vector<MenuEntry> entries;

  /// True if both show the same and their entries have the same ids. Actions are not compared.
  bool operator==(const Menu& other) const;
};

struct SubmenuEntry {
  std::string title;
  /// If false, the entry is greyed out and does not open.
  bool enabled = true;
  std::optional<Image> image;
  Menu submenu;

  bool operator==(const SubmenuEntry&) const = default;
};

inline bool ActionEntry::operator==(const ActionEntry& other) const {
  return title == other.title && id == other.id && enabled == other.enabled &&
         state == other.state && image == other.image && keyEquivalent == other.keyEquivalent;
}

inline bool Menu::operator==(const Menu& other) const {
  return title == other.title && entries == other.entries;
}

/// Called when an entry without an action is chosen. May be empty.
using MenuHandler = std::function<void(const ActionEntry& entry, const Activation& activation)>;

/// Runs the action of the chosen entry, or the handler if it has none.
inline void performEntry(const ActionEntry& entry, const Activation& activation,
                         const MenuHandler& handler) {
  if (entry.action) {
    entry.action(activation);
  } else if (handler) {
    handler(entry, activation);
  }
}

}  // namespace quillmar
