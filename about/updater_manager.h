// Decides once whether this build can be updated, and owns its one updater. Main thread.

#pragma once

#include <memory>

namespace quillmar {

class Bundle;
class Updater;
class Updaters;

class UpdaterManager {
 public:
  /// Creates the updater and starts it if updates are configured. `updaters` is not owned and must
  /// outlive the manager.
  UpdaterManager(const Bundle& bundle, Updaters& updaters);
  ~UpdaterManager();

  UpdaterManager(const UpdaterManager&) = delete;
  UpdaterManager& operator=(const UpdaterManager&) = delete;

  /// The process-wide manager, created on first use from the installed platform.
  static UpdaterManager& shared();

  /// True if the bundle has both the URL of an appcast and the public key of updates.
  const bool isConfigured;

  /// Never null. Started if and only if updates are configured.
  const std::unique_ptr<Updater> controller;
};

}  // namespace quillmar
