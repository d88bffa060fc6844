// Decides once whether this build can be updated, and owns its one updater. Main thread.

#pragma once

#include <memory>

namespace quillmar {

class Bundle;
class Updater;
class Updaters;

class UpdaterManager {
 public:
  /// Makes the updater and starts it when updates are configured. The updaters are not owned and
  /// must outlive the manager.
  UpdaterManager(const Bundle& bundle, Updaters& updaters);
  ~UpdaterManager();

  UpdaterManager(const UpdaterManager&) = delete;
  UpdaterManager& operator=(const UpdaterManager&) = delete;

  /// The process's one manager, made on first use from the installed platform.
  static UpdaterManager& shared();

  /// True when the bundle names both a feed of updates and the key that signs them.
  const bool isConfigured;

  /// Never null; started exactly when updates are configured.
  const std::unique_ptr<Updater> controller;
};

}  // namespace quillmar
