// An object exported on a bus. It answers method calls and property reads as long as it lives. One
// interface per DbusObject. Main thread.

#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class DbusObject {
 public:
  struct Handlers {
    /// Handles a method call. The arguments have the declared types. Must finish the invocation,
    /// now or later.
    std::function<void(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation)>
        call;
    /// Returns the value of a property, floating.
    std::function<GVariant*(const char* property)> property;
  };

  /// Exports the first interface of the introspection data. Precondition: the path has no such
  /// interface on this connection.
  DbusObject(GDBusConnection* connection, const char* path, const char* introspection,
             Handlers handlers);
  DbusObject(const DbusObject&) = delete;
  DbusObject& operator=(const DbusObject&) = delete;
  ~DbusObject();

  /// Broadcasts a signal of the interface. `parameters` is a floating tuple, or null for none. Does
  /// nothing on a closed connection.
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
