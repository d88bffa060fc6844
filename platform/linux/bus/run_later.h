// A timer that runs after pending messages from the bus.

#pragma once

#include <chrono>

#include <gio/gio.h>

#include "platform/linux/processes/main_loop_task_queue.h"

namespace quillmar {

/// Runs the task in the main loop after the delay, when all messages that the bus sent until then
/// have been handled. A plain timer is not enough: if the main loop was blocked, the timer may fire
/// before the expected message is read. Main thread.
MainLoopTaskQueue::Cancel runLater(GDBusConnection* connection, std::chrono::milliseconds delay,
                                   TaskQueue::Task task);

}  // namespace quillmar
