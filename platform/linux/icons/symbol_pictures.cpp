#include "platform/linux/icons/symbol_pictures.h"

namespace quillmar {

SymbolPictures::SymbolPictures(const std::string& file)
    : pictures_(g_resource_load(file.c_str(), nullptr)) {}

GBytesPtr SymbolPictures::png(const std::string& iconName, bool isMenuDark) const {
  if (!pictures_) return nullptr;
  const std::string path = std::string(isMenuDark ? "/dark/" : "/light/") + iconName + ".png";
  return GBytesPtr(
      g_resource_lookup_data(pictures_.get(), path.c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr));
}

}  // namespace quillmar
