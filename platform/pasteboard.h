// The general pasteboard (the clipboard). Main thread.

#pragma once

#include <string>

namespace quillmar {

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Replaces the contents of the pasteboard with plain text. Precondition: valid UTF-8.
  virtual void setString(std::string text) = 0;
};

}  // namespace quillmar
