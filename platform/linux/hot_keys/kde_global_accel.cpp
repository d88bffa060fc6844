#include "platform/linux/hot_keys/kde_global_accel.h"

#include <utility>

namespace quillmar {

namespace {

constexpr const char* serviceName = "org.kde.kglobalaccel";

constexpr BusMethod service(const char* name) {
  return {serviceName, "/kglobalaccel", "org.kde.KGlobalAccel", name};
}

bool hasKey(GVariant* keys) {
  for (gsize i = 0; i < g_variant_n_children(keys); ++i) {
    gint32 key = 0;
    g_variant_get_child(keys, i, "i", &key);
    if (key != 0) return true;
  }
  return false;
}

void append(std::vector<KdeShortcut>& stored, GVariant* infos) {
  for (gsize i = 0; i < g_variant_n_children(infos); ++i) {
    const char *id, *component;
    GVariant* keys;
    g_variant_get_child(infos, i, "(&ss&ssss@aiai)", &id, nullptr, &component, nullptr, nullptr,
                        nullptr, &keys, nullptr);
    const GVariantPtr ownKeys(keys);
    stored.push_back({component, id, hasKey(keys)});
  }
}

}  // namespace

KdeGlobalAccel::KdeGlobalAccel(BusCalls& calls, std::string token)
    : calls_(calls), token_(std::move(token)) {}

void KdeGlobalAccel::find(std::function<void(bool isKde)> found) {
  calls_.call(busDaemonMethod("NameHasOwner"), g_variant_new("(s)", serviceName), "(b)",
              [found = std::move(found)](GVariant* result, const GError*) {
                gboolean isOwned = false;
                if (result) g_variant_get(result, "(b)", &isOwned);
                found(isOwned);
              });
}

void KdeGlobalAccel::list(Listed listed) {
  calls_.call(service("allComponents"), nullptr, "(ao)",
              [this, listed = std::move(listed)](GVariant* result, const GError*) {
                std::vector<std::string> paths;
                if (result) {
                  const GVariantPtr list(g_variant_get_child_value(result, 0));
                  for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
                    const char* path;
                    g_variant_get_child(list.get(), i, "&o", &path);
                    if (std::string(path).ends_with(token_)) paths.emplace_back(path);
                  }
                }
                listComponents(std::move(paths), {}, listed);
              });
}

void KdeGlobalAccel::listComponents(std::vector<std::string> paths, std::vector<KdeShortcut> stored,
                                    Listed listed) {
  if (paths.empty()) return listed(std::move(stored));
  const std::string path = std::move(paths.back());
  paths.pop_back();
  calls_.call({serviceName, path.c_str(), "org.kde.kglobalaccel.Component", "allShortcutInfos"},
              nullptr, "(a(ssssssaiai))",
              [this, paths = std::move(paths), stored = std::move(stored),
               listed = std::move(listed)](GVariant* result, const GError*) mutable {
                if (result) {
                  const GVariantPtr infos(g_variant_get_child_value(result, 0));
                  append(stored, infos.get());
                }
                listComponents(std::move(paths), std::move(stored), std::move(listed));
              });
}

void KdeGlobalAccel::remove(const KdeShortcut& shortcut) {
  calls_.call(service("unregister"),
              g_variant_new("(ss)", shortcut.component.c_str(), shortcut.id.c_str()), "(b)",
              [](GVariant*, const GError*) {});
}

}  // namespace quillmar
