#include "platform/linux/processes/main_loop_task_queue.h"

#include <utility>

#include <glib.h>

namespace quillmar {

void MainLoopTaskQueue::async(Task task) {
  const auto run = [](gpointer data) -> gboolean {
    (*static_cast<Task*>(data))();
    return G_SOURCE_REMOVE;
  };
  const auto destroy = [](gpointer data) { delete static_cast<Task*>(data); };
  // Sources of one priority are dispatched in the order in which they were attached.
  g_idle_add_full(G_PRIORITY_DEFAULT, run, new Task(std::move(task)), destroy);
}

}  // namespace quillmar
