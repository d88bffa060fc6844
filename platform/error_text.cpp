#include "platform/error_text.h"

#include <array>
#include <cstdio>

#include "platform/text.h"

namespace quillmar {

namespace {

Error sentence(std::string_view subject, std::string_view path, std::string_view done,
               std::string_view reason, ErrorKind kind) {
  std::string text = "The ";
  text.append(subject).append(" ").append(quotedPath(path)).append(" could not be ");
  text.append(done).append(": ").append(reason).append(".");
  return {std::move(text), kind};
}

}  // namespace

std::string quotedPath(std::string_view path) {
  return "“" + text::escapingControlCharacters(path) + "”";
}

Error fileError(std::string_view path, std::string_view done, std::string_view reason,
                ErrorKind kind) {
  return sentence("file", path, done, reason, kind);
}

Error fileTooLarge(std::string_view path) {
  return fileError(path, "read", "It is larger than 64 MiB", ErrorKind::tooLarge);
}

Error folderError(std::string_view path, std::string_view done, std::string_view reason,
                  ErrorKind kind) {
  return sentence("folder", path, done, reason, kind);
}

std::string openFolderReason(std::uint32_t permissions) {
  std::array<char, 64> text;
  std::snprintf(text.data(), text.size(), "Its permissions are %04o instead of 0700", permissions);
  return text.data();
}

Error launchError(std::string_view path, std::string_view reason) {
  return sentence("program", path, "launched", reason, ErrorKind::other);
}

}  // namespace quillmar
