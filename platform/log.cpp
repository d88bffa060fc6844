#include "platform/log.h"

#include <cstdio>

namespace quillmar {

namespace {

void writeLine(std::FILE* stream, std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stream);
  std::fputc('\n', stream);
  std::fflush(stream);
}

}  // namespace

void logToStandardOutput(std::string_view line) {
  writeLine(stdout, line);
}

void logToStandardError(std::string_view line) {
  writeLine(stderr, line);
}

}  // namespace quillmar
