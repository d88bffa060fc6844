// What the system's user database says of the person who runs this program. Any thread.

#pragma once

#include <optional>
#include <string>

namespace quillmar {

class UserDatabase {
 public:
  virtual ~UserDatabase() = default;

  /// The shell field of the real user's entry; absent without an entry or when the field is empty.
  virtual std::optional<std::string> loginShell() const = 0;
};

}  // namespace quillmar
