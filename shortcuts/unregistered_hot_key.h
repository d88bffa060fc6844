// A hot key that could not be registered, and the explanation for the user.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/hot_keys.h"

namespace quillmar {

/// An item whose global shortcut does not work.
struct UnregisteredHotKey {
  std::string itemId;
  /// Title of the item, which identifies it in files without ids.
  std::string itemTitle;
  HotKeyStatus status{};

  bool operator==(const UnregisteredHotKey&) const = default;
};

/// What one running program reports about the hot keys of its settings.
struct HotKeyReport {
  /// Path of the settings file. Another program may use another file.
  std::string settingsFile;
  std::vector<UnregisteredHotKey> unregistered;

  bool operator==(const HotKeyReport&) const = default;
};

/// Why the hot key is not registered, as part of a sentence: "the shortcut is already in use".
std::string_view explanation(HotKeyStatus status);

}  // namespace quillmar
