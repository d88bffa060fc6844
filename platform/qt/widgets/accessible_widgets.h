// Accessibility information for the widgets that the toolkit does not know, and for views with
// their own role.

#pragma once

#include <QWidget>
#include <optional>

#include "platform/widgets/view.h"

namespace quillmar {

/// Called once in a process.
void makeWidgetsAccessible();

/// Absent for the role of the widget's kind.
void setAccessibilityRole(QWidget& widget, std::optional<AccessibilityRole> role);

}  // namespace quillmar
