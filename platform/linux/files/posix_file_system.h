// Files on disk. Only regular files are read and written: a pipe or a device could block its reader
// for ever.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace quillmar {

class PosixFileSystem final : public FileSystem {
 public:
  bool exists(const std::string& path) const override;
  bool isExecutableFile(const std::string& path) const override;
  Result<void> createDirectories(const std::string& path) override;
  Result<void> createPrivateDirectory(const std::string& path) override;
  Result<std::string> read(const std::string& path) const override;
  Result<std::uint32_t> permissions(const std::string& path) const override;
  Result<void> replace(const std::string& path, std::string_view bytes,
                       std::optional<std::uint32_t> permissions) override;
  Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) override;
};

}  // namespace quillmar
