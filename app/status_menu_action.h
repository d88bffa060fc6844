// The actions of the status menu, and their encoding as ids of menu entries.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

struct StatusMenuAction {
  enum class Kind { runCommand, showAbout, openSettings, checkForUpdates, quit };

  Kind kind = Kind::runCommand;
  /// For runCommand: id of the item to run.
  std::string itemId;

  bool operator==(const StatusMenuAction&) const = default;
};

/// The id of the menu entry that performs the action.
std::string entryId(const StatusMenuAction& action);

/// The action of the entry with this id; absent if entryId() cannot return this id.
std::optional<StatusMenuAction> statusMenuAction(std::string_view entryId);

}  // namespace quillmar
