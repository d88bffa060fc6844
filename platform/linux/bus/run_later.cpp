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
    // The bus delivers messages in order. If it does not reply, it sends nothing else either.
    (*calls)->call(busDaemonMethod("GetId"), nullptr, "(s)",
                   [calls, task](GVariant*, const GError*) { task(); });
  };
  return [calls, stopTimer = MainLoopTaskQueue::asyncAfter(delay, ask)] {
    stopTimer();
    calls->reset();
  };
}

}  // namespace quillmar
