// Finds the entry of a list that the user types the beginning of.

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/key_press.h"

namespace quillmar {

class TypeAhead {
 public:
  using Clock = std::chrono::steady_clock;

  /// A pause of this length starts a new search.
  static constexpr std::chrono::milliseconds pause{1000};

  /// True if the key types a character that can be searched for. Space continues a search but does
  /// not start one.
  bool isSearched(const KeyPress& press, Clock::time_point now) const;

  /// Adds a typed character to the search text. Returns the first entry whose title begins with the
  /// text, in any case, or absent if there is none. The search begins at the current entry, or
  /// after it if `character` starts a new search, and wraps around. The same character typed
  /// several times goes through the entries that begin with it. `title` is called only until an
  /// entry matches.
  std::optional<std::size_t> find(const std::string& character, std::size_t count,
                                  std::optional<std::size_t> current,
                                  const std::function<std::string(std::size_t)>& title,
                                  Clock::time_point now);

 private:
  bool continues(Clock::time_point now) const;

  std::string text_;
  Clock::time_point last_;
};

}  // namespace quillmar
