// Standard output, standard error and standard input of the command line.

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

  /// Prints the text to standard output, unchanged.
  virtual void print(std::string_view text) = 0;

  /// Prints the text to standard error, unchanged.
  virtual void printError(std::string_view text) = 0;

  /// True if standard input is a terminal, so that the user can answer questions.
  virtual bool isInteractive() const = 0;

  /// Reads the next line, without its line feed; absent at the end of standard input.
  virtual std::optional<std::string> readLine() = 0;

  /// Reads the rest of standard input. Fails if that is larger than maximumFileSize.
  virtual Result<std::string> readToEnd() = 0;
};

/// The process's standard streams. Create it before any file or connection is opened.
class StandardConsole : public Console {
 public:
  /// Opens /dev/null for each closed stream, so that no file opened later gets its number. Writing
  /// to such a stream still fails.
  StandardConsole();

  /// The error of the last failed write to standard output; absent if all output was written.
  const std::optional<Error>& lostOutput() const { return lostOutput_; }

  void print(std::string_view text) override;
  void printError(std::string_view text) override;
  bool isInteractive() const override;
  std::optional<std::string> readLine() override;
  Result<std::string> readToEnd() override;

 private:
  std::optional<Error> lostOutput_;
};

/// Shows control characters, line breaks and other invisible characters by their code points
/// (platform/visible_text.h), so that the text can neither control the terminal nor hide anything.
/// Ill-formed UTF-8 becomes U+FFFD.
std::string printable(std::string_view text);

/// The same for text of several lines: keeps line feeds and tabs.
std::string printableLines(std::string_view text);

}  // namespace quillmar
