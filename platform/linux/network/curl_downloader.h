// Downloads through libcurl, which is loaded with the first one. Each transfer has its own thread,
// which needs little memory beside the buffers and the TLS state of the transfer. Main thread.

#pragma once

#include <cstddef>
#include <string>

#include "platform/detached_thread.h"
#include "platform/downloader.h"
#include "platform/linux/network/curl_library.h"
#include "platform/linux/network/https_transfer.h"
#include "platform/task_queue.h"

namespace quillmar {

class CurlDownloader final : public Downloader {
 public:
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
  TaskQueue& mainQueue_;
  const Options options_;
};

}  // namespace quillmar
