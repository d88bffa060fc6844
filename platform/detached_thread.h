// Threads that are never joined. The program does not wait for them at exit.

#pragma once

#include <functional>
#include <string>

namespace quillmar {

/// Starts a thread that calls `task` once, with every signal blocked: signals belong to the main
/// thread. `name`, of at most 15 bytes, is shown by debuggers. Returns false if the system cannot
/// create a thread; the task then never runs. Any thread.
bool startDetachedThread(std::function<void()> task, const std::string& name = {});

/// A replacement for startDetachedThread(), for tests.
using StartThread = std::function<bool(std::function<void()> task)>;

}  // namespace quillmar
