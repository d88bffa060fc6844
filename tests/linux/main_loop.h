// Running GLib's default main context in a test.

#pragma once

#include <functional>

namespace quillmar {

/// Dispatches events until the condition, which is checked after each iteration, holds. False, and
/// the test fails, when it still does not after a minute.
bool runMainLoopUntil(const std::function<bool()>& done);

/// Handles everything that is ready now, without waiting.
void runMainLoopWhileReady();

}  // namespace quillmar
