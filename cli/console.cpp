#include "cli/console.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace quillmar {

StandardConsole::StandardConsole() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    // The lowest free number is this stream's. It is for reading only, so that writes fail.
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
  }
  if (std::ferror(stdin) != 0) {
    return Error{"Standard input could not be read: " + std::generic_category().message(errno) +
                 "."};
  }
  return bytes;
}

namespace {

/// The text with control characters, but for those `kept`, shown as U+FFFD.
std::string withoutControls(std::string_view text, std::string_view kept) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isC1 = byte == 0xC2 && i + 1 < text.size() &&
                      static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                      static_cast<unsigned char>(text[i + 1]) < 0xA0;
    const bool isControl = byte < 0x20 || byte == 0x7F || isC1;
    if (isControl && kept.find(text[i]) == kept.npos) {
      result += "\uFFFD";
      if (isC1) ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

std::string printable(std::string_view text) {
  return withoutControls(text, "");
}

std::string printableLines(std::string_view text) {
  return withoutControls(text, "\n\t");
}

}  // namespace quillmar
