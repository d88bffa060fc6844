#include "cli/console.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "platform/file_system.h"
#include "platform/text.h"
#include "platform/visible_text.h"

namespace quillmar {

StandardConsole::StandardConsole() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    // open() returns the lowest free number, which is this stream's. Read-only, so that writes
    // fail.
    open("/dev/null", O_RDONLY | O_NOCTTY);
  }
}

void StandardConsole::print(std::string_view text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (isWritten && std::fflush(stdout) == 0) return;
  lostOutput_ = Error{
      "Standard output could not be written: " + std::generic_category().message(errno) + "."};
}

void StandardConsole::printError(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

bool StandardConsole::isInteractive() const {
  return isatty(STDIN_FILENO) == 1;
}

std::optional<std::string> StandardConsole::readLine() {
  std::string line;
  for (int character = std::getchar(); character != '\n'; character = std::getchar()) {
    if (character == EOF) {
      if (line.empty()) return std::nullopt;
      break;
    }
    line += static_cast<char>(character);
  }
  return line;
}

Result<std::string> StandardConsole::readToEnd() {
  std::string bytes;
  std::array<char, 4096> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), stdin)) {
    bytes.append(buffer.data(), count);
    if (bytes.size() > maximumFileSize) {
      return Error{"Standard input is larger than 64 MiB.", ErrorKind::tooLarge};
    }
  }
  if (std::ferror(stdin) != 0) {
    return Error{"Standard input could not be read: " + std::generic_category().message(errno) +
                 "."};
  }
  return bytes;
}

std::string printable(std::string_view text) {
  std::string line;
  for (const char character : printableLines(text)) {
    if (character == '\n') {
      line += "‹U+000A›";
    } else if (character == '\t') {
      line += "‹U+0009›";
    } else {
      line += character;
    }
  }
  return line;
}

std::string printableLines(std::string_view text) {
  return text::withVisibleCharacters(text::replacingInvalidCharacters(text));
}

}  // namespace quillmar
