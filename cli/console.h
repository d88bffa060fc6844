// Where the command line prints and asks. Tests give it an in-memory one.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// Exit statuses of the command line.
enum class ExitStatus : int { success = 0, failure = 1, usage = 2 };

class Console {
 public:
  virtual ~Console() = default;

  /// Prints the text to standard output as it stands.
  virtual void print(std::string_view text) = 0;

  /// Prints the text to standard error as it stands.
  virtual void printError(std::string_view text) = 0;

  /// True when someone at a terminal can be asked.
  virtual bool isInteractive() const = 0;

  /// The next line typed, without its line feed; absent at the end of the input.
  virtual std::optional<std::string> readLine() = 0;

  /// All that is left of standard input.
  virtual Result<std::string> readToEnd() = 0;
};

/// The process's standard streams. Make it before anything is opened.
class StandardConsole : public Console {
 public:
  /// Puts something in the place of each stream that is closed, so that no file or connection
  /// opened later is taken for it. What is written there fails as before.
  StandardConsole();

  /// Why some of what was printed is lost; absent when standard output took all of it.
  const std::optional<Error>& lostOutput() const { return lostOutput_; }

  void print(std::string_view text) override;
  void printError(std::string_view text) override;
  bool isInteractive() const override;
  std::optional<std::string> readLine() override;
  Result<std::string> readToEnd() override;

 private:
  std::optional<Error> lostOutput_;
};

/// The text with the characters that a terminal would obey, control characters and turns of the
/// direction of writing, shown as U+FFFD.
std::string printable(std::string_view text);

/// The same for a text of several lines: line feeds and tabs stay.
std::string printableLines(std::string_view text);

}  // namespace quillmar
