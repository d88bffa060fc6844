#include "platform/linux/network/curl_downloader.h"

#include <functional>
#include <memory>
#include <utility>

namespace quillmar {

namespace {

/// A download. Its thread and then its last task on the main queue own it.
struct Transfer {
  TaskQueue& mainQueue;
  std::string url;
  std::size_t maximumBodySize;
  CurlDownloader::Options options;
  Downloader::Completion completion;
};

/// On the thread of the transfer.
Result<HttpResponse> perform(const Transfer& transfer) {
  const auto curl = CurlLibrary::load(transfer.options.library.c_str());
  if (!curl) return curl.error();
  return downloadOverHttps(curl.value(), transfer.url, transfer.maximumBodySize,
                           transfer.options.transfer);
}

/// Any thread. Takes the transfer over, so that the completion is destroyed on the main thread.
void finish(std::shared_ptr<Transfer> transfer, Result<HttpResponse> response) {
  TaskQueue& mainQueue = transfer->mainQueue;
  mainQueue.async([transfer = std::move(transfer), response = std::move(response)] {
    transfer->completion(response);
  });
}

}  // namespace

CurlDownloader::CurlDownloader(TaskQueue& mainQueue, Options options)
    : mainQueue_(mainQueue), options_(std::move(options)) {}

void CurlDownloader::get(const std::string& url, std::size_t maximumBodySize,
                         Completion completion) {
  auto transfer = std::make_shared<Transfer>(
      Transfer{mainQueue_, url, maximumBodySize, options_, std::move(completion)});
  const bool isStarted = options_.startThread([transfer]() mutable {
    Result<HttpResponse> response = perform(*transfer);
    finish(std::move(transfer), std::move(response));
  });
  if (!isStarted) {
    finish(std::move(transfer),
           Error{"Quillmar could not start a download, because the system cannot create another "
                 "thread."});
  }
}

}  // namespace quillmar
