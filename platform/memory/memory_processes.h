// Fake child processes: a handler provides the output and exit status of each.

#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/processes.h"

namespace quillmar {

/// The outcome of a process.
struct ScriptedRun {
  std::string standardOutput;
  int exitStatus = 0;
  /// If set, the launch fails with this error.
  std::optional<Error> launchError = std::nullopt;
  /// If set, reading the output fails with this error.
  std::optional<Error> readError = std::nullopt;
  /// Appended to the standard output if the process merges them.
  std::string standardError = {};
};

/// Any thread; the handler runs inside launch() and launchDetached().
class MemoryProcesses final : public Processes {
 public:
  using Handler = std::function<ScriptedRun(const Process&)>;

  /// Without a handler, every process succeeds without output.
  explicit MemoryProcesses(Handler handler = {});

  /// Replaces the handler. Must not be called while another thread launches a process.
  void setHandler(Handler handler) { handler_ = std::move(handler); }

  Result<std::unique_ptr<RunningProcess>> launch(const Process& process) override;

  Result<void> launchDetached(const Process& process) override;

  /// All processes passed to launch(), in order, including failed launches.
  std::vector<Process> launched() const;

  /// The same for launchDetached().
  std::vector<Process> launchedDetached() const;

  /// Number of launched processes without a call of waitForExit(): zombies on a real system.
  std::size_t unreapedCount() const { return *unreaped_; }

 private:
  Handler handler_;
  mutable std::mutex mutex_;
  std::vector<Process> launched_;
  std::vector<Process> launchedDetached_;
  std::shared_ptr<std::atomic<std::size_t>> unreaped_ =
      std::make_shared<std::atomic<std::size_t>>(0);
};

}  // namespace quillmar
