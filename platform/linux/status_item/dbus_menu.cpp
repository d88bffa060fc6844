#include "platform/linux/status_item/dbus_menu.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/text.h"

namespace quillmar {

namespace {

using Id = DbusMenuTree::Id;
using Node = DbusMenuTree::Node;

constexpr std::uint32_t protocolVersion = 3;

constexpr const char* introspection = R"xml(<node>
  <interface name="com.canonical.dbusmenu">
    <property name="Version" type="u" access="read"/>
    <property name="TextDirection" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="IconThemePath" type="as" access="read"/>
    <method name="GetLayout">
      <arg type="i" name="parentId" direction="in"/>
      <arg type="i" name="recursionDepth" direction="in"/>
      <arg type="as" name="propertyNames" direction="in"/>
      <arg type="u" name="revision" direction="out"/>
      <arg type="(ia{sv}av)" name="layout" direction="out"/>
    </method>
    <method name="GetGroupProperties">
      <arg type="ai" name="ids" direction="in"/>
      <arg type="as" name="propertyNames" direction="in"/>
      <arg type="a(ia{sv})" name="properties" direction="out"/>
    </method>
    <method name="GetProperty">
      <arg type="i" name="id" direction="in"/>
      <arg type="s" name="name" direction="in"/>
      <arg type="v" name="value" direction="out"/>
    </method>
    <method name="Event">
      <arg type="i" name="id" direction="in"/>
      <arg type="s" name="eventId" direction="in"/>
      <arg type="v" name="data" direction="in"/>
      <arg type="u" name="timestamp" direction="in"/>
    </method>
    <method name="EventGroup">
      <arg type="a(isvu)" name="events" direction="in"/>
      <arg type="ai" name="idErrors" direction="out"/>
    </method>
    <method name="AboutToShow">
      <arg type="i" name="id" direction="in"/>
      <arg type="b" name="needUpdate" direction="out"/>
    </method>
    <method name="AboutToShowGroup">
      <arg type="ai" name="ids" direction="in"/>
      <arg type="ai" name="updatesNeeded" direction="out"/>
      <arg type="ai" name="idErrors" direction="out"/>
    </method>
    <signal name="ItemsPropertiesUpdated">
      <arg type="a(ia{sv})" name="updatedProps"/>
      <arg type="a(ias)" name="removedProps"/>
    </signal>
    <signal name="LayoutUpdated">
      <arg type="u" name="revision"/>
      <arg type="i" name="parent"/>
    </signal>
    <signal name="ItemActivationRequested">
      <arg type="i" name="id"/>
      <arg type="u" name="timestamp"/>
    </signal>
  </interface>
</node>)xml";

void refuse(GDBusMethodInvocation* invocation, const std::string& message) {
  g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                                message.c_str());
}

void refuseUnknownId(GDBusMethodInvocation* invocation, Id id) {
  refuse(invocation, "The menu has no entry with the id " + std::to_string(id) + ".");
}

GVariant* idArray(const std::vector<Id>& ids) {
  return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(Id));
}

}  // namespace

DbusMenu::DbusMenu(GDBusConnection* connection, const Options& options, ClickHandler onClick)
    : iconThemePath_(text::replacingInvalidCharacters(options.iconThemePath)),
      style_(options.style),
      onClick_(std::move(onClick)),
      object_(
          connection, objectPath, introspection,
          {.call =
               [this](const char* method, GVariant* arguments, GDBusMethodInvocation* invocation) {
                 answer(method, arguments, invocation);
               },
           .property = [this](const char* name) { return property(name); }}) {}

void DbusMenu::setMenu(Menu menu) {
  if (!tree_.replace(std::move(menu))) return;
  object_.emit("LayoutUpdated", g_variant_new("(ui)", tree_.revision(), DbusMenuTree::rootId));
}

void DbusMenu::picturesChanged() {
  tree_.raiseRevision();
  object_.emit("LayoutUpdated", g_variant_new("(ui)", tree_.revision(), DbusMenuTree::rootId));
}

void DbusMenu::answer(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation) {
  const std::string_view name = method;
  if (name == "GetLayout") return getLayout(arguments, invocation);
  if (name == "GetGroupProperties") return getGroupProperties(arguments, invocation);
  if (name == "GetProperty") return getProperty(arguments, invocation);
  if (name == "Event") return event(arguments, invocation);
  if (name == "EventGroup") return eventGroup(arguments, invocation);
  if (name == "AboutToShow") return aboutToShow(arguments, invocation);
  return aboutToShowGroup(arguments, invocation);
}

void DbusMenu::getLayout(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  Id parent = 0;
  int depth = 0;
  GVariant* names = nullptr;
  g_variant_get(arguments, "(ii@as)", &parent, &depth, &names);
  const GVariantPtr ownedNames(names);

  const std::optional<Node> node = tree_.find(parent);
  if (!node) return refuseUnknownId(invocation, parent);
  DbusMenuWriter writer(tree_, style_, names);
  g_dbus_method_invocation_return_value(
      invocation, g_variant_new("(u@(ia{sv}av))", tree_.revision(), writer.layout(*node, depth)));
}

void DbusMenu::getGroupProperties(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  GVariantIter* ids = nullptr;
  GVariant* names = nullptr;
  g_variant_get(arguments, "(ai@as)", &ids, &names);
  const GVariantIterPtr ownedIds(ids);
  const GVariantPtr ownedNames(names);

  DbusMenuWriter writer(tree_, style_, names);
  GVariantBuilder answers;
  g_variant_builder_init(&answers, G_VARIANT_TYPE("a(ia{sv})"));
  const auto add = [&](const Node& node) {
    g_variant_builder_add(&answers, "(i@a{sv})", node.id, writer.properties(node));
  };
  if (g_variant_iter_n_children(ids) == 0) {
    add(*tree_.find(DbusMenuTree::rootId));
    for (const Node& node : tree_.nodes()) add(node);
  }
  std::unordered_set<Id> answered;
  Id id = 0;
  while (g_variant_iter_next(ids, "i", &id)) {
    const std::optional<Node> node = tree_.find(id);
    if (node && answered.insert(id).second) add(*node);
  }
  g_dbus_method_invocation_return_value(
      invocation, g_variant_new("(@a(ia{sv}))", g_variant_builder_end(&answers)));
}

void DbusMenu::getProperty(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  Id id = 0;
  const char* name = nullptr;
  g_variant_get(arguments, "(i&s)", &id, &name);

  const std::optional<Node> node = tree_.find(id);
  if (!node) return refuseUnknownId(invocation, id);
  const GVariantPtr set(g_variant_ref_sink(DbusMenuWriter(tree_, style_, name).properties(*node)));
  GVariantPtr value(g_variant_lookup_value(set.get(), name, nullptr));
  if (!value) {
    GVariant* fallback = DbusMenuWriter::defaultOf(name);
    if (!fallback) {
      return refuse(invocation, std::string("Menu entries have no property \"") + name + "\".");
    }
    value.reset(g_variant_ref_sink(fallback));
  }
  g_dbus_method_invocation_return_value(invocation, g_variant_new("(v)", value.get()));
}

void DbusMenu::event(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  Id id = 0;
  const char* name = nullptr;
  guint32 timestamp = 0;
  g_variant_get(arguments, "(i&s@vu)", &id, &name, nullptr, &timestamp);

  if (!tree_.find(id)) return refuseUnknownId(invocation, id);
  // The arguments are freed with the invocation.
  const Event event{id, name, timestamp};
  g_dbus_method_invocation_return_value(invocation, nullptr);
  if (const ActionEntry* entry = clickedEntry(event)) onClick_(*entry, event.timestamp);
}

void DbusMenu::eventGroup(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  GVariantIter* events = nullptr;
  g_variant_get(arguments, "(a(isvu))", &events);
  const GVariantIterPtr ownedEvents(events);

  std::vector<Id> unknown;
  bool anyKnown = false;
  const ActionEntry* clicked = nullptr;
  std::uint32_t clickTimestamp = 0;
  Id id = 0;
  const char* name = nullptr;
  guint32 timestamp = 0;
  while (g_variant_iter_next(events, "(i&s@vu)", &id, &name, nullptr, &timestamp)) {
    if (!tree_.find(id)) {
      unknown.push_back(id);
      continue;
    }
    anyKnown = true;
    // A menu closes after the first choice, so there is no second one.
    if (clicked) continue;
    clicked = clickedEntry({id, name, timestamp});
    clickTimestamp = timestamp;
  }
  if (!anyKnown && !unknown.empty()) return refuseUnknownId(invocation, unknown.front());
  g_dbus_method_invocation_return_value(invocation, g_variant_new("(@ai)", idArray(unknown)));
  if (clicked) onClick_(*clicked, clickTimestamp);
}

void DbusMenu::aboutToShow(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  Id id = 0;
  g_variant_get(arguments, "(i)", &id);
  if (!tree_.find(id)) return refuseUnknownId(invocation, id);
  g_dbus_method_invocation_return_value(invocation, g_variant_new("(b)", FALSE));
}

void DbusMenu::aboutToShowGroup(GVariant* arguments, GDBusMethodInvocation* invocation) const {
  GVariantIter* ids = nullptr;
  g_variant_get(arguments, "(ai)", &ids);
  const GVariantIterPtr ownedIds(ids);

  std::vector<Id> unknown;
  const std::size_t count = g_variant_iter_n_children(ids);
  Id id = 0;
  while (g_variant_iter_next(ids, "i", &id)) {
    if (!tree_.find(id)) unknown.push_back(id);
  }
  if (count > 0 && unknown.size() == count) return refuseUnknownId(invocation, unknown.front());
  g_dbus_method_invocation_return_value(invocation,
                                        g_variant_new("(@ai@ai)", idArray({}), idArray(unknown)));
}

GVariant* DbusMenu::property(const char* name) const {
  const std::string_view wanted = name;
  if (wanted == "Version") return g_variant_new_uint32(protocolVersion);
  if (wanted == "TextDirection") return g_variant_new_string("ltr");
  if (wanted == "Status") return g_variant_new_string("normal");
  const char* path = iconThemePath_.c_str();
  return g_variant_new_strv(&path, iconThemePath_.empty() ? 0 : 1);
}

const ActionEntry* DbusMenu::clickedEntry(const Event& event) const {
  if (event.name != "clicked") return nullptr;
  const std::optional<Node> node = tree_.find(event.id);
  if (!node || !node->entry) return nullptr;
  const auto* entry = std::get_if<ActionEntry>(node->entry);
  return entry && entry->enabled ? entry : nullptr;
}

}  // namespace quillmar
