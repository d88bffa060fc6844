// Downloads over https.

#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/result.h"

namespace quillmar {

/// The reply of a server, after redirects.
struct HttpResponse {
  /// The status code; 0 if the reply was not an HTTP response.
  int status = 0;
  /// The decoded body. A body that is longer than the limit is cut off one byte after it.
  std::string body;
};

class Downloader {
 public:
  using Completion = std::function<void(const Result<HttpResponse>& response)>;

  virtual ~Downloader() = default;

  /// Starts a GET request for the https URL, which must be percent-encoded, and returns at once.
  /// Any number of downloads may run at a time. Follows at most five redirects, to https URLs only.
  /// Sends no cookies, no credentials and no referrer. Verifies the server's certificate against
  /// the system's authorities. Ends the transfer as soon as the decoded body exceeds
  /// `maximumBodySize` bytes. The completion runs once, as a task of the main queue. It gets an
  /// error, whose description is a full sentence, if the transfer failed. Main thread.
  virtual void get(const std::string& url, std::size_t maximumBodySize, Completion completion) = 0;
};

}  // namespace quillmar
