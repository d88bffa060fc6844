// One download over https with libcurl. Any thread but the main thread: it blocks.

#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/downloader.h"
#include "platform/environment.h"
#include "platform/linux/network/curl_library.h"
#include "platform/result.h"

namespace quillmar {

struct HttpsTransferOptions {
  /// A file with the certificate authorities to trust. Empty: those of the system.
  std::string certificateAuthorities;
  /// Address of the proxy server, as in the variable https_proxy; empty for none.
  std::string proxy;
  /// Hosts to reach without the proxy, as in the variable no_proxy.
  std::string noProxy;

  /// For the connection, including the TLS handshake.
  std::chrono::milliseconds connectTimeout = std::chrono::seconds(30);
  /// A server is stalled if it sends less than 500 bytes per second for this long.
  std::chrono::seconds stallTimeout = std::chrono::seconds(30);
  /// For the whole transfer. Also ends transfers that make progress but never complete, such as a
  /// redirect with an endless body.
  std::chrono::milliseconds totalTimeout = std::chrono::minutes(5);
};

/// Adds the proxy that the environment names for https: https_proxy, HTTPS_PROXY, all_proxy or
/// ALL_PROXY, and no_proxy or NO_PROXY.
HttpsTransferOptions withProxyOf(const Environment& environment, HttpsTransferOptions options);

/// Downloads the URL under the conditions of Downloader::get().
Result<HttpResponse> downloadOverHttps(const CurlLibrary& curl, const std::string& url,
                                       std::size_t maximumBodySize,
                                       const HttpsTransferOptions& options);

}  // namespace quillmar
