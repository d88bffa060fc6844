// Child processes of the system, started with posix_spawn(), which costs the same however large
// this program is.

#pragma once

#include <memory>

#include <spawn.h>

#include "platform/processes.h"

namespace quillmar {

class PosixProcesses final : public Processes {
 public:
  enum class Sessions {
    /// Children stay in this program's session, so that Ctrl-C on its terminal ends them with it.
    shared,
    /// Every child leads a session of its own, out of the reach of this program's terminal.
    separate,
  };

  /// Sees to it that the system keeps the exit statuses of this program's children: whoever started
  /// it may have told the system to throw them away. Main thread, before others launch.
  explicit PosixProcesses(Sessions sessions);
  ~PosixProcesses() override;
  PosixProcesses(const PosixProcesses&) = delete;
  PosixProcesses& operator=(const PosixProcesses&) = delete;

  /// Also fails when the child's pipes would take one of the last 32 descriptors that this program
  /// may have: those are kept back for its own files and connections.
  Result<std::unique_ptr<RunningProcess>> launch(const Process& process) override;

 private:
  posix_spawnattr_t attributes_;
};

}  // namespace quillmar
