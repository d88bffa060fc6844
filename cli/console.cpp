#include "cli/console.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "platform/file_system.h"

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

namespace {

/// The length in bytes of a control character, line break or bidirectional formatting character at
/// the start of the text; 0 for any other character.
std::size_t lengthOfControl(std::string_view text) {
  const auto byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
  if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) return 2;  // U+0080 to U+009F
  const bool isDirection = byte(1) == 0x80 && (byte(2) == 0x8E || byte(2) == 0x8F);  // U+200E, 200F
  const bool isBreak = byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE;    // U+2028 to U+202E
  const bool isIsolate = byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9;  // U+2066 to U+2069
  return byte(0) == 0xE2 && (isDirection || isBreak || isIsolate) ? 3 : 0;
}

/// The text with these characters, except those in `kept`, replaced by U+FFFD.
std::string withoutControls(std::string_view text, std::string_view kept) {
  std::string result;
  while (!text.empty()) {
    const std::size_t control = lengthOfControl(text);
    if (control == 0 || kept.find(text.front()) != kept.npos) {
      result += text.front();
      text.remove_prefix(1);
    } else {
      result += "\uFFFD";
      text.remove_prefix(control);
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
