#include "app/starter_pack.h"

#include <algorithm>
#include <optional>
#include <string>

#include "config/document_file.h"
#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "platform/bundle.h"
#include "platform/file_system.h"
#include "platform/pack_file_type.h"
#include "platform/result.h"

namespace quillmar {

namespace {

Result<QuillmarConfig> readPack(const Bundle& bundle, const FileSystem& files) {
  const auto path =
      bundle.pathForResource("starter", std::string(pack_file_type::extension), "packs");
  if (!path) return Error{"The resource “packs/starter.quillmarpack” is missing."};
  return readDocument(files, *path);
}

std::size_t commandCount(const QuillmarConfig& pack) {
  std::size_t count = 0;
  for (const MenuCategory& folder : pack.categories) {
    count +=
        static_cast<std::size_t>(std::ranges::count(folder.items, false, &MenuItem::isSeparator));
  }
  return count;
}

}  // namespace

std::size_t installStarterPack(const Bundle& bundle, const FileSystem& files,
                               SettingsManager& settings, const LogLine& log) {
  std::size_t installed = 0;
  if (const Result<QuillmarConfig> pack = readPack(bundle, files)) {
    settings.config = settings.config.merging(pack.value());
    installed = commandCount(pack.value());
  } else {
    log("Failed to install the starter pack: " + pack.error().description);
  }
  settings.save();
  return installed;
}

}  // namespace quillmar
