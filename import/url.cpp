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

struct FreeQueryList {
  void operator()(UriQueryListA* list) const { uriFreeQueryListA(list); }
};

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isAllowed(char c) {
  const bool isLetterOrDigit =
      (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  constexpr std::string_view others = "-._~:/?#[]@!$&'()*+,;=";
  return isLetterOrDigit || others.find(c) != std::string_view::npos;
}

/// Percent-encodes the bytes that no URL may contain and those in `more`. A "%" that begins no code
/// is encoded, too.
std::string encoding(std::string_view text, std::string_view more) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool beginsCode =
        c == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
    if (beginsCode || (isAllowed(c) && more.find(c) == std::string_view::npos)) {
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
  UriQueryListA* first = nullptr;
  if (uri.query.first == nullptr ||
      uriDissectQueryMallocExA(&first, nullptr, uri.query.first, uri.query.afterLast, URI_FALSE,
                               URI_BR_DONT_TOUCH) != URI_SUCCESS) {
    return {};
  }
  const std::unique_ptr<UriQueryListA, FreeQueryList> list(first);
  std::vector<Url::QueryItem> items;
  for (const UriQueryListA* item = first; item != nullptr; item = item->next) {
    Url::QueryItem& added = items.emplace_back(Url::QueryItem{.name = item->key, .value = {}});
    if (item->value != nullptr) added.value = item->value;
  }
  return items;
}

}  // namespace

std::optional<Url> parseUrl(std::string_view text) {
  constexpr std::string_view zeroByte("\0", 1);
  if (text.size() > maximumUrlLength || text.find(zeroByte) != std::string_view::npos ||
      text.find("%00") != std::string_view::npos) {
    return std::nullopt;
  }
  Url url;
  url.absoluteString = encoding(text, "");
  Uri uri = parse(url.absoluteString);
  if (!uri) {
    // Brackets are allowed around the address of a host only.
    url.absoluteString = encoding(text, "[]");
    uri = parse(url.absoluteString);
  }
  if (!uri) return std::nullopt;
  url.scheme = text::lowercased(textOf(uri->scheme));
  if (const std::string host = decoded(textOf(uri->hostText)); !host.empty()) url.host = host;
  url.path = pathOf(*uri);
  url.queryItems = queryItemsOf(*uri);
  return url;
}

std::optional<std::string> localFilePath(const std::string& text) {
  if (text.starts_with('/')) return text;
  const std::optional<Url> url = parseUrl(text);
  if (!url || url->scheme != "file" || !url->path.starts_with('/')) return std::nullopt;
  return url->path;
}

}  // namespace quillmar
