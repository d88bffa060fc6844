// Child processes: launched with arguments, an environment and a working directory. This program
// reads their standard output and standard error.

#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// Whether a child's standard error is merged into its standard output, in the order of the writes,
/// or captured separately.
enum class StandardError { merged, separate };

/// Output beyond this size is an error.
inline constexpr std::size_t mostOutputBytes = std::size_t{256} << 20;

/// A configured child process, not launched yet.
struct Process {
  /// Path of the program; it is not searched for in PATH. A relative one resolves against this
  /// program's working directory, not the child's.
  std::string executable;
  /// The arguments after the program's own name.
  std::vector<std::string> arguments;
  /// The whole environment of the child; nothing is inherited beside it.
  std::map<std::string, std::string> environment;
  /// Empty for this program's own.
  std::string workingDirectory;
  StandardError standardError = StandardError::merged;

  bool operator==(const Process&) const = default;
};

/// The launch error of a process whose path, arguments or environment contain a U+0000, which
/// cannot be passed to a program; absent otherwise. For backends.
std::optional<Error> unusableTextIn(const Process& process);

/// All bytes that a child wrote.
struct ProcessOutput {
  /// Includes standard error if that is merged.
  std::string standardOutput;
  /// Empty unless captured separately.
  std::string standardError;

  bool operator==(const ProcessOutput&) const = default;
};

/// A launched child. The owner must call waitForExit() once. Any thread, one at a time.
class RunningProcess {
 public:
  virtual ~RunningProcess() = default;

  /// Blocks until every process that holds the write ends of the pipes has closed them. Reads both
  /// pipes side by side, so the child never blocks on one of them. Fails when the output exceeds
  /// `mostOutputBytes` or the memory; the pipes are closed then, so that the child is not left
  /// blocked: its next write fails, which ends most programs (SIGPIPE).
  virtual Result<ProcessOutput> readToEnd() = 0;

  /// Blocks until the child has ended. Returns its exit status, or 128 plus the number of the
  /// signal that ended it. Leaves no zombie behind.
  virtual int waitForExit() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts the child. It inherits no descriptor except the standard ones, and has the default
  /// signal handlers and mask. Fails when the program or the working directory is missing or
  /// unusable, when a text contains a U+0000, or when the system has no process or descriptor to
  /// spare; the error says which. Any thread.
  virtual Result<std::unique_ptr<RunningProcess>> launch(const Process& process) = 0;
};

}  // namespace quillmar
