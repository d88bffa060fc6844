// What the menu protocol says about one entry: its properties, as variants.

#pragma once

#include <cstdint>

#include <gio/gio.h>

#include "platform/linux/dbus_menu_tree.h"

namespace quillmar {

/// Some of the properties that this program sends, by name.
class DbusMenuPropertySet {
 public:
  /// From an array of names, `as`; an empty one means all. Names that are not ours are left out.
  explicit DbusMenuPropertySet(GVariant* names);
  explicit DbusMenuPropertySet(const char* name);

  bool isEmpty() const { return bits_ == 0; }

  /// The entry's properties of this set that differ from their defaults: `a{sv}`, floating.
  GVariant* valuesFor(const DbusMenuTree::Node& node) const;

 private:
  std::uint32_t bits_ = 0;
};

/// The default of a property of the protocol, floating; null when the protocol has no such
/// property.
GVariant* dbusMenuPropertyDefault(const char* name);

}  // namespace quillmar
