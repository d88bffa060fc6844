#include "platform/linux/appearance/appearance_watch.h"

#include <string_view>
#include <utility>

namespace quillmar {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
constexpr const char* group = "org.freedesktop.appearance";
constexpr const char* key = "color-scheme";

}  // namespace

AppearanceWatch::AppearanceWatch(GDBusConnection* connection, AppearanceSettings settings,
                                 std::function<void(Appearance appearance)> changed)
    : settings_(std::move(settings)),
      changed_(std::move(changed)),
      fromFiles_(settings_.read()),
      current_(fromFiles_),
      calls_(connection) {
  subscription_ = g_dbus_connection_signal_subscribe(
      connection, service, interface, "SettingChanged", path, group, G_DBUS_SIGNAL_FLAGS_NONE,
      settingChanged, this, nullptr);
  for (const std::string& file : settings_.files()) {
    const GObjectPtr<GFile> watched(g_file_new_for_path(file.c_str()));
    // GIO polls for a folder that does not exist, which would wake up the idle program.
    const GObjectPtr<GFile> folder(g_file_get_parent(watched.get()));
    if (!g_file_query_exists(folder.get(), nullptr)) continue;
    GFileMonitor* const monitor =
        g_file_monitor_file(watched.get(), G_FILE_MONITOR_NONE, nullptr, nullptr);
    if (!monitor) continue;
    g_signal_connect(monitor, "changed", G_CALLBACK(fileChanged), this);
    monitors_.emplace_back(monitor);
  }
  // A call to a portal that is not running would start it.
  nameWatch_ = g_bus_watch_name_on_connection(connection, service, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                              portalAppeared, portalVanished, this, nullptr);
}

AppearanceWatch::~AppearanceWatch() {
  g_bus_unwatch_name(nameWatch_);
  for (const auto& monitor : monitors_) g_signal_handlers_disconnect_by_data(monitor.get(), this);
  g_dbus_connection_signal_unsubscribe(calls_.connection(), subscription_);
}

void AppearanceWatch::portalAppeared(GDBusConnection*, const char*, const char*, gpointer self) {
  static_cast<AppearanceWatch*>(self)->askPortal();
}

void AppearanceWatch::portalVanished(GDBusConnection*, const char*, gpointer self) {
  auto& watch = *static_cast<AppearanceWatch*>(self);
  watch.fromPortal_ = Appearance::unknown;
  watch.update();
}

void AppearanceWatch::askPortal() {
  calls_.call({service, path, interface, "Read"}, g_variant_new("(ss)", group, key), "(v)",
              [this](GVariant* result, const GError*) {
                // Without a portal the files decide.
                if (!result) return;
                const GVariantPtr value(g_variant_get_child_value(result, 0));
                takeFromPortal(value.get());
              });
}

void AppearanceWatch::settingChanged(GDBusConnection*, const char*, const char*, const char*,
                                     const char*, GVariant* parameters, gpointer self) {
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
  const char* changedKey = nullptr;
  g_variant_get_child(parameters, 1, "&s", &changedKey);
  if (std::string_view(changedKey) != key) return;
  const GVariantPtr value(g_variant_get_child_value(parameters, 2));
  static_cast<AppearanceWatch*>(self)->takeFromPortal(value.get());
}

void AppearanceWatch::fileChanged(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent, gpointer self) {
  auto& watch = *static_cast<AppearanceWatch*>(self);
  watch.fromFiles_ = watch.settings_.read();
  watch.update();
}

void AppearanceWatch::takeFromPortal(GVariant* value) {
  // The portal nests variants.
  GVariantPtr inner(g_variant_ref(value));
  while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT)) {
    inner.reset(g_variant_get_variant(inner.get()));
  }
  enum Preference : guint32 { preferDark = 1, preferLight = 2 };
  fromPortal_ = Appearance::unknown;
  if (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32)) {
    const guint32 preference = g_variant_get_uint32(inner.get());
    if (preference == preferDark) fromPortal_ = Appearance::dark;
    if (preference == preferLight) fromPortal_ = Appearance::light;
  }
  update();
}

void AppearanceWatch::update() {
  const Appearance now = fromPortal_ != Appearance::unknown ? fromPortal_ : fromFiles_;
  if (now == current_) return;
  current_ = now;
  changed_(now);
}

}  // namespace quillmar
