// An alert: a short message with one or more buttons. See Window::beginAlert().

#pragma once

#include <string>
#include <vector>

namespace quillmar {

enum class AlertStyle { informational, warning };

struct Alert {
  AlertStyle style = AlertStyle::informational;
  /// What happened or what is asked, in one line.
  std::string message;
  /// Details; empty for none.
  std::string informativeText;
  /// Titles. Return presses the first button, Escape the one titled "Cancel". If empty, the alert
  /// has one button, "OK".
  std::vector<std::string> buttons;
};

}  // namespace quillmar
