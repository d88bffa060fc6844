// The updater of a program that cannot update itself yet: it says so when it is asked to look for
// an update. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/updater.h"

namespace quillmar {

class UnavailableUpdaters final : public Updaters {
 public:
  /// Posts a notification with a title and a body.
  using Notify = std::function<void(const std::string& title, const std::string& body)>;

  explicit UnavailableUpdaters(Notify notify);

  /// One that never looks for updates by itself, whatever the user chooses.
  std::unique_ptr<Updater> makeUpdater(bool startingUpdater) override;

 private:
  Notify notify_;
};

}  // namespace quillmar
