#include "platform/linux/hot_keys/portal_request.h"

#include <algorithm>
#include <utility>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

namespace {

/// Values of the signal Response.
constexpr guint32 success = 0;
constexpr guint32 cancelledByUser = 1;

std::string nextHandleToken() {
  static unsigned last = 0;
  return "quillmar" + std::to_string(++last);
}

}  // namespace

std::string portalSenderPath(GDBusConnection* connection) {
  std::string name = g_dbus_connection_get_unique_name(connection);
  name.erase(0, 1);
  std::ranges::replace(name, '.', '_');
  return name;
}

PortalRequest::PortalRequest(BusCalls& calls, const char* method, const Arguments& arguments,
                             Timeout timeout, Completion completion)
    : calls_(calls), completion_(std::move(completion)) {
  const std::string token = nextHandleToken();
  const std::string path =
      std::string(portalPath) + "/request/" + portalSenderPath(calls.connection()) + "/" + token;
  subscription_ = g_dbus_connection_signal_subscribe(
      calls.connection(), portalName, "org.freedesktop.portal.Request", "Response", path.c_str(),
      nullptr, G_DBUS_SIGNAL_FLAGS_NONE, responseArrived, this, nullptr);
  calls_.call({portalName, portalPath, "org.freedesktop.portal.GlobalShortcuts", method},
              arguments(token.c_str()), "(o)",
              [this, alive = std::weak_ptr(alive_)](GVariant*, const GError* error) {
                if (error && !alive.expired()) finish(Outcome::failed, nullptr);
              });
  if (timeout) {
    cancelTimeout_ =
        MainLoopTaskQueue::asyncAfter(*timeout, [this] { finish(Outcome::failed, nullptr); });
  }
}

PortalRequest::~PortalRequest() {
  if (cancelTimeout_) cancelTimeout_();
  g_dbus_connection_signal_unsubscribe(calls_.connection(), subscription_);
}

void PortalRequest::responseArrived(GDBusConnection*, const char*, const char*, const char*,
                                    const char*, GVariant* parameters, gpointer self) {
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})"))) return;
  guint32 response = 0;
  GVariant* results;
  g_variant_get(parameters, "(u@a{sv})", &response, &results);
  const GVariantPtr own(results);
  static_cast<PortalRequest*>(self)->finish(response == success           ? Outcome::success
                                            : response == cancelledByUser ? Outcome::cancelledByUser
                                                                          : Outcome::failed,
                                            results);
}

void PortalRequest::finish(Outcome outcome, GVariant* results) {
  if (cancelTimeout_) cancelTimeout_();
  if (const Completion completion = std::exchange(completion_, nullptr)) {
    completion(outcome, results);
  }
}

}  // namespace quillmar
