// Child processes that only pretend to run: a handler says what each prints and how it ends.

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

/// What becomes of a launched process.
struct ScriptedRun {
  std::string standardOutput;
  int exitStatus = 0;
  /// When set, the launch fails with it and nothing runs.
  std::optional<Error> launchError = std::nullopt;
  /// When set, reading the output fails with it.
  std::optional<Error> readError = std::nullopt;
  /// Follows the standard output when the process joins them.
  std::string standardError = {};
};

/// Any thread; the handler runs inside launch().
class MemoryProcesses final : public Processes {
 public:
  using Handler = std::function<ScriptedRun(const Process&)>;

  /// Without a handler every process prints nothing and succeeds.
  explicit MemoryProcesses(Handler handler = {});

  /// Replaces the handler; not while another thread launches.
  void setHandler(Handler handler) { handler_ = std::move(handler); }

  Result<std::unique_ptr<RunningProcess>> launch(const Process& process) override;

  /// Every process for which a launch was tried, in order, failed ones too.
  std::vector<Process> launched() const;

  /// How many launched processes nobody has waited for: zombies, if they were real.
  std::size_t unreapedCount() const { return *unreaped_; }

 private:
  Handler handler_;
  mutable std::mutex mutex_;
  std::vector<Process> launched_;
  std::shared_ptr<std::atomic<std::size_t>> unreaped_ =
      std::make_shared<std::atomic<std::size_t>>(0);
};

}  // namespace quillmar
