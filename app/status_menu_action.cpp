#include "app/status_menu_action.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillmar {

namespace {

using Kind = StatusMenuAction::Kind;

/// Followed by the item's id, which may be any text.
constexpr std::string_view runPrefix = "run:";

constexpr std::array<std::pair<Kind, std::string_view>, 4> fixedIds = {{
    {Kind::showAbout, "about"},
    {Kind::openSettings, "settings"},
    {Kind::checkForUpdates, "check-for-updates"},
    {Kind::quit, "quit"},
}};

}  // namespace

std::string entryId(const StatusMenuAction& action) {
  const auto fixed =
      std::ranges::find(fixedIds, action.kind, &std::pair<Kind, std::string_view>::first);
  if (fixed != fixedIds.end()) return std::string(fixed->second);
  return std::string(runPrefix) + action.itemId;
}

std::optional<StatusMenuAction> statusMenuAction(std::string_view entryId) {
  if (entryId.starts_with(runPrefix)) {
    return StatusMenuAction{Kind::runCommand, std::string(entryId.substr(runPrefix.size()))};
  }
  const auto fixed =
      std::ranges::find(fixedIds, entryId, &std::pair<Kind, std::string_view>::second);
  if (fixed == fixedIds.end()) return std::nullopt;
  return StatusMenuAction{.kind = fixed->first, .itemId = {}};
}

}  // namespace quillmar
