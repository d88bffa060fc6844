#include "config/document_file.h"

#include "config/document_decoder.h"
#include "platform/error_text.h"

namespace quillmar {

Result<QuillmarConfig> decodeFile(const std::string& path, const std::string& bytes,
                                  const std::function<std::string()>& makeIdentifier) {
  if (bytes.find_first_not_of(" \t\n\r") == std::string::npos) {
    return Error{quotedPath(path) + " is empty."};
  }
  Result<QuillmarConfig> decoded = decodeDocument(bytes, makeIdentifier);
  if (decoded) return decoded;
  return Error{quotedPath(path) + " is not a valid document. " + decoded.error().description};
}

Result<QuillmarConfig> readDocument(const FileSystem& files, const std::string& path,
                                    const std::function<std::string()>& makeIdentifier) {
  const Result<std::string> bytes = files.read(path);
  if (!bytes) return bytes.error();
  return decodeFile(path, bytes.value(), makeIdentifier);
}

}  // namespace quillmar
