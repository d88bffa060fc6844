#include "platform/error_text.h"

#include "platform/text.h"

namespace quillmar {

namespace {

Error sentence(std::string_view kind, std::string_view path, std::string_view done,
               std::string_view reason) {
  std::string text = "The ";
  text.append(kind).append(" ").append(quotedPath(path)).append(" could not be ");
  text.append(done).append(": ").append(reason).append(".");
  return {std::move(text)};
}

}  // namespace

std::string quotedPath(std::string_view path) {
  return "“" + text::replacingUnsendable(path) + "”";
}

Error fileError(std::string_view path, std::string_view done, std::string_view reason) {
  return sentence("file", path, done, reason);
}

Error folderError(std::string_view path, std::string_view done, std::string_view reason) {
  return sentence("folder", path, done, reason);
}

Error launchError(std::string_view path, std::string_view reason) {
  return sentence("program", path, "launched", reason);
}

}  // namespace quillmar
