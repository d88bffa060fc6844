// What screen readers are told of the widgets that the toolkit doesn't know.

#pragma once

namespace quillmar {

/// Once for the process.
void makeWidgetsAccessible();

}  // namespace quillmar
