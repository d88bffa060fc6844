#include "platform/linux/network/curl_downloader.h"

#include <deque>
#include <functional>
#include <utility>

namespace quillmar {

/// The transfers that run and those that wait. Main thread. Lives as long as a transfer runs, so
/// that all completions are called.
class CurlDownloader::Transfers : public std::enable_shared_from_this<Transfers> {
 public:
  struct Request {
    std::string url;
    std::size_t maximumBodySize;
    Completion completion;
  };

  Transfers(TaskQueue& mainQueue, Options options)
      : mainQueue_(mainQueue), options_(std::move(options)) {}

  void add(Request request) {
    waiting_.push_back(std::move(request));
    startNext();
  }

 private:
  void startNext() {
    if (running_ == maximumConcurrentTransfers || waiting_.empty()) return;
    ++running_;
    auto request = std::make_shared<Request>(std::move(waiting_.front()));
    waiting_.pop_front();
    const bool isStarted = options_.startThread([self = shared_from_this(), request]() mutable {
      Result<HttpResponse> response = self->download(*request);
      finish(std::move(self), std::move(request), std::move(response));
    });
    if (!isStarted) {
      finish(shared_from_this(), std::move(request),
             Error{"Quillmar could not start a download, because the system cannot create another "
                   "thread."});
    }
  }

  /// On the thread of the transfer.
  Result<HttpResponse> download(const Request& request) const {
    const auto curl = CurlLibrary::load(options_.library.c_str());
    if (!curl) return curl.error();
    return downloadOverHttps(curl.value(), request.url, request.maximumBodySize, options_.transfer);
  }

  /// Any thread. Takes the objects over, so that they are destroyed on the main thread.
  static void finish(std::shared_ptr<Transfers> self, std::shared_ptr<Request> request,
                     Result<HttpResponse> response) {
    TaskQueue& mainQueue = self->mainQueue_;
    mainQueue.async(
        [self = std::move(self), request = std::move(request), response = std::move(response)] {
          --self->running_;
          self->startNext();
          request->completion(response);
        });
  }

  TaskQueue& mainQueue_;
  const Options options_;
  std::deque<Request> waiting_;
  std::size_t running_ = 0;
};

CurlDownloader::CurlDownloader(TaskQueue& mainQueue, Options options)
    : transfers_(std::make_shared<Transfers>(mainQueue, std::move(options))) {}

void CurlDownloader::get(const std::string& url, std::size_t maximumBodySize,
                         Completion completion) {
  transfers_->add({url, maximumBodySize, std::move(completion)});
}

}  // namespace quillmar
