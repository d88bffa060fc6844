// Fake updaters that count calls.

#pragma once

#include <memory>
#include <vector>

#include "platform/updater.h"

namespace quillmar {

struct MemoryUpdaters final : Updaters {
  /// For each created updater, whether it was started.
  std::vector<bool> made;
  int checks = 0;
  /// The stored setting, shared by all updaters.
  bool automaticallyChecks = false;

  std::unique_ptr<Updater> makeUpdater(bool startingUpdater) override {
    made.push_back(startingUpdater);
    return std::make_unique<MemoryUpdater>(*this);
  }

 private:
  class MemoryUpdater final : public Updater {
   public:
    explicit MemoryUpdater(MemoryUpdaters& updaters) : updaters_(updaters) {}

    bool automaticallyChecksForUpdates() const override { return updaters_.automaticallyChecks; }
    void setAutomaticallyChecksForUpdates(bool automatically) override {
      updaters_.automaticallyChecks = automatically;
    }
    void checkForUpdates() override { ++updaters_.checks; }

   private:
    MemoryUpdaters& updaters_;
  };
};

}  // namespace quillmar
