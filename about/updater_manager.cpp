#include "about/updater_manager.h"

#include <string_view>

#include "platform/bundle.h"
#include "platform/platform.h"
#include "platform/updater.h"

namespace quillmar {

namespace {

bool has(const Bundle& bundle, std::string_view key) {
  return !bundle.informationString(key).value_or("").empty();
}

}  // namespace

UpdaterManager::UpdaterManager(const Bundle& bundle, Updaters& updaters)
    : isConfigured(has(bundle, information_key::feedURL) &&
                   has(bundle, information_key::publicEDKey)),
      controller(updaters.makeUpdater(isConfigured)) {}

UpdaterManager::~UpdaterManager() = default;

UpdaterManager& UpdaterManager::shared() {
  static auto* manager = [] {
    const Platform& platform = Platform::shared();
    return new UpdaterManager(platform.bundle, platform.updaters);
  }();
  return *manager;
}

}  // namespace quillmar
