#include "platform/linux/application/application_instance.h"

#include <csignal>
#include <cstdlib>
#include <utility>

#include <glib-unix.h>

namespace quillmar {

namespace {

gboolean terminateOnSignal(gpointer self) {
  static_cast<ApplicationInstance*>(self)->terminate();
  return G_SOURCE_CONTINUE;
}

/// True when some process of the session has the program's name.
bool isNameTaken() {
  const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!bus) return false;
  const GVariantPtr reply(g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "NameHasOwner", g_variant_new("(s)", applicationId), G_VARIANT_TYPE("(b)"),
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  gboolean taken = false;
  if (reply) g_variant_get(reply.get(), "(b)", &taken);
  return taken;
}

}  // namespace

ApplicationInstance::ApplicationInstance(Handlers handlers)
    : handlers_(std::move(handlers)),
      application_(g_application_new(applicationId, G_APPLICATION_DEFAULT_FLAGS)),
      loop_(g_main_loop_new(nullptr, false)) {
  const auto activated = +[](GApplication*, gpointer self) {
    const auto& handler = static_cast<ApplicationInstance*>(self)->handlers_.activate;
    if (handler) handler();
  };
  g_signal_connect(application_.get(), "activate", G_CALLBACK(activated), this);
  for (const int signal : {SIGTERM, SIGINT}) {
    signalSources_.push_back(g_unix_signal_add(signal, terminateOnSignal, this));
  }
  addAction("set-clipboard", "s", [](GSimpleAction*, GVariant* parameter, gpointer self) {
    const auto& handler = static_cast<ApplicationInstance*>(self)->handlers_.setClipboard;
    if (handler) handler(g_variant_get_string(parameter, nullptr));
  });
  addAction("notify", "(ss)", [](GSimpleAction*, GVariant* parameter, gpointer self) {
    const auto& handler = static_cast<ApplicationInstance*>(self)->handlers_.notify;
    const char* title;
    const char* body;
    g_variant_get(parameter, "(&s&s)", &title, &body);
    if (handler) handler(title, body);
  });
}

ApplicationInstance::~ApplicationInstance() {
  for (const guint source : signalSources_) g_source_remove(source);
  if (connection_) g_signal_handlers_disconnect_by_data(connection_.get(), this);
  g_signal_handlers_disconnect_by_data(application_.get(), this);
}

void ApplicationInstance::addAction(const char* name, const char* parameterType,
                                    void (*activate)(GSimpleAction*, GVariant*, gpointer)) {
  const GObjectPtr<GSimpleAction> action(g_simple_action_new(name, G_VARIANT_TYPE(parameterType)));
  g_signal_connect(action.get(), "activate", G_CALLBACK(activate), this);
  g_action_map_add_action(G_ACTION_MAP(application_.get()), G_ACTION(action.get()));
}

ApplicationInstance::Start ApplicationInstance::start() {
  // Registering would ask the other instance what it can do, and wait while a command holds it.
  if (isNameTaken()) return Start::alreadyRunning;
  // g_application_run() would give the name up as soon as its own loop is left.
  if (!g_application_register(application_.get(), nullptr, nullptr)) return Start::noSessionBus;
  if (g_application_get_is_remote(application_.get())) return Start::alreadyRunning;
  GDBusConnection* bus = g_application_get_dbus_connection(application_.get());
  if (!bus) return Start::noSessionBus;
  connection_.reset(G_DBUS_CONNECTION(g_object_ref(bus)));
  // The end of the bus is the end of the session: an orderly one, not GLib's.
  g_dbus_connection_set_exit_on_close(bus, false);
  const auto closed = +[](GDBusConnection*, gboolean, GError*, gpointer self) {
    static_cast<ApplicationInstance*>(self)->terminate();
  };
  g_signal_connect(bus, "closed", G_CALLBACK(closed), this);
  return Start::running;
}

int ApplicationInstance::run() {
  if (!terminated_) g_main_loop_run(loop_.get());
  // The call that ended the loop, a click on "Quit Quillmar", still waits for its answer.
  if (connection_) g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
  return EXIT_SUCCESS;
}

void ApplicationInstance::terminate() {
  terminated_ = true;
  g_main_loop_quit(loop_.get());
}

}  // namespace quillmar
