// Writes lines to a stream that may block, such as a stopped terminal or a full pipe, without
// blocking the caller. Any thread.

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/detached_thread.h"

namespace quillmar {

class BackgroundWriter {
 public:
  /// Writes to `descriptor`, which must stay open until the end of the process. At most
  /// `maximumWaitingBytes` are buffered while the stream is blocked.
  explicit BackgroundWriter(
      int descriptor, std::size_t maximumWaitingBytes = 1 << 20,
      StartThread startThread = [](const std::function<void()>& task) {
        return startDetachedThread(task, "log");
      });

  /// Does not wait for a thread that is blocked in a write.
  ~BackgroundWriter();
  BackgroundWriter(const BackgroundWriter&) = delete;
  BackgroundWriter& operator=(const BackgroundWriter&) = delete;

  /// Writes the line and a line feed soon, on another thread; lines keep their order. If the buffer
  /// is full, the line is dropped. The number of dropped lines is written when the stream becomes
  /// writable again.
  void writeLine(std::string_view line);

  /// Waits until everything is written, at most for `timeout`. Returns false on a timeout.
  bool flush(std::chrono::milliseconds timeout);

 private:
  class Queue;
  std::shared_ptr<Queue> queue_;
};

}  // namespace quillmar
