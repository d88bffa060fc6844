#include "platform/virtual_key_codes.h"

#include <algorithm>
#include <array>

namespace quillmar {

namespace {

// One row to a key. clang-format off
constexpr auto keyTable = std::to_array<VirtualKey>({
    {0, 30, "AC01", U'a', "a"},
    {1, 31, "AC02", U's', "s"},
    {2, 32, "AC03", U'd', "d"},
    {3, 33, "AC04", U'f', "f"},
    {4, 35, "AC06", U'h', "h"},
    {5, 34, "AC05", U'g', "g"},
    {6, 44, "AB01", U'z', "z"},
    {7, 45, "AB02", U'x', "x"},
    {8, 46, "AB03", U'c', "c"},
    {9, 47, "AB04", U'v', "v"},
    {10, 86, "LSGT", U'<', "less"},
    {11, 48, "AB05", U'b', "b"},
    {12, 16, "AD01", U'q', "q"},
    {13, 17, "AD02", U'w', "w"},
    {14, 18, "AD03", U'e', "e"},
    {15, 19, "AD04", U'r', "r"},
    {16, 21, "AD06", U'y', "y"},
    {17, 20, "AD05", U't', "t"},
    {18, 2, "AE01", U'1', "1"},
    {19, 3, "AE02", U'2', "2"},
    {20, 4, "AE03", U'3', "3"},
    {21, 5, "AE04", U'4', "4"},
    {22, 7, "AE06", U'6', "6"},
    {23, 6, "AE05", U'5', "5"},
    {24, 13, "AE12", U'=', "equal"},
    {25, 10, "AE09", U'9', "9"},
    {26, 8, "AE07", U'7', "7"},
    {27, 12, "AE11", U'-', "minus"},
    {28, 9, "AE08", U'8', "8"},
    {29, 11, "AE10", U'0', "0"},
    {30, 27, "AD12", U']', "bracketright"},
    {31, 24, "AD09", U'o', "o"},
    {32, 22, "AD07", U'u', "u"},
    {33, 26, "AD11", U'[', "bracketleft"},
    {34, 23, "AD08", U'i', "i"},
    {35, 25, "AD10", U'p', "p"},
    {36, 28, "RTRN", U'\r', "Return"},
    {37, 38, "AC09", U'l', "l"},
    {38, 36, "AC07", U'j', "j"},
    {39, 40, "AC11", U'\'', "apostrophe"},
    {40, 37, "AC08", U'k', "k"},
    {41, 39, "AC10", U';', "semicolon"},
    {42, 43, "BKSL", U'\\', "backslash"},
    {43, 51, "AB08", U',', "comma"},
    {44, 53, "AB10", U'/', "slash"},
    {45, 49, "AB06", U'n', "n"},
    {46, 50, "AB07", U'm', "m"},
    {47, 52, "AB09", U'.', "period"},
    {48, 15, "TAB", U'\t', "Tab"},
    {49, 57, "SPCE", U' ', "space"},
    {50, 41, "TLDE", U'`', "grave"},
    {51, 14, "BKSP", 0x7f, "BackSpace"},
    {53, 1, "ESC", 0x1b, "Escape"},
    {54, 126, "RWIN", 0, "Super_R"},
    {55, 125, "LWIN", 0, "Super_L"},
    {56, 42, "LFSH", 0, "Shift_L"},
    {57, 58, "CAPS", 0, "Caps_Lock"},
    {58, 56, "LALT", 0, "Alt_L"},
    {59, 29, "LCTL", 0, "Control_L"},
    {60, 54, "RTSH", 0, "Shift_R"},
    {61, 100, "RALT", 0, "Alt_R"},
    {62, 97, "RCTL", 0, "Control_R"},
    {63, 464, "I472", 0, ""},
    {64, 187, "FK17", 0xf714, "F17"},
    {65, 83, "KPDL", U'.', "KP_Decimal"},
    {67, 55, "KPMU", U'*', "KP_Multiply"},
    {69, 78, "KPAD", U'+', "KP_Add"},
    {71, 69, "NMLK", 0xf739, "Num_Lock"},
    {72, 115, "VOL+", 0, "XF86AudioRaiseVolume"},
    {73, 114, "VOL-", 0, "XF86AudioLowerVolume"},
    {74, 113, "MUTE", 0, "XF86AudioMute"},
    {75, 98, "KPDV", U'/', "KP_Divide"},
    {76, 96, "KPEN", U'\r', "KP_Enter"},
    {78, 74, "KPSU", U'-', "KP_Subtract"},
    {79, 188, "FK18", 0xf715, "F18"},
    {80, 189, "FK19", 0xf716, "F19"},
    {81, 117, "KPEQ", U'=', "KP_Equal"},
    {82, 82, "KP0", U'0', "KP_0"},
    {83, 79, "KP1", U'1', "KP_1"},
    {84, 80, "KP2", U'2', "KP_2"},
    {85, 81, "KP3", U'3', "KP_3"},
    {86, 75, "KP4", U'4', "KP_4"},
    {87, 76, "KP5", U'5', "KP_5"},
    {88, 77, "KP6", U'6', "KP_6"},
    {89, 71, "KP7", U'7', "KP_7"},
    {90, 190, "FK20", 0xf717, "F20"},
    {91, 72, "KP8", U'8', "KP_8"},
    {92, 73, "KP9", U'9', "KP_9"},
    {93, 124, "AE13", 0x00a5, "yen"},
    {94, 89, "AB11", U'_', "underscore"},
    {95, 95, "JPCM", U',', "KP_Separator"},
    {96, 63, "FK05", 0xf708, "F5"},
    {97, 64, "FK06", 0xf709, "F6"},
    {98, 65, "FK07", 0xf70a, "F7"},
    {99, 61, "FK03", 0xf706, "F3"},
    {100, 66, "FK08", 0xf70b, "F8"},
    {101, 67, "FK09", 0xf70c, "F9"},
    {102, 123, "HJCV", 0, "Hangul_Hanja"},
    {103, 87, "FK11", 0xf70e, "F11"},
    {104, 122, "HNGL", 0, "Hangul"},
    {105, 183, "FK13", 0xf710, "F13"},
    {106, 186, "FK16", 0xf713, "F16"},
    {107, 184, "FK14", 0xf711, "F14"},
    {109, 68, "FK10", 0xf70d, "F10"},
    {110, 127, "COMP", 0xf735, "Menu"},
    {111, 88, "FK12", 0xf70f, "F12"},
    {113, 185, "FK15", 0xf712, "F15"},
    {114, 138, "HELP", 0xf746, "Help"},
    // PC keyboards have Insert in the position of Help.
    {114, 110, "INS", 0xf727, "Insert"},
    {115, 102, "HOME", 0xf729, "Home"},
    {116, 104, "PGUP", 0xf72c, "Prior"},
    {117, 111, "DELE", 0xf728, "Delete"},
    {118, 62, "FK04", 0xf707, "F4"},
    {119, 107, "END", 0xf72b, "End"},
    {120, 60, "FK02", 0xf705, "F2"},
    {121, 109, "PGDN", 0xf72d, "Next"},
    {122, 59, "FK01", 0xf704, "F1"},
    {123, 105, "LEFT", 0xf702, "Left"},
    {124, 106, "RGHT", 0xf703, "Right"},
    {125, 108, "DOWN", 0xf701, "Down"},
    {126, 103, "UP", 0xf700, "Up"},
});
// clang-format on

template <class Property>
const VirtualKey* keyWith(Property VirtualKey::*property, const Property& value) {
  const auto* const found =
      std::find_if(keyTable.begin(), keyTable.end(),
                   [&](const VirtualKey& key) { return key.*property == value; });
  return found == keyTable.end() ? nullptr : found;
}

}  // namespace

std::span<const VirtualKey> virtualKeys() {
  return keyTable;
}

const VirtualKey* virtualKeyForEvdevCode(std::uint32_t evdevCode) {
  // Larger codes do not belong to keyboards.
  if (evdevCode > UINT16_MAX) return nullptr;
  return keyWith(&VirtualKey::evdevCode, static_cast<std::uint16_t>(evdevCode));
}

const VirtualKey* virtualKeyForCharacter(char32_t character) {
  return character == 0 ? nullptr : keyWith(&VirtualKey::character, character);
}

const VirtualKey* virtualKeyForKeysym(std::string_view keysym) {
  return keysym.empty() ? nullptr : keyWith(&VirtualKey::keysym, keysym);
}

}  // namespace quillmar
