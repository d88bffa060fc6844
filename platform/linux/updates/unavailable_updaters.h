// The updater of a program that cannot update itself yet: when the user checks for updates, a
// notification says so. Main thread.

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

  /// Returns an updater that never checks for updates, whatever the user's setting is.
  std::unique_ptr<Updater> makeUpdater(bool startingUpdater) override;

 private:
  Notify notify_;
};

}  // namespace quillmar
