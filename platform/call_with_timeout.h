// A blocking call with a timeout, for servers that accept a connection but never reply.

#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/detached_thread.h"
#include "platform/result.h"

namespace quillmar {

enum class CallFailure {
  timedOut,
  /// The system cannot create a thread for the call.
  noThread,
};

/// Makes the calls on another thread, one at a time. Use each object from one thread only.
template <class T>
class CallWithTimeout {
 public:
  explicit CallWithTimeout(StartThread startThread =
                               [](const std::function<void()>& task) {
                                 return startDetachedThread(task);
                               })
      : startThread_(std::move(startThread)) {}

  /// Calls `call` and waits for its result, at most for `timeout`. While a call to the same
  /// `server` is still blocked, this function makes no further call and does not wait: it returns
  /// `timedOut`, or the result of the earlier call once that is available. A blocked call continues
  /// when this object or the program ends, so `call` must own what it uses.
  Result<T, CallFailure> operator()(const std::string& server, std::function<T()> call,
                                    std::chrono::milliseconds timeout) {
    if (!pending_ || pending_->server != server) {
      pending_.reset();
      auto promise = std::make_shared<std::promise<T>>();
      std::future<T> result = promise->get_future();
      if (!startThread_([promise, call = std::move(call)] { promise->set_value(call()); })) {
        return CallFailure::noThread;
      }
      pending_ = Pending{server, std::move(result)};
    } else {
      timeout = std::chrono::milliseconds(0);
    }
    if (pending_->result.wait_for(timeout) != std::future_status::ready) {
      return CallFailure::timedOut;
    }
    T result = pending_->result.get();
    pending_.reset();
    return result;
  }

 private:
  struct Pending {
    std::string server;
    std::future<T> result;
  };

  StartThread startThread_;
  std::optional<Pending> pending_;
};

}  // namespace quillmar
