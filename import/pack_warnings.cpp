#include "import/pack_warnings.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/key_equivalent.h"
#include "platform/text.h"
#include "platform/visible_text.h"

namespace quillmar {

namespace {

/// In characters. Ordinary commands contain no gap of this length.
constexpr std::size_t longGap = 100;

bool isMisleadingName(std::string_view name) {
  return text::hasInvisibleCharacters(name) || text::containsNewline(name) ||
         text::longestGap(name) >= longGap;
}

/// True if the item would be in the menu. `folder` is the one that would hold it.
bool isShown(const MenuCategory& folder, const MenuItem& item) {
  return !folder.isSeparator && !item.isSeparator && item.isEnabled;
}

bool hasUnconfirmedHotKey(const MenuCategory& folder, const MenuItem& item) {
  return isShown(folder, item) && item.shortcut && item.shortcut->isGlobal &&
         !item.confirmBeforeRunning;
}

/// The combinations of shortcuts. Hot keys are registered by key code, and the menu compares
/// characters, so two shortcuts collide if either is the same.
class Combinations {
 public:
  /// Returns false if another shortcut has the combination.
  bool add(const KeyboardShortcut& shortcut) {
    constexpr std::uint64_t mask =
        modifiers::shift | modifiers::control | modifiers::option | modifiers::command;
    const std::uint64_t modifierMask = shortcut.modifiers & mask;
    const std::string character = text::lowercased(shortcut.character);
    const bool isNewCode = codes_.emplace(shortcut.keyCode, modifierMask).second;
    const bool isNewCharacter =
        character.empty() || characters_.emplace(character, modifierMask).second;
    return isNewCode && isNewCharacter;
  }

 private:
  std::set<std::pair<std::uint16_t, std::uint64_t>> codes_;
  std::set<std::pair<std::string, std::uint64_t>> characters_;
};

void checkContents(const MenuCategory& folder, PackWarnings& warnings) {
  if (isMisleadingName(folder.name)) ++warnings.misleadingNames;
  for (const MenuItem& item : folder.items) {
    if (isMisleadingName(item.title)) ++warnings.misleadingNames;
    const std::string& command = item.command.value;
    if (text::hasInvisibleCharacters(command)) ++warnings.commandsWithHiddenCharacters;
    if (text::longestGap(command) >= longGap) ++warnings.commandsWithLongGaps;
    // "Replace" leaves the item in this folder.
    if (hasUnconfirmedHotKey(folder, item)) ++warnings.unconfirmedHotKeys;
  }
}

/// Compares what a merge would add with the user's items and with each other.
void checkAdditions(const QuillmarConfig& current, const QuillmarConfig& pack,
                    PackWarnings& warnings) {
  std::set<std::string_view> ids;
  Combinations combinations;
  for (const MenuCategory& folder : current.categories) {
    for (const MenuItem& item : folder.items) {
      ids.insert(item.id);
      if (isShown(folder, item) && item.shortcut) combinations.add(*item.shortcut);
    }
  }
  for (const MergeStep& step : current.mergeSteps(pack)) {
    const bool revealsItems = step.source->isSeparator && !step.target->isSeparator;
    for (const MenuItem* item : step.items) {
      if (!ids.insert(item->id).second) ++warnings.repeatedIds;
      if (revealsItems && !item->isSeparator) ++warnings.hiddenItems;
      // Those in other folders are counted with the contents of the pack.
      if (revealsItems && hasUnconfirmedHotKey(*step.target, *item)) ++warnings.unconfirmedHotKeys;
      if (isShown(*step.target, *item) && item->shortcut && !combinations.add(*item->shortcut)) {
        ++warnings.collidingShortcuts;
      }
    }
  }
}

void addSentence(std::string& text, std::size_t count, std::string_view one,
                 std::string_view several) {
  if (count == 0) return;
  if (!text.empty()) text += ' ';
  text.append(std::to_string(count)).append(" ").append(count == 1 ? one : several);
}

}  // namespace

PackWarnings findWarnings(const QuillmarConfig& current, const QuillmarConfig& pack) {
  PackWarnings warnings;
  for (const MenuCategory& folder : pack.categories) checkContents(folder, warnings);
  checkAdditions(current, pack, warnings);
  return warnings;
}

std::string warningText(const PackWarnings& warnings) {
  std::string text;
  addSentence(text, warnings.hiddenItems,
              "item is hidden in a separator, and Merge adds it to a folder.",
              "items are hidden in separators, and Merge adds them to folders.");
  addSentence(text, warnings.commandsWithHiddenCharacters, "command contains hidden characters.",
              "commands contain hidden characters.");
  addSentence(text, warnings.commandsWithLongGaps,
              "command contains a long gap before part of its text.",
              "commands contain a long gap before part of their text.");
  addSentence(text, warnings.misleadingNames,
              "name contains hidden characters, line breaks or a long gap.",
              "names contain hidden characters, line breaks or a long gap.");
  addSentence(text, warnings.repeatedIds,
              "item has the identifier of another item and may run in its place.",
              "items have the identifiers of other items and may run in their place.");
  addSentence(text, warnings.unconfirmedHotKeys,
              "item with a global hot key runs without confirmation.",
              "items with a global hot key run without confirmation.");
  addSentence(text, warnings.collidingShortcuts, "shortcut is already used by another item.",
              "shortcuts are already used by other items.");
  return text;
}

}  // namespace quillmar
