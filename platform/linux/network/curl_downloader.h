// Downloads through libcurl, which is loaded with the first download: it needs more memory than the
// rest of the program. Main thread.

#pragma once

#include <cstddef>
#include <string>

#include "platform/downloader.h"
#include "platform/task_queue.h"

namespace quillmar {

class CurlDownloader final : public Downloader {
 public:
  /// Completions run as tasks of `mainQueue`, which is not owned.
  explicit CurlDownloader(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

  void get(const std::string& url, std::size_t maximumBodySize, Completion completion) override;

 private:
  TaskQueue& mainQueue_;
};

}  // namespace quillmar
