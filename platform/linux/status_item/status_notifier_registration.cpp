#include "platform/linux/status_item/status_notifier_registration.h"

#include <string_view>
#include <utility>

#include "platform/linux/bus/bus_calls.h"
#include "platform/log.h"

namespace quillmar {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr int defaultTimeout = -1;
// A stopped watcher may continue later. If it exits, the bus reports it.
constexpr int noTimeout = G_MAXINT;

StatusNotifierRegistration* asRegistration(gpointer self) {
  return static_cast<StatusNotifierRegistration*>(self);
}

}  // namespace

StatusNotifierRegistration::StatusNotifierRegistration(GDBusConnection* connection,
                                                       HostHandler hostChanged)
    : connection_(G_DBUS_CONNECTION(g_object_ref(connection))),
      hostChanged_(std::move(hostChanged)),
      cancellable_(g_cancellable_new()) {
  watcherSignals_ = g_dbus_connection_signal_subscribe(
      connection, watcherName, watcherName, nullptr, watcherPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
      signalArrived, this, nullptr);
  propertySignals_ = g_dbus_connection_signal_subscribe(
      connection, watcherName, propertiesInterface, "PropertiesChanged", watcherPath, watcherName,
      G_DBUS_SIGNAL_FLAGS_NONE, signalArrived, this, nullptr);
  nameWatch_ =
      g_bus_watch_name_on_connection(connection, watcherName, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                     watcherAppeared, watcherVanished, this, nullptr);
}

StatusNotifierRegistration::~StatusNotifierRegistration() {
  g_cancellable_cancel(cancellable_.get());
  g_bus_unwatch_name(nameWatch_);
  g_dbus_connection_signal_unsubscribe(connection_.get(), propertySignals_);
  g_dbus_connection_signal_unsubscribe(connection_.get(), watcherSignals_);
}

void StatusNotifierRegistration::watcherAppeared(GDBusConnection*, const char*, const char* owner,
                                                 gpointer self) {
  StatusNotifierRegistration& registration = *asRegistration(self);
  registration.setOwner(owner);
  registration.setHost(StatusNotifierHost::unknown);
  registration.registerItem();
  registration.readHost();
}

void StatusNotifierRegistration::watcherVanished(GDBusConnection*, const char*, gpointer self) {
  StatusNotifierRegistration& registration = *asRegistration(self);
  registration.setOwner("");
  registration.setHost(StatusNotifierHost::missing);
}

void StatusNotifierRegistration::setOwner(std::string owner) {
  owner_ = std::move(owner);
  // A reply is never attributed to the next owner.
  g_cancellable_cancel(cancellable_.get());
  cancellable_.reset(g_cancellable_new());
}

void StatusNotifierRegistration::signalArrived(GDBusConnection*, const char*, const char*,
                                               const char*, const char* signal, GVariant*,
                                               gpointer self) {
  StatusNotifierRegistration& registration = *asRegistration(self);
  if (registration.owner_.empty()) return;
  const std::string_view name = signal;
  if (name == "StatusNotifierHostRegistered") {
    registration.hostAnnounced(StatusNotifierHost::present);
  } else if (name == "StatusNotifierHostUnregistered" || name == "PropertiesChanged") {
    registration.readHost();
  }
}

// Calls use the owner's unique name, so that the next owner never receives them.
void StatusNotifierRegistration::registerItem() {
  g_dbus_connection_call(
      connection_.get(), owner_.c_str(), watcherPath, watcherName, "RegisterStatusNotifierItem",
      g_variant_new("(s)", g_dbus_connection_get_unique_name(connection_.get())), nullptr,
      G_DBUS_CALL_FLAGS_NO_AUTO_START, defaultTimeout, cancellable_.get(), registered, this);
}

void StatusNotifierRegistration::registered(GObject* connection, GAsyncResult* result, gpointer) {
  GError* error = nullptr;
  const GVariantPtr reply(
      g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
  const GErrorPtr owned(error);
  if (error && !g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
    logToStandardOutput("The panel rejected the status icon (" + busErrorMessage(*error) + ").");
  }
}

void StatusNotifierRegistration::readHost() {
  g_dbus_connection_call(connection_.get(), owner_.c_str(), watcherPath, propertiesInterface, "Get",
                         g_variant_new("(ss)", watcherName, "IsStatusNotifierHostRegistered"),
                         G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, noTimeout,
                         cancellable_.get(), hostRead, this);
}

void StatusNotifierRegistration::hostRead(GObject* connection, GAsyncResult* result,
                                          gpointer self) {
  GError* error = nullptr;
  const GVariantPtr reply(
      g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
  const GErrorPtr owned(error);
  // After a cancellation `self` may be gone.
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
  StatusNotifierRegistration& registration = *asRegistration(self);
  const bool isFirstAnswer = registration.host_ == StatusNotifierHost::unknown;
  if (!reply) {
    // A watcher that cannot say has no host yet.
    if (isFirstAnswer) registration.setHost(StatusNotifierHost::missing);
    return;
  }
  const GVariantPtr outer(g_variant_get_child_value(reply.get(), 0));
  const GVariantPtr value(g_variant_get_variant(outer.get()));
  const bool isBoolean = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN);
  const auto host = isBoolean && g_variant_get_boolean(value.get()) ? StatusNotifierHost::present
                                                                    : StatusNotifierHost::missing;
  if (isFirstAnswer) {
    // This owner has just been told of the item.
    registration.setHost(host);
  } else {
    registration.hostAnnounced(host);
  }
}

void StatusNotifierRegistration::hostAnnounced(StatusNotifierHost host) {
  if (host == StatusNotifierHost::present && host_ != host) registerItem();
  setHost(host);
}

void StatusNotifierRegistration::setHost(StatusNotifierHost host) {
  if (host == host_) return;
  host_ = host;
  hostChanged_(host);
}

}  // namespace quillmar
