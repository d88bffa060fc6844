#include "platform/linux/processes/main_loop_task_queue.h"

#include <memory>
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

MainLoopTaskQueue::Cancel MainLoopTaskQueue::asyncAfter(std::chrono::milliseconds delay,
                                                        Task task) {
  const std::shared_ptr<GSource> source(g_timeout_source_new(static_cast<guint>(delay.count())),
                                        g_source_unref);
  g_source_set_callback(source.get(), runOnce, new Task(std::move(task)), destroy);
  g_source_attach(source.get(), nullptr);
  return [source] { g_source_destroy(source.get()); };
}

}  // namespace quillmar
