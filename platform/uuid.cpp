#include "platform/uuid.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <random>

#include <unistd.h>

namespace quillmar {

std::string makeUuid() {
  // One getentropy() call serves many identifiers: a hand-written document may need ten thousand.
  thread_local std::array<std::uint32_t, 64> pool;
  thread_local std::size_t used = pool.size();
  if (used == pool.size()) {
    if (getentropy(pool.data(), sizeof pool) != 0) {
      // As random, but some processors need 20 microseconds per word.
      std::random_device device;
      for (std::uint32_t& word : pool) word = device();
    }
    used = 0;
  }

  std::array<std::uint8_t, 16> bytes;
  std::memcpy(bytes.data(), pool.data() + used, bytes.size());
  used += bytes.size() / sizeof(std::uint32_t);
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // variant 10

  constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 0x0F];
  }
  return text;
}

}  // namespace quillmar
