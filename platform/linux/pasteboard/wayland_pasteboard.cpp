#include "platform/linux/pasteboard/wayland_pasteboard.h"

#include <utility>

#include "platform/linux/application/broken_pipes.h"

namespace quillmar {

WaylandPasteboard::WaylandPasteboard(Environment environment, LogLine log, std::string program)
    : environment_(std::move(environment)), log_(std::move(log)), program_(std::move(program)) {}

WaylandPasteboard::~WaylandPasteboard() {
  g_cancellable_cancel(cancellable_.get());
}

void WaylandPasteboard::setString(std::string text) {
  if (running_) {
    next_ = std::move(text);
  } else {
    start(text);
  }
}

void WaylandPasteboard::start(const std::string& text) {
  ignoreBrokenPipes();
  // The part of wl-copy that stays behind would keep a pipe open, so its outputs get none.
  const GObjectPtr<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE |
                                                              G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                              G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
  g_subprocess_launcher_set_environ(launcher.get(), nullptr);
  for (const auto& [name, value] : environment_.variables) {
    g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), true);
  }

  // Without a type wl-copy would guess one from the text.
  const char* arguments[] = {program_.c_str(), "--type", "text/plain;charset=utf-8", nullptr};
  GError* error = nullptr;
  running_.reset(g_subprocess_launcher_spawnv(launcher.get(), arguments, &error));
  if (!running_) {
    const GErrorPtr failure(error);
    logFailure("“" + program_ + "”, of the package wl-clipboard, could not be started (" +
               failure->message + ").");
    return;
  }
  const GBytesPtr input(g_bytes_new(text.data(), text.size()));
  g_subprocess_communicate_async(
      running_.get(), input.get(), cancellable_.get(),
      [](GObject*, GAsyncResult* result, gpointer self) {
        static_cast<WaylandPasteboard*>(self)->finished(result);
      },
      this);
}

void WaylandPasteboard::finished(GAsyncResult* result) {
  GObject* subprocess = g_async_result_get_source_object(result);
  const GObjectPtr<GObject> source(subprocess);
  GError* error = nullptr;
  g_subprocess_communicate_finish(G_SUBPROCESS(subprocess), result, nullptr, nullptr, &error);
  const GErrorPtr failure(error);
  // Then this object is gone.
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;

  if (failure || !g_subprocess_get_successful(running_.get())) {
    logFailure("“" + program_ + "” did not take it.");
  }
  running_.reset();
  if (next_) {
    const std::string text = *std::exchange(next_, std::nullopt);
    start(text);
  }
}

void WaylandPasteboard::saveForQuit(std::chrono::milliseconds timeout) {
  if (!isBusy()) return;
  bool late = false;
  const auto markLate = [](gpointer flag) -> gboolean {
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_CONTINUE;
  };
  const guint deadline = g_timeout_add(static_cast<guint>(timeout.count()), markLate, &late);
  while (isBusy() && !late) g_main_context_iteration(nullptr, true);
  g_source_remove(deadline);
}

void WaylandPasteboard::logFailure(const std::string& reason) const {
  log_("The text was not copied to the clipboard: " + reason);
}

}  // namespace quillmar
