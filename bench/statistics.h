// Times of several runs.

#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace quillmar {

using BenchClock = std::chrono::steady_clock;

inline double milliseconds(BenchClock::duration duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

/// Precondition: not empty.
inline double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

}  // namespace quillmar
