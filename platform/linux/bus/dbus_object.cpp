#include "platform/linux/bus/dbus_object.h"

#include <string>
#include <utility>

#include "platform/linux/bus/bus_calls.h"
#include "platform/log.h"

namespace quillmar {

namespace {

void answerCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                GVariant* arguments, GDBusMethodInvocation* invocation, gpointer handlers) {
  static_cast<const DbusObject::Handlers*>(handlers)->call(method, arguments, invocation);
}

GVariant* readProperty(GDBusConnection*, const char*, const char*, const char*,
                       const char* property, GError**, gpointer handlers) {
  return static_cast<const DbusObject::Handlers*>(handlers)->property(property);
}

constexpr GDBusInterfaceVTable vtable = {answerCall, readProperty, nullptr, {}};

}  // namespace

DbusObject::DbusObject(GDBusConnection* connection, const char* path, const char* introspection,
                       Handlers handlers)
    : connection_(G_DBUS_CONNECTION(g_object_ref(connection))),
      path_(path),
      node_(g_dbus_node_info_new_for_xml(introspection, nullptr)),
      handlers_(std::move(handlers)) {
  GError* error = nullptr;
  registration_ = g_dbus_connection_register_object(connection, path, node_->interfaces[0], &vtable,
                                                    &handlers_, nullptr, &error);
  const GErrorPtr owned(error);
  if (error) {
    logToStandardError("The object " + path_ + " with the interface " + interface().name +
                       " could not be exported on the session bus (" + busErrorMessage(*error) +
                       ").");
  }
}

DbusObject::~DbusObject() {
  if (registration_ != 0) {
    g_dbus_connection_unregister_object(connection_.get(), registration_);
  }
}

void DbusObject::emit(const char* signal, GVariant* parameters) const {
  g_dbus_connection_emit_signal(connection_.get(), nullptr, path_.c_str(), interface().name, signal,
                                parameters, nullptr);
}

}  // namespace quillmar
