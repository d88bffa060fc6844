#include "platform/linux/status_item/dbus_menu_writer.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/menu_label.h"
#include "platform/text.h"

namespace quillmar {

namespace {

GVariant* stringVariant(std::string_view text) {
  return g_variant_new_string(text::replacingInvalidCharacters(text).c_str());
}

/// Limit on the total size of a menu's labels. A panel requests all of them in one message.
constexpr std::size_t maximumBytesOfLabels = std::size_t{8} * 1024 * 1024;

/// A shortcut is a list of key presses; ours have one.
GVariant* shortcutVariant(const std::vector<std::string>& keys) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("aas"));
  g_variant_builder_open(&builder, G_VARIANT_TYPE("as"));
  for (const std::string& key : keys) g_variant_builder_add(&builder, "s", key.c_str());
  g_variant_builder_close(&builder);
  return g_variant_builder_end(&builder);
}

GVariantPtr owned(GVariant* value) {
  return GVariantPtr(g_variant_ref_sink(value));
}

}  // namespace

const std::array<const char*, DbusMenuWriter::propertyCount> DbusMenuWriter::names = {
    "type",        "label",        "enabled",          "icon-name", "icon-data",
    "toggle-type", "toggle-state", "children-display", "shortcut"};

DbusMenuWriter::DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style,
                               GVariant* propertyNames)
    : DbusMenuWriter(tree, style, bitsNamed(propertyNames)) {}

DbusMenuWriter::DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style,
                               const char* propertyName)
    : DbusMenuWriter(tree, style, bitNamed(propertyName)) {}

DbusMenuWriter::DbusMenuWriter(const DbusMenuTree& tree, const DbusMenuStyle& style,
                               std::uint32_t wanted)
    : tree_(tree),
      style_(style),
      wanted_(wanted),
      maximumLabelBytes_(std::min(
          maximumLabelBytes, maximumBytesOfLabels / std::max<std::size_t>(tree.nodes().size(), 1))),
      noChildren_(owned(g_variant_new_array(G_VARIANT_TYPE_VARIANT, nullptr, 0))) {
  for (std::size_t i = 0; i < propertyCount; ++i) {
    keys_.at(i) = owned(g_variant_new_string(names.at(i)));
  }
  separatorPair_ = owned(pair(type, g_variant_new_string("separator")));
  submenuPair_ = owned(pair(childrenDisplay, g_variant_new_string("submenu")));
  disabledPair_ = owned(pair(enabled, g_variant_new_boolean(FALSE)));
  togglePair_ = owned(pair(toggleType, g_variant_new_string("checkmark")));
  offPair_ = owned(pair(toggleState, g_variant_new_int32(0)));
  onPair_ = owned(pair(toggleState, g_variant_new_int32(1)));
}

std::uint32_t DbusMenuWriter::bitNamed(const char* name) {
  for (std::size_t i = 0; i < propertyCount; ++i) {
    if (std::string_view(name) == names.at(i)) return 1U << i;
  }
  return 0;
}

std::uint32_t DbusMenuWriter::bitsNamed(GVariant* wantedNames) {
  GVariantIter iter;
  g_variant_iter_init(&iter, wantedNames);
  if (g_variant_iter_n_children(&iter) == 0) return ~0U;
  std::uint32_t bits = 0;
  const char* name = nullptr;
  while (g_variant_iter_next(&iter, "&s", &name)) bits |= bitNamed(name);
  return bits;
}

GVariant* DbusMenuWriter::layout(const DbusMenuTree::Node& node, int depth) {
  GVariant* children = noChildren_.get();
  if (depth != 0 && node.childCount > 0) {
    const int childDepth = depth < 0 ? depth : depth - 1;  // Below zero there is no limit.
    std::vector<GVariant*> boxes;
    boxes.reserve(static_cast<std::size_t>(node.childCount));
    for (DbusMenuTree::Id i = 0; i < node.childCount; ++i) {
      const auto child = tree_.find(node.firstChild + i);
      boxes.push_back(g_variant_new_variant(layout(*child, childDepth)));
    }
    children = g_variant_new_array(G_VARIANT_TYPE_VARIANT, boxes.data(), boxes.size());
  }
  const std::array<GVariant*, 3> fields = {g_variant_new_int32(node.id), properties(node),
                                           children};
  return g_variant_new_tuple(fields.data(), fields.size());
}

GVariant* DbusMenuWriter::properties(const DbusMenuTree::Node& node) {
  Values values;
  if (!node.entry) {
    if (wants(childrenDisplay)) values.add(submenuPair_.get());
  } else if (const auto* action = std::get_if<ActionEntry>(node.entry)) {
    addAppearance(values, action->title, action->enabled, action->image);
    if (action->state) addState(values, *action->state);
    if (action->keyEquivalent && wants(shortcut)) {
      values.add(shortcutPair(*action->keyEquivalent));
    }
  } else if (const auto* folder = std::get_if<SubmenuEntry>(node.entry)) {
    addAppearance(values, folder->title, folder->enabled, folder->image);
    if (wants(childrenDisplay)) values.add(submenuPair_.get());
  } else if (wants(type)) {
    values.add(separatorPair_.get());
  }
  return g_variant_new_array(G_VARIANT_TYPE("{sv}"), values.values.data(), values.count);
}

void DbusMenuWriter::addAppearance(Values& values, const std::string& title, bool isEnabled,
                                   const std::optional<Image>& image) {
  if (wants(label)) values.add(pair(label, labelVariant(title)));
  if (!isEnabled && wants(enabled)) values.add(disabledPair_.get());
  if (image) values.add(iconPair(image->name));
}

void DbusMenuWriter::addState(Values& values, ControlState state) {
  if (wants(toggleType)) values.add(togglePair_.get());
  // The default of the protocol means mixed.
  if (state == ControlState::mixed || !wants(toggleState)) return;
  values.add(state == ControlState::on ? onPair_.get() : offPair_.get());
}

GVariant* DbusMenuWriter::pair(Property property, GVariant* value) const {
  return g_variant_new_dict_entry(keys_.at(property).get(), g_variant_new_variant(value));
}

// A single underscore marks the mnemonic of a label; two show as one. Panels replace a missing or
// empty label by a text of their own, but show a space as it is.
GVariant* DbusMenuWriter::labelVariant(const std::string& title) const {
  if (title.empty()) return g_variant_new_string(" ");
  std::string escaped;
  for (const char character : menuLabel(title, maximumLabelBytes_)) {
    escaped += character;
    if (character == '_') escaped += character;
  }
  return g_variant_new_string(escaped.c_str());
}

GVariant* DbusMenuWriter::iconPair(const std::string& icon) {
  const auto [known, isNew] = iconPairs_.try_emplace(icon);
  if (!isNew) return known->second.get();
  const GBytesPtr picture = style_.pictureOf ? style_.pictureOf(icon) : nullptr;
  if (picture && wants(iconData)) {
    known->second = owned(
        pair(iconData, g_variant_new_from_bytes(G_VARIANT_TYPE_BYTESTRING, picture.get(), TRUE)));
  } else if (!picture && wants(iconName)) {
    known->second = owned(pair(iconName, stringVariant(icon)));
  }
  return known->second.get();
}

GVariant* DbusMenuWriter::shortcutPair(const KeyEquivalent& keyEquivalent) {
  const std::string id = keyEquivalent.character + " " + std::to_string(keyEquivalent.modifierMask);
  const auto [known, isNew] = shortcutPairs_.try_emplace(id);
  if (isNew) {
    const std::vector<std::string> keys = shortcutForKeyEquivalent(keyEquivalent, style_.keyNames);
    if (!keys.empty()) known->second = owned(pair(shortcut, shortcutVariant(keys)));
  }
  return known->second.get();
}

GVariant* DbusMenuWriter::defaultOf(const char* propertyName) {
  const std::string_view wanted = propertyName;
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
