// Serializes a menu into the variants of the menu protocol.
//
// A menu has thousands of entries but few different icons and keys, so their variants are made once
// and shared. A writer serves one reply: it caches what it has made. Main thread.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/status_item/dbus_menu_tree.h"
#include "platform/linux/status_item/key_equivalent_shortcut.h"
#include "platform/menu.h"

namespace quillmar {

/// How the entries are written for the desktop's panel.
struct DbusMenuStyle {
  ShortcutKeyNames keyNames = ShortcutKeyNames::keysyms;
  /// Returns the PNG picture to send instead of an icon's name; null to send the name. May be
  /// empty.
  std::function<GBytesPtr(const std::string& iconName)> pictureOf;
};

class DbusMenuWriter {
 public:
  /// Writes the properties named in the `as`; an empty one means all. The tree and the style must
  /// outlive the writer.
  DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style, GVariant* propertyNames);

  /// Writes one property.
  DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style, const char* propertyName);

  /// The entry with `depth` levels of descendants, or all of them if negative: `(ia{sv}av)`,
  /// floating.
  GVariant* layout(const DbusMenuTree::Node& node, int depth);

  /// The entry's properties that differ from their defaults: `a{sv}`, floating or shared.
  GVariant* properties(const DbusMenuTree::Node& node);

  /// Default of a property of the protocol, floating; null for an unknown property.
  static GVariant* defaultOf(const char* propertyName);

 private:
  enum Property : std::size_t {
    type,
    label,
    enabled,
    iconName,
    iconData,
    toggleType,
    toggleState,
    childrenDisplay,
    shortcut
  };
  static constexpr std::size_t propertyCount = 9;
  static const std::array<const char*, propertyCount> names;

  /// The `{sv}` pairs of an entry.
  struct Values {
    std::array<GVariant*, propertyCount> values{};
    std::size_t count = 0;

    void add(GVariant* value) {
      if (value) values.at(count++) = value;
    }
  };

  DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style, std::uint32_t wanted);

  static std::uint32_t bitNamed(const char* name);
  static std::uint32_t bitsNamed(GVariant* names);

  bool wants(Property property) const { return (wanted_ >> property & 1U) != 0; }
  void addAppearance(Values& values, const std::string& title, bool isEnabled,
                     const std::optional<Image>& image);
  void addState(Values& values, ControlState state);
  GVariant* pair(Property property, GVariant* value) const;
  GVariant* labelVariant(const std::string& title) const;
  /// The icon by its name or as a picture; null if that property is not requested.
  GVariant* iconPair(const std::string& icon);
  /// Null for a key without a name.
  GVariant* shortcutPair(const KeyEquivalent& keyEquivalent);

  const DbusMenuTree& tree_;
  const DbusMenuStyle& style_;
  std::uint32_t wanted_;
  std::size_t maximumLabelBytes_;
  std::array<GVariantPtr, propertyCount> keys_;
  GVariantPtr noChildren_;
  GVariantPtr separatorPair_;
  GVariantPtr submenuPair_;
  GVariantPtr disabledPair_;
  GVariantPtr togglePair_;
  GVariantPtr offPair_;
  GVariantPtr onPair_;
  std::unordered_map<std::string, GVariantPtr> iconPairs_;
  /// By character and modifier mask.
  std::unordered_map<std::string, GVariantPtr> shortcutPairs_;
};

}  // namespace quillmar
