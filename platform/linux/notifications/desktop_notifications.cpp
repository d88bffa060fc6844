#include "platform/linux/notifications/desktop_notifications.h"

#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/application/application_instance.h"
#include "platform/linux/bus/markup.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr std::size_t maximumUnanswered = 32;

constexpr const char* serviceName = "org.freedesktop.Notifications";
constexpr const char* applicationName = "Quillmar";
constexpr const char* standardSoundName = "message-new-instant";
constexpr guint8 normalUrgency = 1;
constexpr gint32 timeoutOfTheService = -1;

constexpr BusMethod service(const char* name) {
  return {serviceName, "/org/freedesktop/Notifications", serviceName, name};
}

bool holds(GVariant* strings, std::string_view wanted) {
  const GStringListPtr list(g_variant_get_strv(strings, nullptr));
  for (const gchar** each = list.get(); *each; ++each) {
    if (*each == wanted) return true;
  }
  return false;
}

Error describe(const GError& error) {
  if (isMissingService(error)) {
    return {"No notification service is running and none can be started."};
  }
  if (busErrorName(error).starts_with("org.freedesktop.DBus.Error.Spawn.")) {
    return {"The notification service could not be started (" + busErrorMessage(error) + ")."};
  }
  if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CLOSED)) {
    return {"The connection to the session bus was lost, so no notification can be shown."};
  }
  if (isReplyTimeout(error)) return {"The notification service did not answer."};
  return {"The notification service rejected the notification (" + busErrorMessage(error) + ")."};
}

}  // namespace

DesktopNotifications::DesktopNotifications(GDBusConnection* sessionBus) : calls_(sessionBus) {
  const auto ownerChanged = [](GDBusConnection*, const gchar*, const gchar*, const gchar*,
                               const gchar*, GVariant*, gpointer self) {
    static_cast<DesktopNotifications*>(self)->bodyIsMarkup_.reset();
  };
  ownerWatch_ = g_dbus_connection_signal_subscribe(
      sessionBus, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
      "/org/freedesktop/DBus", serviceName, G_DBUS_SIGNAL_FLAGS_NONE, ownerChanged, this, nullptr);
}

DesktopNotifications::~DesktopNotifications() {
  g_dbus_connection_signal_unsubscribe(calls_.connection(), ownerWatch_);
}

void DesktopNotifications::requestAuthorization(AuthorizationOptions,
                                                std::function<void(bool granted)> completion) {
  calls_.call(busDaemonMethod("NameHasOwner"), g_variant_new("(s)", serviceName), "(b)",
              [this, completion = std::move(completion)](GVariant* result, const GError*) {
                gboolean isOwned = false;
                if (result) g_variant_get(result, "(b)", &isOwned);
                if (isOwned) return completion(true);
                calls_.call(busDaemonMethod("ListActivatableNames"), nullptr, "(as)",
                            [completion](GVariant* names, const GError*) {
                              if (!names) return completion(false);
                              const GVariantPtr list(g_variant_get_child_value(names, 0));
                              completion(holds(list.get(), serviceName));
                            });
              });
}

void DesktopNotifications::add(UserNotification notification,
                               std::function<void(std::optional<Error>)> completion) {
  const bool withSound =
      notification.sound != NotificationSound::none && presentation(notification).sound;
  waiting_.push_back({std::move(notification), withSound, std::move(completion)});
  sendOrAsk();
}

void DesktopNotifications::sendOrAsk() {
  if (waiting_.empty()) return;
  if (bodyIsMarkup_) {
    sendWaiting(*bodyIsMarkup_);
  } else if (!asking_) {
    askForCapabilities();
  }
}

void DesktopNotifications::askForCapabilities() {
  asking_ = true;
  calls_.call(
      service("GetCapabilities"), nullptr, "(as)",
      [this](GVariant* result, const GError* error) { capabilitiesArrived(result, error); });
}

void DesktopNotifications::capabilitiesArrived(GVariant* result, const GError* error) {
  asking_ = false;
  if (result) {
    const GVariantPtr list(g_variant_get_child_value(result, 0));
    bodyIsMarkup_ = holds(list.get(), "body-markup");
    sendWaiting(*bodyIsMarkup_);
  } else if (isMissingService(*error)) {
    failWaiting(describe(*error));
  } else {
    // After an error, assume no markup. The next notification asks again.
    sendWaiting(false);
  }
}

void DesktopNotifications::sendWaiting(bool bodyIsMarkup) {
  while (!waiting_.empty() && unanswered_ < maximumUnanswered) {
    Request request = std::move(waiting_.front());
    waiting_.pop_front();
    notify(std::move(request), bodyIsMarkup);
  }
}

void DesktopNotifications::failWaiting(const Error& error) {
  for (auto& request : std::exchange(waiting_, {})) request.completion(error);
}

void DesktopNotifications::notify(Request request, bool bodyIsMarkup) {
  const std::string summary = text::replacingInvalidCharacters(request.notification.title);
  std::string body = text::replacingInvalidCharacters(request.notification.body);
  if (bodyIsMarkup) body = escapedMarkup(body);

  GVariantBuilder hints;
  g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(applicationId));
  g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(normalUrgency));
  if (request.withSound) {
    g_variant_builder_add(&hints, "{sv}", "sound-name", g_variant_new_string(standardSoundName));
  }
  constexpr guint32 replacesNone = 0;
  GVariant* arguments = g_variant_new("(susss@asa{sv}i)", applicationName, replacesNone,
                                      applicationId, summary.c_str(), body.c_str(),
                                      g_variant_new_strv(nullptr, 0), &hints, timeoutOfTheService);
  ++unanswered_;
  calls_.call(service("Notify"), arguments, "(u)",
              [this, completion = std::move(request.completion)](GVariant*, const GError* error) {
                --unanswered_;
                sendOrAsk();
                completion(error ? std::optional(describe(*error)) : std::nullopt);
              });
}

}  // namespace quillmar
