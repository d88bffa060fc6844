// The current user's entry in the system's user database. Any thread.

#pragma once

#include <optional>
#include <string>

namespace quillmar {

class UserDatabase {
 public:
  virtual ~UserDatabase() = default;

  /// The shell field of the entry; absent if there is no entry or the field is empty. Uses the real
  /// user id.
  virtual std::optional<std::string> loginShell() const = 0;
};

}  // namespace quillmar
