// Smart pointers for GLib objects.

#pragma once

#include <memory>

#include <gio/gio.h>

namespace quillmar {

/// A deleter that calls a C function.
template <auto function>
struct Releasing {
  template <class T>
  void operator()(T* object) const {
    function(object);
  }
};

template <class T>
using GObjectPtr = std::unique_ptr<T, Releasing<g_object_unref>>;
using GVariantPtr = std::unique_ptr<GVariant, Releasing<g_variant_unref>>;
using GVariantIterPtr = std::unique_ptr<GVariantIter, Releasing<g_variant_iter_free>>;
using GBytesPtr = std::unique_ptr<GBytes, Releasing<g_bytes_unref>>;
using GErrorPtr = std::unique_ptr<GError, Releasing<g_error_free>>;
using GStringPtr = std::unique_ptr<char, Releasing<g_free>>;
using GStringListPtr = std::unique_ptr<const char*, Releasing<g_free>>;
using GMainLoopPtr = std::unique_ptr<GMainLoop, Releasing<g_main_loop_unref>>;
using GKeyFilePtr = std::unique_ptr<GKeyFile, Releasing<g_key_file_unref>>;
using GMainContextPtr = std::unique_ptr<GMainContext, Releasing<g_main_context_unref>>;
using GDBusNodeInfoPtr = std::unique_ptr<GDBusNodeInfo, Releasing<g_dbus_node_info_unref>>;

}  // namespace quillmar
