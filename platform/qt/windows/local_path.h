// Paths of URLs of local files.

#pragma once

#include <QUrl>
#include <optional>
#include <string>

namespace quillmar {

/// The absolute path, byte by byte, even if it is not valid UTF-8; absent if the URL is not that of
/// a local file.
std::optional<std::string> localPath(const QUrl& url);

}  // namespace quillmar
