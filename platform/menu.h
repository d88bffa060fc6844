// A menu as plain data: what it shows and what its entries do. It serves status items, pop-up menus
// and menus of widgets. A menu is built completely and then replaced by the next one; nothing edits
// a menu in place.
//
// An entry either has an action of its own, or an id that tells the owner of the menu what to do.
// Use ids where menus are compared or rebuilt often, because two actions cannot be compared.

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
  /// Names the entry to the owner of the menu. Nothing shows it.
  std::string id;
  /// Runs when the entry is chosen, instead of the handler of the menu's owner; may be empty.
  /// `activation` is what the choice brought along.
  std::function<void(const Activation& activation)> action;
  /// False: shown greyed, cannot be chosen.
  bool enabled = true;
  /// Set for a toggle. Choosing the entry does not change it; the owner of the menu does, with the
  /// next menu.
  std::optional<ControlState> state;
  std::optional<Image> image;
  /// Shown beside the title. The menu does not listen for the key.
  std::optional<KeyEquivalent> keyEquivalent;

  /// Compares everything but the actions.
  bool operator==(const ActionEntry& other) const;
};

struct SubmenuEntry;

using MenuEntry = std::variant<SeparatorEntry, ActionEntry, SubmenuEntry>;

struct Menu {
  std::string title;
  std::vector<MenuEntry> entries;

  /// True when both show the same and their entries have the same ids. Actions are not compared.
  bool operator==(const Menu& other) const;
};

struct SubmenuEntry {
  std::string title;
  /// False: shown greyed, does not open.
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

/// Called with a chosen entry that has no action of its own. May be empty.
using MenuHandler = std::function<void(const ActionEntry& entry, const Activation& activation)>;

/// Does what the chosen entry asks for: its own action, or else the handler.
inline void performEntry(const ActionEntry& entry, const Activation& activation,
                         const MenuHandler& handler) {
  if (entry.action) {
    entry.action(activation);
  } else if (handler) {
    handler(entry, activation);
  }
}

}  // namespace quillmar
