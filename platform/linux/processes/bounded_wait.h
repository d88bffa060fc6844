// Waiting for something that may hang, with a limit. Any thread; nothing is dispatched meanwhile.

#pragma once

#include <chrono>
#include <functional>

namespace quillmar {

/// Runs the work on a thread of its own, in which every signal is blocked. False when it has not
/// ended after `patience`, or when the system has no thread to spare; work that is late goes on, so
/// it must own whatever it uses.
bool endsWithin(std::chrono::milliseconds patience, std::function<void()> work);

}  // namespace quillmar
