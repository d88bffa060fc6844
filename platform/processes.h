// Child processes, launched with arguments, an environment and a working directory. Standard output
// and standard error are captured.

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

/// Maximum size of a child's output. Larger output is an error.
inline constexpr std::size_t maximumOutputBytes = std::size_t{256} << 20;

/// A configured child process, not launched yet.
struct Process {
  /// Path of the program. PATH is not searched. A relative path resolves against this program's
  /// working directory, not the child's.
  std::string executable;
  /// The arguments, without the program name (argv[0]).
  std::vector<std::string> arguments;
  /// The complete environment of the child. Nothing is inherited.
  std::map<std::string, std::string> environment;
  /// Empty for this program's working directory.
  std::string workingDirectory;
  StandardError standardError = StandardError::merged;

  bool operator==(const Process&) const = default;
};

/// The launch error if a path, argument or environment variable contains U+0000, which cannot be
/// passed to a program; absent otherwise. For backends.
std::optional<Error> nullCharacterError(const Process& process);

/// The bytes that a child wrote.
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

  /// Blocks until the child and its descendants have closed the write ends of the pipes. Reads both
  /// pipes at the same time, so the child never blocks on one of them. Fails if the output exceeds
  /// `maximumOutputBytes` or the available memory. The pipes are then closed, so that the child
  /// does not stay blocked: its next write fails, which ends most programs (SIGPIPE).
  virtual Result<ProcessOutput> readToEnd() = 0;

  /// Blocks until the child exits, and reaps it. Returns its exit status, or 128 plus the number of
  /// the signal that ended it.
  virtual int waitForExit() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts the child. It inherits no descriptor except the standard ones, and has the default
  /// signal handlers and mask. Fails if the program or the working directory is missing or
  /// unusable, if a text contains U+0000, or if the system is out of processes or descriptors. The
  /// error says which. Any thread.
  virtual Result<std::unique_ptr<RunningProcess>> launch(const Process& process) = 0;

  /// Starts a program that outlives this one: it leads a session of its own, and its standard
  /// streams are /dev/null. Nobody waits for it. Fails like launch(). Any thread.
  virtual Result<void> launchDetached(const Process& process) = 0;
};

}  // namespace quillmar
