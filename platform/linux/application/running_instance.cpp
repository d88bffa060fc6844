#include "platform/linux/application/running_instance.h"

#include <utility>

#include "platform/linux/application/application_instance.h"
#include "platform/linux/bus/bus_calls.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* objectPath = "/com/tovenworks/quillmar";
/// The instance may be busy with a command that holds its main thread.
constexpr int timeoutMilliseconds = 5000;

bool isMissing(const GError* error) {
  return g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
         g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
}

bool isTimeout(const GError* error) {
  return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
         g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY);
}

/// Remembers that something was left out; the first cause stands.
void note(LeftOut& leftOut, bool LeftOut::*what, const Error& error) {
  leftOut.*what = true;
  if (leftOut.cause.empty()) leftOut.cause = error.description;
}

}  // namespace

RunningInstance::RunningInstance() : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
  if (bus_) g_dbus_connection_set_exit_on_close(bus_.get(), false);
}

RunningInstance::RunningInstance(GDBusConnection* bus)
    : bus_(bus ? G_DBUS_CONNECTION(g_object_ref(bus)) : nullptr) {}

bool RunningInstance::isRunning() {
  if (!bus_) return false;
  const BusMethod method = busItself("NameHasOwner");
  const GVariantPtr reply(g_dbus_connection_call_sync(
      bus_.get(), method.destination, method.path, method.interface, method.name,
      g_variant_new("(s)", applicationId), G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE,
      timeoutMilliseconds, nullptr, nullptr));
  gboolean isOwned = false;
  if (reply) g_variant_get(reply.get(), "(b)", &isOwned);
  return isOwned;
}

Result<void> RunningInstance::activateAction(const char* action, GVariant* parameter) {
  const GVariantPtr own(g_variant_ref_sink(parameter));
  if (!bus_) return Error{"There is no session bus to reach Quillmar on"};
  GVariantBuilder parameters;
  g_variant_builder_init(&parameters, G_VARIANT_TYPE("av"));
  g_variant_builder_add(&parameters, "v", own.get());
  GVariantBuilder platformData;
  g_variant_builder_init(&platformData, G_VARIANT_TYPE_VARDICT);
  GError* error = nullptr;
  // Not started when it is not there: the user has not asked for it.
  const GVariantPtr reply(g_dbus_connection_call_sync(
      bus_.get(), applicationId, objectPath, "org.freedesktop.Application", "ActivateAction",
      g_variant_new("(sava{sv})", action, &parameters, &platformData), nullptr,
      G_DBUS_CALL_FLAGS_NO_AUTO_START, timeoutMilliseconds, nullptr, &error));
  if (reply) return {};
  const GErrorPtr failure(error);
  if (isMissing(error)) return Error{"Quillmar is not running"};
  if (isTimeout(error)) return Error{"The running Quillmar does not answer"};
  return Error{"The running Quillmar refused (" + busErrorMessage(*error) + ")"};
}

std::optional<std::string> LeftOut::sentence() const {
  if (clipboard && notification) {
    return cause + ", so the output was not copied to the clipboard and no notification was shown.";
  }
  if (clipboard) return cause + ", so the output was not copied to the clipboard.";
  if (notification) return cause + ", so no notification was shown.";
  return std::nullopt;
}

void RemotePasteboard::setString(std::string text) {
  const auto outcome = instance_.activateAction(
      "set-clipboard", g_variant_new_string(text::replacingUnsendable(text).c_str()));
  if (!outcome) note(leftOut_, &LeftOut::clipboard, outcome.error());
}

void RemoteNotifications::requestAuthorization(AuthorizationOptions,
                                               std::function<void(bool granted)> completion) {
  mainQueue_.async([completion = std::move(completion), granted = instance_.isRunning()] {
    completion(granted);
  });
}

void RemoteNotifications::add(UserNotification notification,
                              std::function<void(std::optional<Error>)> completion) {
  const auto outcome = instance_.activateAction(
      "notify", g_variant_new("(ss)", text::replacingUnsendable(notification.title).c_str(),
                              text::replacingUnsendable(notification.body).c_str()));
  if (!outcome) note(leftOut_, &LeftOut::notification, outcome.error());
  mainQueue_.async([completion = std::move(completion)] { completion(std::nullopt); });
}

}  // namespace quillmar
