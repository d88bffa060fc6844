#include "platform/linux/dbus_menu_properties.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/linux/key_equivalent_shortcut.h"
#include "platform/text.h"

namespace quillmar {

namespace {

enum Property : std::size_t { type, label, iconName, childrenDisplay, shortcut };

constexpr std::array<const char*, 5> names = {"type", "label", "icon-name", "children-display",
                                              "shortcut"};

constexpr std::uint32_t bit(std::size_t property) {
  return 1U << property;
}

std::uint32_t bitNamed(std::string_view name) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (name == names[i]) return bit(i);
  }
  return 0;
}

GVariant* stringVariant(std::string_view text) {
  return g_variant_new_string(text::replacingUnsendable(text).c_str());
}

/// A single underscore marks the letter to press in a label; two show as one.
GVariant* labelVariant(std::string_view title) {
  std::string escaped;
  escaped.reserve(title.size());
  for (const char character : title) {
    escaped += character;
    if (character == '_') escaped += character;
  }
  return stringVariant(escaped);
}

/// A shortcut is a list of key presses; ours have one.
GVariant* shortcutVariant(const std::vector<std::string>& keys) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("aas"));
  g_variant_builder_open(&builder, G_VARIANT_TYPE("as"));
  for (const std::string& key : keys) g_variant_builder_add(&builder, "s", key.c_str());
  g_variant_builder_close(&builder);
  return g_variant_builder_end(&builder);
}

class PropertyWriter {
 public:
  explicit PropertyWriter(std::uint32_t wanted) : wanted_(wanted) {
    g_variant_builder_init(&builder_, G_VARIANT_TYPE_VARDICT);
  }

  GVariant* end() { return g_variant_builder_end(&builder_); }

  void addSubmenu() {
    add(childrenDisplay, [] { return g_variant_new_string("submenu"); });
  }

  void operator()(const SeparatorEntry&) {
    add(type, [] { return g_variant_new_string("separator"); });
  }

  void operator()(const ActionEntry& entry) {
    addTitleAndImage(entry.title, entry.image);
    if (!entry.keyEquivalent || !wants(shortcut)) return;
    const std::vector<std::string> keys = shortcutForKeyEquivalent(*entry.keyEquivalent);
    if (!keys.empty()) add(shortcut, [&] { return shortcutVariant(keys); });
  }

  void operator()(const SubmenuEntry& entry) {
    addTitleAndImage(entry.title, entry.image);
    addSubmenu();
  }

 private:
  bool wants(Property property) const { return (wanted_ & bit(property)) != 0; }

  template <class MakeValue>
  void add(Property property, MakeValue makeValue) {
    if (wants(property)) g_variant_builder_add(&builder_, "{sv}", names.at(property), makeValue());
  }

  void addTitleAndImage(const std::string& title, const std::optional<Image>& image) {
    if (!title.empty()) add(label, [&] { return labelVariant(title); });
    if (image) add(iconName, [&] { return stringVariant(image->name); });
  }

  std::uint32_t wanted_;
  GVariantBuilder builder_;
};

}  // namespace

DbusMenuPropertySet::DbusMenuPropertySet(GVariant* wanted) {
  GVariantIter iter;
  g_variant_iter_init(&iter, wanted);
  if (g_variant_iter_n_children(&iter) == 0) bits_ = ~0U;
  const char* name = nullptr;
  while (g_variant_iter_next(&iter, "&s", &name)) bits_ |= bitNamed(name);
}

DbusMenuPropertySet::DbusMenuPropertySet(const char* name) : bits_(bitNamed(name)) {}

GVariant* DbusMenuPropertySet::valuesFor(const DbusMenuTree::Node& node) const {
  PropertyWriter writer(bits_);
  if (node.entry) {
    std::visit(writer, *node.entry);
  } else {
    writer.addSubmenu();
  }
  return writer.end();
}

GVariant* dbusMenuPropertyDefault(const char* name) {
  const std::string_view wanted = name;
  if (wanted == "type") return g_variant_new_string("standard");
  if (wanted == "enabled" || wanted == "visible") return g_variant_new_boolean(TRUE);
  if (wanted == "toggle-state") return g_variant_new_int32(-1);
  if (wanted == "disposition") return g_variant_new_string("normal");
  if (wanted == "shortcut") return g_variant_new_array(G_VARIANT_TYPE("as"), nullptr, 0);
  if (wanted == "icon-data") return g_variant_new_array(G_VARIANT_TYPE_BYTE, nullptr, 0);
  for (const char* text : {"label", "icon-name", "toggle-type", "children-display"}) {
    if (wanted == text) return g_variant_new_string("");
  }
  return nullptr;
}

}  // namespace quillmar
