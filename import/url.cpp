#include "import/url.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include <uriparser/Uri.h>

#include "platform/text.h"

namespace quillmar {

namespace {

struct FreeUri {
  void operator()(UriUriA* uri) const {
    uriFreeUriMembersA(uri);
    delete uri;
  }
};
using Uri = std::unique_ptr<UriUriA, FreeUri>;

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isAllowed(char c) {
  const bool isLetterOrDigit =
      (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  constexpr std::string_view others = "-._~:/?#[]@!$&'()*+,;=";
  return isLetterOrDigit || others.find(c) != std::string_view::npos;
}

/// Percent-encodes the bytes that no URL may contain and those in `alsoEncode`. Also encodes a "%"
/// that is not followed by two hexadecimal digits.
std::string percentEncoded(std::string_view text, std::string_view alsoEncode) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool beginsCode =
        c == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
    if (beginsCode || (isAllowed(c) && alsoEncode.find(c) == std::string_view::npos)) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<std::uint8_t>(c);
    encoded += '%';
    encoded += digits[byte >> 4];
    encoded += digits[byte & 0xF];
  }
  return encoded;
}

/// The result refers to `text`. Null if the text is not a URL.
Uri parse(const std::string& text) {
  Uri uri(new UriUriA{});
  const char* const end = text.data() + text.size();
  if (uriParseSingleUriExA(uri.get(), text.data(), end, nullptr) != URI_SUCCESS) uri.reset();
  return uri;
}

std::string_view textOf(const UriTextRangeA& range) {
  if (range.first == nullptr) return {};
  return {range.first, static_cast<std::size_t>(range.afterLast - range.first)};
}

std::string decoded(std::string_view text) {
  std::string result(text);
  const char* const end = uriUnescapeInPlaceExA(result.data(), URI_FALSE, URI_BR_DONT_TOUCH);
  result.resize(static_cast<std::size_t>(end - result.data()));
  return result;
}

std::string pathOf(const UriUriA& uri) {
  std::string path;
  const bool isAbsolute = uri.absolutePath == URI_TRUE || uri.hostText.first != nullptr;
  for (const UriPathSegmentA* segment = uri.pathHead; segment != nullptr; segment = segment->next) {
    if (isAbsolute || segment != uri.pathHead) path += '/';
    path += decoded(textOf(segment->text));
  }
  return path;
}

std::vector<Url::QueryItem> queryItemsOf(const UriUriA& uri) {
  // The library's own function ends names and values at the code of a zero byte.
  std::vector<Url::QueryItem> items;
  std::string_view rest = textOf(uri.query);
  while (!rest.empty()) {
    const std::string_view item = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(item.size() + 1, rest.size()));
    const std::size_t equals = item.find('=');
    Url::QueryItem& added =
        items.emplace_back(Url::QueryItem{.name = decoded(item.substr(0, equals)), .value = {}});
    if (equals != std::string_view::npos) added.value = decoded(item.substr(equals + 1));
  }
  return items;
}

}  // namespace

std::optional<Url> parseUrl(std::string_view text) {
  if (text.size() > maximumUrlLength || text.find('\0') != std::string_view::npos) {
    return std::nullopt;
  }
  Url url;
  url.absoluteString = percentEncoded(text, "");
  Uri uri = parse(url.absoluteString);
  if (!uri) {
    // Brackets may only enclose an IP address in the host.
    url.absoluteString = percentEncoded(text, "[]");
    uri = parse(url.absoluteString);
  }
  if (!uri) return std::nullopt;
  url.scheme = text::lowercased(textOf(uri->scheme));
  if (const std::string host = decoded(textOf(uri->hostText)); !host.empty()) url.host = host;
  url.path = pathOf(*uri);
  url.queryItems = queryItemsOf(*uri);
  return url;
}

bool isFilePathOrUrl(std::string_view text) {
  constexpr std::string_view filePrefix = "file:";
  return text.starts_with('/') || text::lowercased(text.substr(0, filePrefix.size())) == filePrefix;
}

std::optional<std::string> localFilePath(const std::string& text) {
  if (text.starts_with('/')) return text;
  const std::optional<Url> url = parseUrl(text);
  if (!url || url->scheme != "file" || !url->path.starts_with('/')) return std::nullopt;
  const bool isHere = !url->host || text::lowercased(*url->host) == "localhost";
  if (!isHere || url->path.find('\0') != std::string::npos) return std::nullopt;
  return url->path;
}

}  // namespace quillmar
