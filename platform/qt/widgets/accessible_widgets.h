// What screen readers are told of the widgets that the toolkit doesn't know, and of views with a
// role of their own.

#pragma once

#include <QWidget>
#include <optional>

#include "platform/widgets/view.h"

namespace quillmar {

/// Once for the process.
void makeWidgetsAccessible();

/// Absent for the role of the widget's kind.
void setAccessibilityRole(QWidget& widget, std::optional<AccessibilityRole> role);

}  // namespace quillmar
