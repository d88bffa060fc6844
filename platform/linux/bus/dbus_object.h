// An object that this program shows on a bus: it answers calls and property reads for as long as it
// lives. One interface per DbusObject. Main thread.

#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class DbusObject {
 public:
  struct Handlers {
    /// A call of a method of the interface, its arguments already of the declared types. Must end
    /// the invocation, now or later.
    std::function<void(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation)>
        call;
    /// The value of a property of the interface, floating.
    std::function<GVariant*(const char* property)> property;
  };

  /// Exports the first interface of the introspection data. Precondition: the path has no such
  /// interface on this connection.
  DbusObject(GDBusConnection* connection, const char* path, const char* introspection,
             Handlers handlers);
  DbusObject(const DbusObject&) = delete;
  DbusObject& operator=(const DbusObject&) = delete;
  ~DbusObject();

  /// Sends a signal of the interface to everybody. Takes a floating tuple, null for none. A closed
  /// connection is ignored.
  void emit(const char* signal, GVariant* parameters) const;

 private:
  const GDBusInterfaceInfo& interface() const { return *node_->interfaces[0]; }

  GObjectPtr<GDBusConnection> connection_;
  std::string path_;
  GDBusNodeInfoPtr node_;
  Handlers handlers_;
  guint registration_ = 0;
};

}  // namespace quillmar
