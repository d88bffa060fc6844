#include "tests/linux/panel_client.h"

#include <cstdlib>
#include <string_view>

namespace quillmar {

namespace {

constexpr const char* watcherInterface = R"(<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem">
      <arg type="s" name="service" direction="in"/>
    </method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <signal name="StatusNotifierHostRegistered"/>
  </interface>
</node>)";

GDBusMessage* dropCalls(GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer) {
  if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
    return message;
  }
  g_object_unref(message);
  return nullptr;
}

}  // namespace

FakeWatcher::FakeWatcher(const PrivateBus& bus, bool hasHost, bool isSilent)
    : connection_(bus.connect()), hasHost_(hasHost) {
  if (isSilent) g_dbus_connection_add_filter(connection_.get(), dropCalls, nullptr, nullptr);
  object_ = std::make_unique<DbusObject>(
      connection_.get(), "/StatusNotifierWatcher", watcherInterface,
      DbusObject::Handlers{
          .call =
              [this](const char*, GVariant* arguments, GDBusMethodInvocation* invocation) {
                const char* service = nullptr;
                g_variant_get(arguments, "(&s)", &service);
                registrations_.emplace_back(service);
                g_dbus_method_invocation_return_value(invocation, nullptr);
              },
          .property = [this](const char*) { return g_variant_new_boolean(hasHost_); }});
  constexpr guint doNotQueue = 4;
  const BusReply reply = callOnBus(
      connection_.get(), {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
      "RequestName", g_variant_new("(su)", "org.kde.StatusNotifierWatcher", doNotQueue));
  if (!reply.value) std::abort();
}

FakeWatcher::~FakeWatcher() {
  object_.reset();
  g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void FakeWatcher::announceHost() {
  hasHost_ = true;
  object_->emit("StatusNotifierHostRegistered", nullptr);
}

PanelClient::PanelClient(const PrivateBus& bus, GDBusConnection* program)
    : connection_(bus.connect()),
      item_{g_dbus_connection_get_unique_name(program), "/StatusNotifierItem",
            "org.kde.StatusNotifierItem"},
      menu_{item_.destination, "/MenuBar", "com.canonical.dbusmenu"},
      subscription_(g_dbus_connection_signal_subscribe(
          connection_.get(), item_.destination.c_str(), nullptr, nullptr, nullptr, nullptr,
          G_DBUS_SIGNAL_FLAGS_NONE, signalArrived, this, nullptr)) {
  settle(connection_.get());
}

PanelClient::~PanelClient() {
  g_dbus_connection_signal_unsubscribe(connection_.get(), subscription_);
}

GVariantPtr PanelClient::itemProperty(const char* name) {
  return readPropertyOnBus(connection_.get(), item_, name);
}

std::string PanelClient::itemPropertyText(const char* name) {
  return printed(itemProperty(name).get());
}

std::string PanelClient::menuPropertyText(const char* name) {
  return printed(readPropertyOnBus(connection_.get(), menu_, name).get());
}

BusReply PanelClient::callItem(const char* method, GVariant* arguments) {
  return callOnBus(connection_.get(), item_, method, arguments);
}

BusReply PanelClient::callMenu(const char* method, GVariant* arguments) {
  return callOnBus(connection_.get(), menu_, method, arguments);
}

PanelEntry PanelClient::layout() {
  const BusReply reply = callMenu("GetLayout", g_variant_new("(iias)", 0, -1, nullptr));
  if (!reply.value) return {};
  const GVariantPtr root(g_variant_get_child_value(reply.value.get(), 1));
  return panelEntry(root.get());
}

BusReply PanelClient::event(std::int32_t id, const char* name, std::uint32_t timestamp) {
  return callMenu("Event", g_variant_new("(isvu)", id, name, g_variant_new_string(""), timestamp));
}

BusReply PanelClient::provideActivationToken(const std::string& token) {
  return callItem("ProvideXdgActivationToken", g_variant_new("(s)", token.c_str()));
}

// Messages from one sender to one receiver keep their order.
void PanelClient::settleSignals() {
  callMenu("AboutToShow", g_variant_new("(i)", 0));
}

void PanelClient::signalArrived(GDBusConnection*, const char*, const char*, const char*,
                                const char* signal, GVariant* parameters, gpointer self) {
  PanelClient& panel = *static_cast<PanelClient*>(self);
  const std::string_view name = signal;
  if (name == "LayoutUpdated") {
    guint revision = 0;
    gint32 parent = 0;
    g_variant_get(parameters, "(ui)", &revision, &parent);
    panel.layoutUpdates_.push_back(revision);
  } else if (name == "NewIcon") {
    ++panel.newIconCount_;
  }
}

PanelEntry panelEntry(GVariant* layout) {
  PanelEntry entry;
  GVariantIter* properties = nullptr;
  GVariantIter* children = nullptr;
  g_variant_get(layout, "(ia{sv}av)", &entry.id, &properties, &children);
  const GVariantIterPtr ownedProperties(properties);
  const GVariantIterPtr ownedChildren(children);
  const char* name = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_next(properties, "{&sv}", &name, &value)) {
    const GVariantPtr owned(value);
    entry.properties[name] = printed(value);
  }
  while (g_variant_iter_next(children, "v", &value)) {
    const GVariantPtr owned(value);
    entry.children.push_back(panelEntry(value));
  }
  return entry;
}

std::string printed(GVariant* value) {
  if (!value) return {};
  const GStringPtr text(g_variant_print(value, FALSE));
  return text.get();
}

}  // namespace quillmar
