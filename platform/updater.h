// Updates of the program itself. Main thread.

#pragma once

#include <memory>

namespace quillmar {

class Updater {
 public:
  virtual ~Updater() = default;

  /// Whether a started updater checks for updates periodically. A user setting that persists across
  /// launches.
  virtual bool automaticallyChecksForUpdates() const = 0;
  virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;

  /// Checks for an update now and shows the result to the user. Returns at once. Precondition: the
  /// updater was started.
  virtual void checkForUpdates() = 0;
};

/// Factory of updaters. Must outlive them.
class Updaters {
 public:
  virtual ~Updaters() = default;

  /// An updater that is not started does nothing.
  virtual std::unique_ptr<Updater> makeUpdater(bool startingUpdater) = 0;
};

}  // namespace quillmar
