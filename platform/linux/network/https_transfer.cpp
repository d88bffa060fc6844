#include "platform/linux/network/https_transfer.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/text.h"

namespace quillmar {

namespace {

constexpr long maximumRedirects = 5;
constexpr long stalledBytesPerSecond = 500;

/// Index of the first byte after the host and the port; npos if the URL ends there.
std::size_t endOfAuthority(std::string_view url) {
  const std::size_t scheme = url.find("://");
  return url.find_first_of("/?#", scheme == std::string_view::npos ? 0 : scheme + 3);
}

/// The host and the port in typographic quotes.
std::string quotedHost(std::string_view url) {
  std::string_view host = url.substr(0, endOfAuthority(url));
  if (const auto scheme = host.find("://"); scheme != std::string_view::npos) {
    host.remove_prefix(scheme + 3);
  }
  if (const auto credentials = host.rfind('@'); credentials != std::string_view::npos) {
    host.remove_prefix(credentials + 1);
  }
  return "“" + text::replacingInvalidCharacters(host) + "”";
}

/// The part of the body that has arrived.
struct Body {
  std::size_t maximumSize;
  std::string bytes;

  bool isTooLong() const { return bytes.size() > maximumSize; }

  /// libcurl's write function. Gets decoded bytes, a few KiB at a time. A return value other than
  /// the size ends the transfer.
  static std::size_t append(char* data, std::size_t, std::size_t size, void* context) {
    Body& body = *static_cast<Body*>(context);
    body.bytes.append(data, std::min(size, body.maximumSize + 1 - body.bytes.size()));
    return body.isTooLong() ? 0 : size;
  }
};

class Transfer {
 public:
  Transfer(const CurlLibrary& curl, std::string url, std::size_t maximumBodySize)
      : curl_(curl),
        handle_(curl.init(), curl.cleanUp),
        url_(std::move(url)),
        body_{maximumBodySize, {}} {}

  Result<HttpResponse> perform(const HttpsTransferOptions& options) {
    if (!handle_) return Error{"Quillmar cannot download files, because libcurl failed to start."};
    configure(options);
    // An option that an old library does not support would drop a guarantee of Downloader::get().
    if (optionFailure_ != CURLE_OK) return failure(optionFailure_);
    const CURLcode code = curl_.perform(handle_.get());
    const bool isNotHttp =
        code == CURLE_UNSUPPORTED_PROTOCOL && effectiveUrl().starts_with("https:");
    if (isNotHttp) return HttpResponse{};
    if (code != CURLE_OK && !body_.isTooLong()) return failure(code);
    long status = 0;
    curl_.getInfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
    return HttpResponse{static_cast<int>(status), std::move(body_.bytes)};
  }

 private:
  template <class Value>
  void set(CURLoption option, Value value) {
    const CURLcode code = curl_.setOption(handle_.get(), option, value);
    if (optionFailure_ == CURLE_OK) optionFailure_ = code;
  }

  void configure(const HttpsTransferOptions& options) {
    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_URL, url_.c_str());
    // For redirects, too.
    set(CURLOPT_PROTOCOLS_STR, "https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, maximumRedirects);
    set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    set(CURLOPT_ACCEPT_ENCODING, "");
    set(CURLOPT_USERAGENT, "Quillmar");
    set(CURLOPT_WRITEFUNCTION, &Body::append);
    set(CURLOPT_WRITEDATA, &body_);
    // Without this, libcurl would use signals, which belong to the main thread.
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectTimeout.count()));
    set(CURLOPT_LOW_SPEED_LIMIT, stalledBytesPerSecond);
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(options.stallTimeout.count()));
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalTimeout.count()));
    // Set even if empty, so that libcurl does not read the environment, which the main thread may
    // be changing.
    set(CURLOPT_PROXY, options.proxy.c_str());
    set(CURLOPT_NOPROXY, options.noProxy.c_str());
    if (!options.certificateAuthorities.empty()) {
      set(CURLOPT_CAINFO, options.certificateAuthorities.c_str());
      set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
    }
  }

  /// The URL after redirects.
  std::string effectiveUrl() const {
    const char* url = nullptr;
    curl_.getInfo(handle_.get(), CURLINFO_EFFECTIVE_URL, &url);
    return url ? url : url_;
  }

  /// The library's text, without a full stop.
  std::string reason(CURLcode code) const {
    std::string text = errorText_.front() != '\0' ? errorText_.data() : curl_.errorText(code);
    while (text.ends_with('.') || text.ends_with('\n')) text.pop_back();
    return text::replacingInvalidCharacters(text);
  }

  Error failure(CURLcode code) const {
    const std::string server = "The server " + quotedHost(effectiveUrl());
    switch (code) {
      case CURLE_URL_MALFORMAT:
        return {"The address is not valid."};
      case CURLE_LOGIN_DENIED:
        return {"The address contains a user name or a password, which Quillmar does not send."};
      case CURLE_COULDNT_RESOLVE_HOST:
        return {server + " was not found."};
      case CURLE_PEER_FAILED_VERIFICATION:
        return {server + " could not prove its identity. " + reason(code) + "."};
      case CURLE_UNSUPPORTED_PROTOCOL:
        return {"The download leads to an address that does not begin with “https:”."};
      case CURLE_TOO_MANY_REDIRECTS:
        return {server + " redirected the download too often."};
      case CURLE_OPERATION_TIMEDOUT:
        return {server + " did not answer in time."};
      case CURLE_PARTIAL_FILE:
      case CURLE_GOT_NOTHING:
        return {server + " closed the connection before the download was complete."};
      default:
        return {"The download from " + quotedHost(effectiveUrl()) + " failed: " + reason(code) +
                "."};
    }
  }

  const CurlLibrary& curl_;
  std::unique_ptr<CURL, decltype(CurlLibrary::cleanUp)> handle_;
  std::string url_;
  Body body_;
  std::array<char, CURL_ERROR_SIZE> errorText_{};
  CURLcode optionFailure_ = CURLE_OK;
};

/// The first of these variables that is set.
std::string firstOf(const Environment& environment, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    if (const auto value = environment.value(name)) return *value;
  }
  return {};
}

}  // namespace

HttpsTransferOptions withProxyOf(const Environment& environment, HttpsTransferOptions options) {
  options.proxy = firstOf(environment, {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"});
  options.noProxy = firstOf(environment, {"no_proxy", "NO_PROXY"});
  return options;
}

Result<HttpResponse> downloadOverHttps(const CurlLibrary& curl, const std::string& url,
                                       std::size_t maximumBodySize,
                                       const HttpsTransferOptions& options) {
  return Transfer(curl, url, maximumBodySize).perform(options);
}

}  // namespace quillmar
