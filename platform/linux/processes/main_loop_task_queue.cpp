#include "platform/linux/processes/main_loop_task_queue.h"

#include <atomic>
#include <memory>
#include <utility>

#include <glib.h>

namespace quillmar {

namespace {

/// A task on its way to the main thread. GLib's lock makes the task visible there; the flag states
/// the same order for the thread sanitizer, which does not see that lock.
struct PostedTask {
  explicit PostedTask(TaskQueue::Task toRun) : task(std::move(toRun)) {
    isPosted.store(true, std::memory_order_release);
  }

  TaskQueue::Task task;
  std::atomic<bool> isPosted = false;
};

PostedTask* received(gpointer data) {
  auto* const posted = static_cast<PostedTask*>(data);
  (void)posted->isPosted.load(std::memory_order_acquire);
  return posted;
}

gboolean runOnce(gpointer data) {
  received(data)->task();
  return G_SOURCE_REMOVE;
}

void destroy(gpointer data) {
  delete received(data);
}

}  // namespace

void MainLoopTaskQueue::async(Task task) {
  // Sources of one priority are dispatched in the order in which they were attached.
  g_idle_add_full(G_PRIORITY_DEFAULT, runOnce, new PostedTask(std::move(task)), destroy);
}

MainLoopTaskQueue::Cancel MainLoopTaskQueue::asyncAfter(std::chrono::milliseconds delay,
                                                        Task task) {
  const std::shared_ptr<GSource> source(g_timeout_source_new(static_cast<guint>(delay.count())),
                                        g_source_unref);
  g_source_set_callback(source.get(), runOnce, new PostedTask(std::move(task)), destroy);
  g_source_attach(source.get(), nullptr);
  return [source] { g_source_destroy(source.get()); };
}

}  // namespace quillmar
