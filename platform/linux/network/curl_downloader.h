// Downloads through libcurl, which is loaded with the first one. Each transfer has its own thread;
// a few run at a time, and the others wait for their turn. Main thread.

#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/detached_thread.h"
#include "platform/downloader.h"
#include "platform/linux/network/curl_library.h"
#include "platform/linux/network/https_transfer.h"
#include "platform/task_queue.h"

namespace quillmar {

class CurlDownloader final : public Downloader {
 public:
  static constexpr std::size_t maximumConcurrentTransfers = 4;

  struct Options {
    HttpsTransferOptions transfer;
    /// File name of libcurl.
    std::string library = CurlLibrary::defaultName;
    /// Starts the threads of the transfers.
    StartThread startThread = [](std::function<void()> task) {
      return startDetachedThread(std::move(task), "download");
    };
  };

  /// Completions run as tasks of `mainQueue`, which is not owned and must outlive the transfers.
  CurlDownloader(TaskQueue& mainQueue, Options options);

  void get(const std::string& url, std::size_t maximumBodySize, Completion completion) override;

 private:
  class Transfers;

  std::shared_ptr<Transfers> transfers_;
};

}  // namespace quillmar
