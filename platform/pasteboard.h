// The general pasteboard (the clipboard). Main thread.

#pragma once

#include <string>

namespace quillmar {

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Clears the pasteboard and puts the text, valid UTF-8, on it as plain text.
  virtual void setString(std::string text) = 0;
};

}  // namespace quillmar
