// Updates of the program itself. Main thread.

#pragma once

#include <memory>

namespace quillmar {

class Updater {
 public:
  virtual ~Updater() = default;

  /// Whether a started updater looks for updates by itself from time to time. The user's choice: it
  /// is kept for later runs.
  virtual bool automaticallyChecksForUpdates() const = 0;
  virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;

  /// Looks for an update now and tells the user what came of it. Returns at once. Precondition: the
  /// updater was started.
  virtual void checkForUpdates() = 0;
};

/// Makes updaters. Not owned by them, and outlives them.
class Updaters {
 public:
  virtual ~Updaters() = default;

  /// One that is not started does nothing by itself.
  virtual std::unique_ptr<Updater> makeUpdater(bool startingUpdater) = 0;
};

}  // namespace quillmar
