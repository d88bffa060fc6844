#include "platform/linux/hot_keys/key_symbols.h"

#include <algorithm>
#include <array>
#include <memory>

#include <malloc.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

template <auto function>
struct Releasing {
  template <class T>
  void operator()(T* object) const {
    function(object);
  }
};

using ContextPtr = std::unique_ptr<xkb_context, Releasing<xkb_context_unref>>;
using KeymapPtr = std::unique_ptr<xkb_keymap, Releasing<xkb_keymap_unref>>;

/// Returns free memory to the system when it is destroyed. A keymap needs half a megabyte.
struct TrimmedHeap {
  TrimmedHeap() = default;
  ~TrimmedHeap() { malloc_trim(0); }
  TrimmedHeap(const TrimmedHeap&) = delete;
  TrimmedHeap& operator=(const TrimmedHeap&) = delete;
};

constexpr xkb_level_index_t plainLevel = 0;
constexpr xkb_level_index_t shiftLevel = 1;
/// X11 and Wayland key codes are larger than those of the kernel.
constexpr xkb_keycode_t firstKeyCode = 8;
// Virtual key codes.
constexpr std::uint32_t firstModifierKey = 54;
constexpr std::uint32_t lastModifierKey = 63;

bool isModifier(std::uint32_t keyCode) {
  return keyCode >= firstModifierKey && keyCode <= lastModifierKey;
}

/// XKB_KEY_NoSymbol if the key types nothing, or more than one symbol.
xkb_keysym_t symbolAt(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout,
                      xkb_level_index_t level) {
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols);
  return count == 1 ? symbols[0] : XKB_KEY_NoSymbol;
}

bool isKeypadDigit(xkb_keysym_t symbol) {
  return (symbol >= XKB_KEY_KP_0 && symbol <= XKB_KEY_KP_9) || symbol == XKB_KEY_KP_Decimal ||
         symbol == XKB_KEY_KP_Separator;
}

bool isLatinOrNoCharacter(xkb_keysym_t symbol) {
  constexpr xkb_keysym_t lastLatin1 = 0xFF;
  constexpr xkb_keysym_t firstFunctionSymbol = 0xFD00;
  return symbol != XKB_KEY_NoSymbol && (symbol <= lastLatin1 || symbol >= firstFunctionSymbol);
}

bool typesCharacter(xkb_keysym_t symbol) {
  const bool isKeypadKey = symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
  constexpr std::uint32_t lastControlCharacter = 0x1F;
  constexpr std::uint32_t deleteCharacter = 0x7F;
  const std::uint32_t character = xkb_keysym_to_utf32(symbol);
  return !isKeypadKey && character > lastControlCharacter && character != deleteCharacter;
}

std::string nameOf(xkb_keysym_t symbol) {
  constexpr std::size_t longestName = 64;
  std::array<char, longestName> name{};
  if (xkb_keysym_get_name(symbol, name.data(), name.size()) <= 0) return {};
  return name.data();
}

/// The layout that shortcuts refer to: desktops match them in a Latin layout if there is one.
xkb_layout_index_t layoutFor(xkb_keymap* keymap, xkb_keycode_t key) {
  const xkb_layout_index_t count = xkb_keymap_num_layouts_for_key(keymap, key);
  for (xkb_layout_index_t layout = 0; layout < count; ++layout) {
    if (isLatinOrNoCharacter(symbolAt(keymap, key, layout, plainLevel))) return layout;
  }
  return 0;
}

KeySymbols symbolsOf(xkb_keymap* keymap, xkb_keycode_t key) {
  const xkb_layout_index_t layout = layoutFor(keymap, key);
  const xkb_keysym_t plain = symbolAt(keymap, key, layout, plainLevel);
  const xkb_keysym_t shifted = symbolAt(keymap, key, layout, shiftLevel);
  if (plain == XKB_KEY_NoSymbol) return {};
  // Without NumLock these are cursor keys.
  if (isKeypadDigit(shifted)) return {nameOf(shifted), {}};
  const bool isCapital = shifted == xkb_keysym_to_upper(plain);
  const bool isOther =
      shifted != plain && !isCapital && typesCharacter(plain) && typesCharacter(shifted);
  return {nameOf(plain), isOther ? nameOf(shifted) : std::string()};
}

KeySymbolTable tableOf(xkb_keymap* keymap) {
  KeySymbolTable table;
  if (!keymap) return table;
  for (const VirtualKey& key : virtualKeys()) {
    if (isModifier(key.code)) continue;
    // Of several keys with a code, the last one is on most keyboards.
    const KeySymbols symbols = symbolsOf(keymap, key.evdevCode + firstKeyCode);
    if (!symbols.plain.empty()) table[key.code] = symbols;
  }
  return table;
}

}  // namespace

bool isShortcutKey(std::uint32_t keyCode) {
  return !isModifier(keyCode) && std::ranges::any_of(virtualKeys(), [&](const VirtualKey& key) {
    return key.code == keyCode;
  });
}

KeySymbolTable keySymbolsOfKeymap(const std::string& keymap) {
  const TrimmedHeap trimmed;
  const ContextPtr context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
  return tableOf(
      KeymapPtr(xkb_keymap_new_from_string(context.get(), keymap.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                           XKB_KEYMAP_COMPILE_NO_FLAGS))
          .get());
}

KeySymbolTable keySymbolsOfLayout(const std::string& layout) {
  const TrimmedHeap trimmed;
  const ContextPtr context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
  const xkb_rule_names names{"evdev", "pc105", layout.c_str(), "", ""};
  return tableOf(
      KeymapPtr(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS))
          .get());
}

}  // namespace quillmar
