#include "platform/linux/bus/run_later.h"

#include <memory>
#include <utility>

#include "platform/linux/bus/bus_calls.h"

namespace quillmar {

MainLoopTaskQueue::Cancel runLater(GDBusConnection* connection, std::chrono::milliseconds delay,
                                   TaskQueue::Task task) {
  const auto calls =
      std::make_shared<std::unique_ptr<BusCalls>>(std::make_unique<BusCalls>(connection));
  const auto ask = [calls, task = std::move(task)] {
    // The bus keeps its messages in order. Who does not answer at all has nothing more to say.
    (*calls)->call(busItself("GetId"), nullptr, "(s)",
                   [calls, task](GVariant*, const GError*) { task(); });
  };
  return [calls, stopTimer = MainLoopTaskQueue::asyncAfter(delay, ask)] {
    stopTimer();
    calls->reset();
  };
}

}  // namespace quillmar
