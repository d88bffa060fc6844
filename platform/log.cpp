#include "platform/log.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include "platform/background_writer.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr auto flushTimeout = std::chrono::seconds(1);

BackgroundWriter& standardOutput() {
  // Never destroyed, because other threads may log until the process ends.
  static auto* writer = [] {
    std::atexit(flushStandardOutputLog);
    return new BackgroundWriter(STDOUT_FILENO);
  }();
  return *writer;
}

}  // namespace

void logToStandardOutput(std::string_view line) {
  standardOutput().writeLine(text::escapingControlCharacters(line));
}

void flushStandardOutputLog() {
  standardOutput().flush(flushTimeout);
}

void logToStandardError(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fputc('\n', stderr);
  std::fflush(stderr);
}

}  // namespace quillmar
