#include "config/document_file.h"

#include <utility>

#include "config/document_decoder.h"
#include "platform/error_text.h"

namespace quillmar {

Result<QuillmarConfig> readDocument(const FileSystem& files, const std::string& path,
                                    std::function<std::string()> makeIdentifier) {
  const Result<std::string> bytes = files.read(path);
  if (!bytes) return bytes.error();
  Result<QuillmarConfig> decoded = decodeDocument(bytes.value(), std::move(makeIdentifier));
  if (decoded) return decoded;
  return Error{quotedPath(path) + " is no document. " + decoded.error().description};
}

}  // namespace quillmar
