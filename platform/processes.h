// Child processes: launched with arguments, an environment and a working directory, standard output
// and standard error read by this program, standard input inherited.

#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// Where a child's standard error goes: into its standard output, in the order in which the child
/// writes, or where it can be told from that.
enum class StandardError { joined, apart };

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
  StandardError standardError = StandardError::joined;

  bool operator==(const Process&) const = default;
};

/// The launch error of a process in which a path, an argument or an environment variable holds a
/// U+0000, which no program can be given; absent when all are fine. For backends.
std::optional<Error> unusableTextIn(const Process& process);

/// All bytes that a child wrote.
struct ProcessOutput {
  /// Standard error too, when that is joined.
  std::string standardOutput;
  /// Empty unless it is kept apart.
  std::string standardError;

  bool operator==(const ProcessOutput&) const = default;
};

/// A launched child. Whoever holds it must call waitForExit() once; any one thread.
class RunningProcess {
 public:
  virtual ~RunningProcess() = default;

  /// Blocks until every holder of the pipes' other ends has closed them. Whichever the child fills
  /// first, it never waits for the reader of the other one. Fails when the bytes do not fit into
  /// memory; the pipes are closed then, which ends a child that goes on writing.
  virtual Result<ProcessOutput> readToEnd() = 0;

  /// Blocks until the child has ended. Returns its exit status, or 128 plus the number of the
  /// signal that ended it. Leaves no zombie behind.
  virtual int waitForExit() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts the child; any thread. No descriptor of this program other than the standard ones
  /// reaches it, and its signal dispositions and mask are the defaults. Fails, with a sentence that
  /// tells them apart, when the program or the working directory is missing or unusable, when a
  /// text holds a U+0000, or when the system has no process or descriptor to spare.
  virtual Result<std::unique_ptr<RunningProcess>> launch(const Process& process) = 0;
};

}  // namespace quillmar
