// Child processes, started with posix_spawn(): its cost does not depend on the size of this
// program.

#pragma once

#include <cstddef>
#include <memory>

#include <spawn.h>

#include "platform/processes.h"

namespace quillmar {

class PosixProcesses final : public Processes {
 public:
  enum class Terminal {
    /// Children share this program's terminal: Ctrl-C ends them too, and they read the user's
    /// input.
    inherit,
    /// Each child leads a session of its own, without a terminal, and reads from /dev/null.
    detach,
  };

  /// Also makes the system keep the exit statuses of this program's children, which the parent
  /// process may have disabled. `outputLimit` is in bytes. Main thread, before anything launches.
  explicit PosixProcesses(Terminal terminal, std::size_t outputLimit = maximumOutputBytes);
  ~PosixProcesses() override;
  PosixProcesses(const PosixProcesses&) = delete;
  PosixProcesses& operator=(const PosixProcesses&) = delete;

  /// Also fails if the child's pipes would use one of the last 32 descriptors that this program may
  /// open: those are reserved for its own files and connections.
  Result<std::unique_ptr<RunningProcess>> launch(const Process& process) override;

  Result<void> launchDetached(const Process& process) override;

 private:
  posix_spawnattr_t attributes_;
  posix_spawnattr_t detachedAttributes_;
  Terminal terminal_;
  std::size_t outputLimit_;
};

}  // namespace quillmar
