// Waiting for something to happen on the bus.

#pragma once

#include <chrono>

#include <gio/gio.h>

#include "platform/linux/processes/main_loop_task_queue.h"

namespace quillmar {

/// Runs the task in the main loop when the delay is over and all that the bus had sent by then has
/// been handled. A main loop that was held up for the whole delay would otherwise find it over
/// before it looks at the message that was waited for. Main thread.
MainLoopTaskQueue::Cancel runLater(GDBusConnection* connection, std::chrono::milliseconds delay,
                                   TaskQueue::Task task);

}  // namespace quillmar
