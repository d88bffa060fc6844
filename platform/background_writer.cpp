#include "platform/background_writer.h"

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <string>
#include <utility>

#include <unistd.h>

namespace quillmar {

namespace {

/// Discards bytes that cannot be written.
void writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return;
    }
  }
}

}  // namespace

/// State shared by the writer and its thread. The thread exists only while there is something to
/// write.
class BackgroundWriter::Queue : public std::enable_shared_from_this<Queue> {
 public:
  Queue(int descriptor, std::size_t maximumWaitingBytes, StartThread startThread)
      : descriptor_(descriptor),
        maximumWaitingBytes_(maximumWaitingBytes),
        startThread_(std::move(startThread)) {}

  void append(std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (droppedLines_ > 0 || waiting_.size() + line.size() >= maximumWaitingBytes_) {
      ++droppedLines_;
    } else {
      waiting_.append(line).append("\n");
    }
    startThread();
  }

  bool flush(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    startThread();
    return idle_.wait_for(lock, timeout, [this] { return isEmpty() && !hasThread_; });
  }

 private:
  bool isEmpty() const { return waiting_.empty() && droppedLines_ == 0; }

  /// If no thread can be started, the next line tries again.
  void startThread() {
    if (hasThread_ || isEmpty()) return;
    hasThread_ = startThread_([queue = shared_from_this()] { queue->writeWaiting(); });
  }

  void writeWaiting() {
    std::unique_lock lock(mutex_);
    while (!isEmpty()) {
      std::string bytes = std::exchange(waiting_, {});
      if (const std::size_t dropped = std::exchange(droppedLines_, 0); dropped > 0) {
        bytes +=
            "(Log lines dropped while the output was blocked: " + std::to_string(dropped) + ")\n";
      }
      lock.unlock();
      writeAll(descriptor_, bytes);
      lock.lock();
    }
    hasThread_ = false;
    idle_.notify_all();
  }

  const int descriptor_;
  const std::size_t maximumWaitingBytes_;
  const StartThread startThread_;
  std::mutex mutex_;
  std::condition_variable idle_;
  std::string waiting_;
  /// Lines dropped since the last write; reported after the waiting bytes.
  std::size_t droppedLines_ = 0;
  bool hasThread_ = false;
};

BackgroundWriter::BackgroundWriter(int descriptor, std::size_t maximumWaitingBytes,
                                   StartThread startThread)
    : queue_(std::make_shared<Queue>(descriptor, maximumWaitingBytes, std::move(startThread))) {}

BackgroundWriter::~BackgroundWriter() = default;

void BackgroundWriter::writeLine(std::string_view line) {
  queue_->append(line);
}

bool BackgroundWriter::flush(std::chrono::milliseconds timeout) {
  return queue_->flush(timeout);
}

}  // namespace quillmar
