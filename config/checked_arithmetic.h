// Arithmetic on numbers that come from documents, and on ids. An overflow is fatal: one line on
// standard error, then abort.

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

/// The id after `id`.
inline std::uint32_t checkedNextId(std::uint32_t id) {
  std::uint32_t next = 0;
  if (__builtin_add_overflow(id, 1U, &next)) {
    std::fputs("Fatal error: all ids have been used.\n", stderr);
    std::abort();
  }
  return next;
}

}  // namespace quillmar
