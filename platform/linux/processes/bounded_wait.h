// Blocking work with a timeout. Any thread; no events are dispatched meanwhile.

#pragma once

#include <chrono>
#include <functional>

namespace quillmar {

/// Runs the work on its own thread. False if it has not ended after `timeout`, or if the system
/// cannot create a thread. Late work continues, so it must own what it uses.
bool endsWithin(std::chrono::milliseconds timeout, std::function<void()> work);

}  // namespace quillmar
