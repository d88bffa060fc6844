#include "platform/linux/files/file_url.h"

#include <filesystem>
#include <system_error>

#include <glib.h>

#include "platform/error_text.h"
#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

Result<std::string> fileUrl(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path absolute = std::filesystem::absolute(path, failure);
  if (failure) return fileError(path, "found", failure.message());
  const GStringPtr url(g_filename_to_uri(absolute.c_str(), nullptr, nullptr));
  return std::string(url.get());
}

}  // namespace quillmar
