// Running GLib's default main context in a test.

#pragma once

#include <functional>

namespace quillmar {

/// Dispatches events until the condition, which is asked after each, holds; fails the test when it
/// still does not after a minute.
void runMainLoopUntil(const std::function<bool()>& done);

}  // namespace quillmar
