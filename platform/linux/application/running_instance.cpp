#include "platform/linux/application/running_instance.h"

#include <utility>

#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/platform_data.h"
#include "platform/linux/bus/bus_calls.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* notRunning = "Quillmar is not running";
constexpr const char* noMenu = ", so there is no menu to show";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// Records a failure and the cause of the first one.
void record(DeliveryFailures& failures, bool DeliveryFailures::*what, const Error& error) {
  failures.*what = true;
  if (failures.cause.empty()) failures.cause = error.description;
}

}  // namespace

Result<void> RunningInstance::find() {
  if (!bus_) bus_ = connectToSessionBus(environment_, timeout_);
  if (!*bus_) return bus_->error();
  auto reply = askSessionBus(bus_->value().get(), "NameHasOwner",
                             g_variant_new("(s)", applicationId), "(b)", timeout_);
  if (!reply) {
    bus_ = reply.error();
    return reply.error();
  }
  gboolean isOwned = false;
  g_variant_get(reply.value().get(), "(b)", &isOwned);
  if (!isOwned) return Error{notRunning};
  return {};
}

Result<void> RunningInstance::activate() {
  return send("Activate", g_variant_new("(@a{sv})", platformData(environment_, timeout_)));
}

Result<void> RunningInstance::open(const std::vector<std::string>& urls) {
  GVariantBuilder strings;
  g_variant_builder_init(&strings, G_VARIANT_TYPE_STRING_ARRAY);
  for (const std::string& url : urls) {
    g_variant_builder_add(&strings, "s", text::replacingInvalidCharacters(url).c_str());
  }
  // No expiry: the user wants to see a pack even if the instance is busy now.
  return send("Open", g_variant_new("(as@a{sv})", &strings, platformData(environment_)));
}

Result<void> RunningInstance::activateAction(const char* action, GVariant* parameter) {
  const GVariantPtr own(g_variant_ref_sink(parameter));
  if (g_variant_get_size(parameter) > maximumParameterBytes) {
    return Error{"The running Quillmar accepts at most " +
                 std::to_string(maximumParameterBytes >> 20) + " MiB from another process"};
  }
  GVariantBuilder parameters;
  g_variant_builder_init(&parameters, G_VARIANT_TYPE("av"));
  g_variant_builder_add(&parameters, "v", parameter);
  // No user action, so there is no activation to pass on.
  return send("ActivateAction",
              g_variant_new("(sav@a{sv})", action, &parameters, platformData(Environment())));
}

Result<void> RunningInstance::showMenu() {
  if (auto found = find(); !found) return Error{found.error().description + noMenu + "."};
  constexpr Consequences consequences{.notRunning = noMenu, .busy = ", so the menu may not open"};
  // A call that the main loop answers and that has no side effects.
  const auto listens = call(propertiesInterface, "GetAll",
                            g_variant_new("(s)", applicationInterface), timeout_, consequences);
  if (!listens) return listens.error();
  const auto shown = call(
      applicationInterface, "ActivateAction",
      g_variant_new("(sav@a{sv})", showMenuAction, nullptr, platformData(environment_, timeout_)),
      menuTimeout_, consequences);
  if (!shown) return shown.error();
  return {};
}

Result<HotKeyReport> RunningInstance::hotKeyReport() {
  constexpr const char* unmarked = ", so hot keys that do not work are not marked";
  const auto reply = call(propertiesInterface, "Get",
                          g_variant_new("(ss)", instanceInterface, hotKeyReportProperty), timeout_,
                          {.notRunning = unmarked, .busy = unmarked});
  if (!reply) return reply.error();
  GVariant* variant = nullptr;
  g_variant_get(reply.value().get(), "(v)", &variant);
  const GVariantPtr value(variant);
  HotKeyReport report;
  if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE(hotKeyReportType))) return report;

  const char* settingsFile = nullptr;
  GVariantIter* iterator = nullptr;
  g_variant_get(value.get(), "(&sa(ssi))", &settingsFile, &iterator);
  const GVariantIterPtr hotKeys(iterator);
  report.settingsFile = settingsFile;
  const char* itemId = nullptr;
  const char* itemTitle = nullptr;
  gint32 status = 0;
  while (g_variant_iter_next(hotKeys.get(), "(&s&si)", &itemId, &itemTitle, &status)) {
    report.unregistered.push_back({itemId, itemTitle, static_cast<HotKeyStatus>(status)});
  }
  return report;
}

Result<GVariantPtr> RunningInstance::call(const char* interface, const char* method,
                                          GVariant* arguments, std::chrono::milliseconds timeout,
                                          const Consequences& consequences) {
  GError* error = nullptr;
  GVariantPtr reply(g_dbus_connection_call_sync(
      bus_->value().get(), applicationId, applicationPath, interface, method, arguments, nullptr,
      G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(timeout.count()), nullptr, &error));
  const GErrorPtr failure(error);
  if (!failure) return reply;
  if (isMissingService(*failure)) {
    return Error{std::string(notRunning) + consequences.notRunning + "."};
  }
  if (isReplyTimeout(*failure)) {
    return Error{std::string("Quillmar did not answer in time") + consequences.busy +
                 ". It may be busy with a command that does not run in the background."};
  }
  return Error{busErrorMessage(*failure) + "."};
}

Result<void> RunningInstance::send(const char* method, GVariant* arguments) {
  const GVariantPtr own(g_variant_ref_sink(arguments));
  if (auto found = find(); !found) return found;
  // Without a callback no reply is requested. An instance that has just exited is not started
  // again: the user did not ask for it.
  g_dbus_connection_call(bus_->value().get(), applicationId, applicationPath, applicationInterface,
                         method, own.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                         nullptr, nullptr);
  // The reply means that the bus received the call while the instance was still running.
  return find();
}

std::optional<std::string> DeliveryFailures::sentence() const {
  if (clipboard && notification) {
    return cause + ", so the output was not copied to the clipboard and no notification was shown.";
  }
  if (clipboard) return cause + ", so the output was not copied to the clipboard.";
  if (notification) return cause + ", so no notification was shown.";
  return std::nullopt;
}

void RemotePasteboard::setString(std::string text) {
  const auto outcome = instance_.activateAction(
      "set-clipboard", g_variant_new_string(text::replacingInvalidCharacters(text).c_str()));
  if (!outcome) record(failures_, &DeliveryFailures::clipboard, outcome.error());
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
      "notify", g_variant_new("(ss)", text::replacingInvalidCharacters(notification.title).c_str(),
                              text::replacingInvalidCharacters(notification.body).c_str()));
  if (!outcome) record(failures_, &DeliveryFailures::notification, outcome.error());
  mainQueue_.async([completion = std::move(completion)] { completion(std::nullopt); });
}

}  // namespace quillmar
