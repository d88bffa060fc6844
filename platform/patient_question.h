// A question to somebody who may never answer, as a server that is stopped: it takes a connection
// and says nothing, for ever, and whoever asks it waits as long.

#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace quillmar {

/// One thread uses it; the question is asked on another.
template <typename Answer>
class PatientQuestion {
 public:
  /// Waits for the answer as long as `patience`; absent when it has not come by then. Who has not
  /// answered is not asked again and not waited for again: later calls for the same `whom` take the
  /// answer if it has come. The thread that asks goes on when this object or the program ends, so
  /// `question` owns what it needs.
  std::optional<Answer> ask(const std::string& whom, std::function<Answer()> question,
                            std::chrono::milliseconds patience) {
    if (!asked_ || asked_->whom != whom) {
      std::promise<Answer> promise;
      asked_ = Asked{whom, promise.get_future()};
      std::thread([promise = std::move(promise), question = std::move(question)]() mutable {
        promise.set_value(question());
      }).detach();
    } else {
      patience = std::chrono::milliseconds(0);
    }
    if (asked_->answer.wait_for(patience) != std::future_status::ready) return std::nullopt;
    Answer answer = asked_->answer.get();
    asked_.reset();
    return answer;
  }

 private:
  struct Asked {
    std::string whom;
    std::future<Answer> answer;
  };

  /// Whose answer is still to come.
  std::optional<Asked> asked_;
};

}  // namespace quillmar
