// The virtual key codes that tests press or register, named after the keys of a US keyboard.

#pragma once

#include <cstdint>

namespace quillmar {

inline constexpr std::uint16_t keyA = 0;
inline constexpr std::uint16_t keyZ = 6;
inline constexpr std::uint16_t keyB = 11;
inline constexpr std::uint16_t keyQ = 12;
inline constexpr std::uint16_t key2 = 19;
inline constexpr std::uint16_t keyL = 37;
inline constexpr std::uint16_t keyJ = 38;
inline constexpr std::uint16_t keyK = 40;
inline constexpr std::uint16_t keyN = 45;
inline constexpr std::uint16_t keySpace = 49;
inline constexpr std::uint16_t keypadPlus = 69;
inline constexpr std::uint16_t keypadEnter = 76;
inline constexpr std::uint16_t keypad5 = 87;
inline constexpr std::uint16_t keypad7 = 89;
inline constexpr std::uint16_t keyF5 = 96;
inline constexpr std::uint16_t keyPageUp = 116;
inline constexpr std::uint16_t keyForwardDelete = 117;

}  // namespace quillmar
