#include "platform/linux/bus/bus_calls.h"

#include <memory>
#include <utility>

namespace quillmar {

BusCalls::~BusCalls() {
  g_cancellable_cancel(cancellable_.get());
}

void BusCalls::call(const BusMethod& method, GVariant* arguments, const char* resultType,
                    Answer answer, GUnixFDList* descriptors) {
  const auto finish = [](GObject* connection, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Answer> own(static_cast<Answer*>(data));
    GError* error = nullptr;
    const GVariantPtr value(g_dbus_connection_call_with_unix_fd_list_finish(
        G_DBUS_CONNECTION(connection), nullptr, result, &error));
    const GErrorPtr failure(error);
    // The BusCalls object has been destroyed.
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
    (*own)(value.get(), failure.get());
  };
  g_dbus_connection_call_with_unix_fd_list(
      connection_.get(), method.destination, method.path, method.interface, method.name, arguments,
      G_VARIANT_TYPE(resultType), G_DBUS_CALL_FLAGS_NONE, -1, descriptors, cancellable_.get(),
      finish, new Answer(std::move(answer)));
}

std::string busErrorName(const GError& error) {
  const GStringPtr name(g_dbus_error_get_remote_error(&error));
  return name ? name.get() : "";
}

bool isMissingService(const GError& error) {
  return g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
         g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
}

bool isReplyTimeout(const GError& error) {
  return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
         g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY);
}

std::string busErrorMessage(const GError& error) {
  const GErrorPtr copy(g_error_copy(&error));
  g_dbus_error_strip_remote_error(copy.get());
  std::string message = copy->message;
  if (message.ends_with('.')) message.pop_back();
  return message;
}

}  // namespace quillmar
