// The default main context in tests: it is run until what the test waits for has happened.

#pragma once

#include <functional>

namespace quillmar {

/// Runs the main context until the condition, asked after every turn, is true. When that takes
/// longer than any machine should need, the test has failed and the answer is false.
bool runMainLoopUntil(const std::function<bool()>& condition);

/// Handles everything that is ready now, without waiting.
void runMainLoopWhileReady();

}  // namespace quillmar
