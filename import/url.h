// URLs (RFC 3986), as they arrive from browsers and programs that open links. Any thread.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

/// Longer ones are not parsed.
inline constexpr std::size_t maximumUrlLength = std::size_t{64} * 1024;

struct Url {
  struct QueryItem {
    std::string name;
    /// Absent for an item without "=".
    std::optional<std::string> value;

    bool operator==(const QueryItem&) const = default;
  };

  /// The whole URL. Bytes that no URL may contain are percent-encoded.
  std::string absoluteString;
  /// In lower case; empty for a relative reference.
  std::string scheme;
  /// Percent-decoded; absent if there is none or it is empty.
  std::optional<std::string> host;
  /// Percent-decoded.
  std::string path;
  /// In the order of the URL; names and values are percent-decoded. "+" stays as it is.
  std::vector<QueryItem> queryItems;
};

/// Parses a URL. Bytes that no URL may contain, such as spaces, quotes and non-ASCII characters,
/// are percent-encoded first, because browsers and other programs send them. Fails if the text is
/// still not a URL, is longer than maximumUrlLength, or contains a zero byte.
std::optional<Url> parseUrl(std::string_view text);

/// True for an absolute path and for a URL with the scheme "file".
bool isFilePathOrUrl(std::string_view text);

/// The absolute path of a local file: the text itself if it begins with "/", or the path of a URL
/// with the scheme "file" and no host or the host "localhost". Absent for other texts, and for a
/// path with a zero byte, which no file has.
std::optional<std::string> localFilePath(const std::string& text);

}  // namespace quillmar
