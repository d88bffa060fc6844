// What a user should know about a pack before importing it. Any thread.

#pragma once

#include <cstddef>
#include <string>

#include "config/quillmar_config.h"

namespace quillmar {

struct PackWarnings {
  /// Items that the listing does not show, because their folder in the pack is a separator, but
  /// that a merge would add to a folder with the same id that is none.
  std::size_t hiddenItems = 0;
  /// Commands with characters that text::withVisibleCharacters() makes visible.
  std::size_t commandsWithHiddenCharacters = 0;
  /// Commands with so much white space before some text that the text may be out of view.
  std::size_t commandsWithLongGaps = 0;
  /// Names of folders and titles of items that contain such characters or line breaks. A line break
  /// can imitate a line of the listing.
  std::size_t misleadingNames = 0;
  /// Items that a merge would add and that have the id of another item, of the user or of the pack.
  /// A click or a hot key runs the first item with the id.
  std::size_t repeatedIds = 0;
  /// Items that would get a hot key, by a merge or by a replacement, and that run without asking.
  std::size_t unconfirmedHotKeys = 0;
  /// Shortcuts that a merge would add and that another item, of the user or of the pack, has too.
  std::size_t collidingShortcuts = 0;

  bool operator==(const PackWarnings&) const = default;
};

/// Shortcuts count only if they work: those of enabled items that are not separators, in folders
/// that are not separators. O(n log n) for any pack.
PackWarnings findWarnings(const QuillmarConfig& current, const QuillmarConfig& pack);

/// A sentence for each kind of warning, on one line; empty if there is nothing to report.
std::string warningText(const PackWarnings& warnings);

}  // namespace quillmar
