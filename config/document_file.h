// Documents in files: the settings, and packs.

#pragma once

#include <functional>
#include <string>

#include "config/quillmar_config.h"
#include "platform/file_system.h"
#include "platform/result.h"
#include "platform/uuid.h"

namespace quillmar {

/// Decodes the bytes of the file at `path` (config/document_decoder.h). The error names the file.
/// Main thread.
Result<QuillmarConfig> decodeFile(const std::string& path, const std::string& bytes,
                                  const std::function<std::string()>& makeIdentifier = makeUuid);

/// Reads the file and decodes it.
Result<QuillmarConfig> readDocument(const FileSystem& files, const std::string& path,
                                    const std::function<std::string()>& makeIdentifier = makeUuid);

}  // namespace quillmar
