// Timeouts for tests of waiting.

#pragma once

#include <chrono>

namespace quillmar {

inline constexpr std::chrono::hours longTimeout(1);
inline constexpr std::chrono::milliseconds noTimeout(0);

}  // namespace quillmar
