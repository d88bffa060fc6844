#include "platform/linux/processes/main_loop_task_queue.h"

#include <utility>

#include <glib.h>

namespace quillmar {

namespace {

gboolean runOnce(gpointer task) {
  (*static_cast<TaskQueue::Task*>(task))();
  return G_SOURCE_REMOVE;
}

void destroy(gpointer task) {
  delete static_cast<TaskQueue::Task*>(task);
}

}  // namespace

void MainLoopTaskQueue::async(Task task) {
  // Sources of one priority are dispatched in the order in which they were attached.
  g_idle_add_full(G_PRIORITY_DEFAULT, runOnce, new Task(std::move(task)), destroy);
}

void MainLoopTaskQueue::asyncAfter(std::chrono::milliseconds delay, Task task) {
  g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(delay.count()), runOnce,
                     new Task(std::move(task)), destroy);
}

}  // namespace quillmar
