#include "platform/linux/updates/unavailable_updaters.h"

#include <utility>

namespace quillmar {

namespace {

class UnavailableUpdater final : public Updater {
 public:
  explicit UnavailableUpdater(const UnavailableUpdaters::Notify& notify) : notify_(notify) {}

  bool automaticallyChecksForUpdates() const override { return false; }
  void setAutomaticallyChecksForUpdates(bool /*automatically*/) override {}
  void checkForUpdates() override {
    notify_("Updates", "Checking for updates is not available yet.");
  }

 private:
  const UnavailableUpdaters::Notify& notify_;
};

}  // namespace

UnavailableUpdaters::UnavailableUpdaters(Notify notify) : notify_(std::move(notify)) {}

std::unique_ptr<Updater> UnavailableUpdaters::makeUpdater(bool /*startingUpdater*/) {
  return std::make_unique<UnavailableUpdater>(notify_);
}

}  // namespace quillmar
