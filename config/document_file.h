// Documents in files: the settings, and packs.

#pragma once

#include <functional>
#include <string>

#include "config/quillmar_config.h"
#include "platform/file_system.h"
#include "platform/result.h"
#include "platform/uuid.h"

namespace quillmar {

/// Reads the file and decodes it (config/document_decoder.h). The error names the file. Main
/// thread.
Result<QuillmarConfig> readDocument(const FileSystem& files, const std::string& path,
                                    std::function<std::string()> makeIdentifier = makeUuid);

}  // namespace quillmar
