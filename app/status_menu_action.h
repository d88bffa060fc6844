// What the entries of the status menu do, as ids of menu entries.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

struct StatusMenuAction {
  enum class Kind { runCommand, showAbout, openSettings, checkForUpdates, quit };

  Kind kind = Kind::runCommand;
  /// Id of the item that runCommand runs.
  std::string itemId;

  bool operator==(const StatusMenuAction&) const = default;
};

/// The id of the menu entry that performs the action.
std::string entryId(const StatusMenuAction& action);

/// The action of the entry with this id; absent when entryId() never returns it.
std::optional<StatusMenuAction> statusMenuAction(std::string_view entryId);

}  // namespace quillmar
