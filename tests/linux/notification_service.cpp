#include "tests/linux/notification_service.h"

#include <memory>

#include <gtest/gtest.h>

namespace quillmar {

namespace {

constexpr const char* serviceName = "org.freedesktop.Notifications";

constexpr const char* interfaceXml = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg direction="out" type="as"/></method>
  <method name="Notify">
    <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
    <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/>
    <arg direction="out" type="u"/>
  </method>
</interface></node>)";

NotifyCall parse(GVariant* arguments) {
  const char *application, *icon, *summary, *body;
  guint32 replaces;
  GVariant *actions, *hints;
  gint32 timeout;
  g_variant_get(arguments, "(&su&s&s&s@as@a{sv}i)", &application, &replaces, &icon, &summary, &body,
                &actions, &hints, &timeout);
  const GVariantPtr ownActions(actions), ownHints(hints);
  NotifyCall call{application, replaces, icon, summary, body, g_variant_n_children(actions),
                  {},          timeout};
  for (gsize i = 0; i < g_variant_n_children(hints); ++i) {
    const char* name;
    GVariant* value;
    g_variant_get_child(hints, i, "{&sv}", &name, &value);
    const GVariantPtr ownValue(value);
    call.hints[name] = GStringPtr(g_variant_print(value, true)).get();
  }
  return call;
}

}  // namespace

NotificationService::NotificationService(const PrivateBus& bus,
                                         std::vector<std::string> capabilities)
    : connection_(bus.connect()), capabilities_(std::move(capabilities)) {
  static const GDBusInterfaceVTable table{
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
         GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
        static_cast<NotificationService*>(self)->handle(method, arguments, invocation);
      },
      nullptr,
      nullptr,
      {}};
  const GDBusNodeInfoPtr node(g_dbus_node_info_new_for_xml(interfaceXml, nullptr));
  registration_ =
      g_dbus_connection_register_object(connection_.get(), "/org/freedesktop/Notifications",
                                        node->interfaces[0], &table, this, nullptr, nullptr);
  EXPECT_TRUE(takeName(connection_.get(), serviceName));
}

NotificationService::~NotificationService() {
  // The bus has answered this one before anybody can ask again for the name.
  releaseName(connection_.get(), serviceName);
  g_dbus_connection_unregister_object(connection_.get(), registration_);
  g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void NotificationService::handle(const std::string& method, GVariant* arguments,
                                 GDBusMethodInvocation* invocation) {
  const bool isNotify = method == "Notify";
  if (isNotify) {
    notifyCalls_.push_back(parse(arguments));
  } else {
    ++capabilityCalls_;
  }
  if (hangs_) {
    unanswered_.emplace_back(invocation);
  } else if (!refusal_.empty()) {
    g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", refusal_.c_str());
  } else if (isNotify) {
    g_dbus_method_invocation_return_value(
        invocation, g_variant_new("(u)", static_cast<guint32>(notifyCalls_.size())));
  } else {
    g_dbus_method_invocation_return_value(invocation, capabilityList());
  }
}

GVariant* NotificationService::capabilityList() const {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
  for (const auto& capability : capabilities_) {
    g_variant_builder_add(&list, "s", capability.c_str());
  }
  return g_variant_new("(as)", &list);
}

}  // namespace quillmar
