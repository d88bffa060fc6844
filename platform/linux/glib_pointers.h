// Owning pointers to GLib's objects. Each holds one reference, or one allocation, and gives it
// back.

#pragma once

#include <memory>

#include <gio/gio.h>

namespace quillmar {

struct GLibRelease {
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
  void operator()(GVariantIter* iterator) const { g_variant_iter_free(iterator); }
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
  void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
  void operator()(char* text) const { g_free(text); }
};

/// For the kinds of GLib that are not GObjects.
template <class T>
using GLibPointer = std::unique_ptr<T, GLibRelease>;

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};

template <class T>
using GObjectPointer = std::unique_ptr<T, GObjectUnref>;

/// A further reference to an object that somebody else holds.
template <class T>
GObjectPointer<T> share(T* object) {
  return GObjectPointer<T>(static_cast<T*>(g_object_ref(object)));
}

template <class T>
using GObjectPtr = GObjectPointer<T>;
using GVariantPtr = GLibPointer<GVariant>;
using GVariantIterPtr = GLibPointer<GVariantIter>;
using GErrorPtr = GLibPointer<GError>;
using GStringPtr = GLibPointer<char>;
using GKeyFilePtr = GLibPointer<GKeyFile>;
using GMainContextPtr = GLibPointer<GMainContext>;
using GDBusNodeInfoPtr = GLibPointer<GDBusNodeInfo>;

}  // namespace quillmar
