// Arithmetic on numbers that come from documents. An overflow is fatal: one line on standard error,
// then abort.

#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quillmar {

inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) {
    std::fputs("Fatal error: a sort order or position is too large to add to.\n", stderr);
    std::abort();
  }
  return sum;
}

}  // namespace quillmar
