#include "platform/linux/icons/symbol_pictures.h"

#include <memory>

namespace quillmar {

namespace {

/// Null if the file or the path does not exist.
GBytesPtr readPicture(const std::string& file, const std::string& path) {
  const std::unique_ptr<GResource, Releasing<g_resource_unref>> pictures(
      g_resource_load(file.c_str(), nullptr));
  if (!pictures) return nullptr;
  const GBytesPtr mapped(
      g_resource_lookup_data(pictures.get(), path.c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr));
  if (!mapped) return nullptr;
  gsize size = 0;
  const gconstpointer data = g_bytes_get_data(mapped.get(), &size);
  return GBytesPtr(g_bytes_new(data, size));
}

}  // namespace

GBytesPtr SymbolPictures::png(const std::string& iconName, bool isMenuDark) const {
  const std::string path = std::string(isMenuDark ? "/dark/" : "/light/") + iconName + ".png";
  const auto [picture, isNew] = pictures_.try_emplace(path);
  if (isNew) picture->second = readPicture(file_, path);
  return picture->second ? GBytesPtr(g_bytes_ref(picture->second.get())) : nullptr;
}

}  // namespace quillmar
