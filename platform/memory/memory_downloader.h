// A downloader whose requests the owner answers.

#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/downloader.h"

namespace quillmar {

struct MemoryDownloader final : Downloader {
  struct Request {
    std::string url;
    std::size_t maximumBodySize = 0;
    Completion completion;
  };

  /// In the order in which they were started.
  std::vector<Request> requests;

  void get(const std::string& url, std::size_t maximumBodySize, Completion completion) override {
    requests.push_back({url, maximumBodySize, std::move(completion)});
  }

  /// Answers the request as a server with this body would.
  void respond(std::size_t index, int status, const std::string& body) {
    // A copy, because the completion may start another request.
    const Request request = requests.at(index);
    request.completion(HttpResponse{status, body.substr(0, request.maximumBodySize + 1)});
  }

  void fail(std::size_t index, const std::string& description) {
    const Request request = requests.at(index);
    request.completion(Error{description});
  }
};

}  // namespace quillmar
