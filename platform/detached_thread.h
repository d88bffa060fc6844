// Threads that nothing waits for: neither their creator nor the end of the program.

#pragma once

#include <functional>
#include <string>

namespace quillmar {

/// Starts a thread that calls `task` once, with every signal blocked: signals belong to the main
/// thread. `name`, of at most 15 bytes, is what debuggers show. False if the system has no thread
/// to spare; the task never runs then. Any thread.
bool startDetachedThread(std::function<void()> task, const std::string& name = {});

/// A replacement for startDetachedThread(), for tests.
using StartThread = std::function<bool(std::function<void()> task)>;

}  // namespace quillmar
