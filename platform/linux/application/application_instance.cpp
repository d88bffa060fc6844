#include "platform/linux/application/application_instance.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/application/platform_data.h"
#include "platform/linux/bus/session_bus.h"
#include "platform/linux/processes/bounded_wait.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr std::chrono::milliseconds flushTimeout = std::chrono::seconds(1);

constexpr const char* introspection = R"xml(<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="Open">
      <arg type="as" name="uris" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg type="s" name="action_name" direction="in"/>
      <arg type="av" name="parameter" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
  </interface>
</node>)xml";

constexpr const char* ownIntrospection = R"xml(<node>
  <interface name="com.tovenworks.quillmar">
    <property type="(sa(ssi))" name="UnregisteredHotKeys" access="read"/>
  </interface>
</node>)xml";

Error cannotStart(const Error& cause) {
  return {cause.description + ", so Quillmar cannot start."};
}

std::vector<std::string> stringsIn(GVariant* array) {
  std::vector<std::string> strings;
  GVariantIter iterator;
  g_variant_iter_init(&iterator, array);
  const char* string = nullptr;
  while (g_variant_iter_next(&iterator, "&s", &string)) strings.emplace_back(string);
  return strings;
}

/// Waits, but not for a bus that hangs, until everything has been sent.
void flush(GDBusConnection* connection) {
  const std::shared_ptr<GDBusConnection> own(G_DBUS_CONNECTION(g_object_ref(connection)),
                                             g_object_unref);
  endsWithin(flushTimeout, [own] { g_dbus_connection_flush_sync(own.get(), nullptr, nullptr); });
}

}  // namespace

ApplicationInstance::ApplicationInstance(Handlers handlers)
    : handlers_(std::move(handlers)), signals_([this] { terminate(); }) {}

ApplicationInstance::~ApplicationInstance() {
  if (connection_) g_signal_handlers_disconnect_by_data(connection_.get(), this);
}

Result<ApplicationInstance::Start> ApplicationInstance::start(const Environment& environment) {
  auto connection = connectToSessionBus(environment);
  if (!connection) return cannotStart(connection.error());
  connection_ = std::move(connection).value();
  // The session ends when its bus closes the connection.
  const auto closed = +[](GDBusConnection*, gboolean, GError*, gpointer self) {
    static_cast<ApplicationInstance*>(self)->terminate();
  };
  g_signal_connect(connection_.get(), "closed", G_CALLBACK(closed), this);

  // Exported before the name is acquired: peers may call as soon as they see the name.
  object_.emplace(
      connection_.get(), applicationPath, introspection,
      DbusObject::Handlers{
          .call = [this](
                      const char* method, GVariant* arguments,
                      GDBusMethodInvocation* invocation) { answer(method, arguments, invocation); },
          .property = [](const char*) -> GVariant* { return nullptr; }});
  ownInterface_.emplace(
      connection_.get(), applicationPath, ownIntrospection,
      DbusObject::Handlers{.call = nullptr, .property = [this](const char*) -> GVariant* {
                             return hotKeyReport();
                           }});

  constexpr guint32 doNotQueue = 4;
  constexpr guint32 primaryOwner = 1;
  const auto reply = askSessionBus(connection_.get(), "RequestName",
                                   g_variant_new("(su)", applicationId, doNotQueue), "(u)");
  if (!reply) return cannotStart(reply.error());
  guint32 outcome = 0;
  g_variant_get(reply.value().get(), "(u)", &outcome);
  return outcome == primaryOwner ? Start::running : Start::alreadyRunning;
}

int ApplicationInstance::run() {
  loop_.run();
  signals_.loopHasEnded();
  // The call that ended the loop, a click on "Quit Quillmar", still waits for its reply.
  flush(connection_.get());
  return EXIT_SUCCESS;
}

void ApplicationInstance::terminate() {
  loop_.quit();
}

void ApplicationInstance::answer(const char* method, GVariant* arguments,
                                 GDBusMethodInvocation* invocation) {
  if (method == std::string_view("ActivateAction")) return activateAction(arguments, invocation);
  if (method == std::string_view("Open")) {
    open(arguments);
  } else {
    const GVariantPtr platformData(g_variant_get_child_value(arguments, 0));
    if (!hasExpired(platformData.get())) {
      setActivation(activationIn(platformData.get()));
      if (handlers_.activate) handlers_.activate();
    }
  }
  g_dbus_method_invocation_return_value(invocation, nullptr);
}

void ApplicationInstance::open(GVariant* arguments) {
  const GVariantPtr urls(g_variant_get_child_value(arguments, 0));
  const GVariantPtr platformData(g_variant_get_child_value(arguments, 1));
  setActivation(activationIn(platformData.get()));
  if (handlers_.open) handlers_.open(stringsIn(urls.get()));
}

void ApplicationInstance::activateAction(GVariant* arguments, GDBusMethodInvocation* invocation) {
  const GVariantPtr name(g_variant_get_child_value(arguments, 0));
  const GVariantPtr parameters(g_variant_get_child_value(arguments, 1));
  const GVariantPtr platformData(g_variant_get_child_value(arguments, 2));
  const std::string_view action = g_variant_get_string(name.get(), nullptr);
  const std::size_t count = g_variant_n_children(parameters.get());

  if (action == showMenuAction && count == 0) {
    if (const auto shown = showMenu(platformData.get()); !shown) {
      g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                                    shown.error().description.c_str());
      return;
    }
  } else if (count != 1 ||
             !handOver(action, GVariantPtr(g_variant_get_child_value(parameters.get(), 0)).get())) {
    g_dbus_method_invocation_return_error_literal(
        invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "Quillmar has no such action.");
    return;
  }
  g_dbus_method_invocation_return_value(invocation, nullptr);
}

Result<void> ApplicationInstance::showMenu(GVariant* platformData) {
  // A menu that opens long after the request would only be in the way.
  if (hasExpired(platformData)) return Error{"The request for the menu has expired."};
  setActivation(activationIn(platformData));
  return handlers_.showMenu ? handlers_.showMenu() : Result<void>();
}

/// The value of hotKeyReportProperty, floating.
GVariant* ApplicationInstance::hotKeyReport() const {
  const HotKeyReport report = handlers_.hotKeyReport ? handlers_.hotKeyReport() : HotKeyReport();
  const auto sendable = [](const std::string& text) {
    return text::replacingInvalidCharacters(text);
  };
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE(hotKeyReportType));
  g_variant_builder_add(&builder, "s", sendable(report.settingsFile).c_str());
  g_variant_builder_open(&builder, G_VARIANT_TYPE("a(ssi)"));
  for (const UnregisteredHotKey& hotKey : report.unregistered) {
    g_variant_builder_add(&builder, "(ssi)", sendable(hotKey.itemId).c_str(),
                          sendable(hotKey.itemTitle).c_str(), static_cast<gint32>(hotKey.status));
  }
  g_variant_builder_close(&builder);
  return g_variant_builder_end(&builder);
}

/// False if there is no such action, or if its parameter, in a variant, has another type.
bool ApplicationInstance::handOver(std::string_view action, GVariant* parameter) {
  const GVariantPtr value(g_variant_get_variant(parameter));
  const auto isCall = [&](std::string_view wanted, const char* type) {
    return action == wanted && g_variant_is_of_type(value.get(), G_VARIANT_TYPE(type));
  };

  if (isCall("set-clipboard", "s")) {
    if (handlers_.setClipboard) handlers_.setClipboard(g_variant_get_string(value.get(), nullptr));
    return true;
  }
  if (isCall("notify", "(ss)")) {
    const char* title = nullptr;
    const char* body = nullptr;
    g_variant_get(value.get(), "(&s&s)", &title, &body);
    if (handlers_.notify) handlers_.notify(title, body);
    return true;
  }
  return false;
}

}  // namespace quillmar
