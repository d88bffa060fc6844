#include "platform/linux/pasteboard/wayland_pasteboard.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

#include "platform/detached_thread.h"
#include "platform/linux/files/system_error.h"
#include "platform/linux/processes/bounded_wait.h"
#include "platform/linux/processes/main_loop_task_queue.h"

namespace quillmar {

namespace {

/// Storing a text of this size takes less than a millisecond.
constexpr std::size_t maximumBytesOnMainThread = 1 << 20;

}  // namespace

WaylandPasteboard::WaylandPasteboard(Environment environment, LogLine log, std::string program)
    : environment_(std::move(environment)), log_(std::move(log)), program_(std::move(program)) {}

WaylandPasteboard::~WaylandPasteboard() {
  g_cancellable_cancel(cancellable_.get());
}

WaylandPasteboard::StoredText WaylandPasteboard::store(std::string_view text) {
  FileDescriptor file(memfd_create("clipboard", MFD_CLOEXEC));
  if (!file) return {.error = errno};
  while (!text.empty()) {
    const ssize_t written = write(file.number(), text.data(), text.size());
    if (written < 0) return {.error = errno};
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  lseek(file.number(), 0, SEEK_SET);
  return {.file = std::move(file)};
}

void WaylandPasteboard::setString(std::string text) {
  if (isBusy()) {
    next_ = std::move(text);
  } else {
    start(std::move(text));
  }
}

void WaylandPasteboard::start(std::string text) {
  const bool isLong = text.size() > maximumBytesOnMainThread;
  const auto promise = std::make_shared<std::promise<StoredText>>();
  stored_ = promise->get_future();
  const auto work = [promise, text = std::make_shared<const std::string>(std::move(text))] {
    promise->set_value(store(*text));
  };
  const auto launchInMainLoop = [this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired() && stored_.valid()) launch();
  };
  if (isLong && startDetachedThread([work, launchInMainLoop] {
        work();
        MainLoopTaskQueue().async(launchInMainLoop);
      })) {
    return;
  }
  work();
  launch();
}

void WaylandPasteboard::launch() {
  StoredText stored = stored_.get();
  if (!stored.file) {
    logFailure("it could not be stored (" + systemErrorText(stored.error) + ").");
    startNext();
    return;
  }
  // The background process of wl-copy would keep a pipe open, so it gets no output pipes.
  const GObjectPtr<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                              G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
  g_subprocess_launcher_take_stdin_fd(launcher.get(), stored.file.release());
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
    startNext();
    return;
  }
  g_subprocess_wait_async(
      running_.get(), cancellable_.get(),
      [](GObject* subprocess, GAsyncResult* result, gpointer self) {
        // After a cancellation this object is gone.
        if (!g_subprocess_wait_finish(G_SUBPROCESS(subprocess), result, nullptr)) return;
        static_cast<WaylandPasteboard*>(self)->ended(G_SUBPROCESS(subprocess));
      },
      this);
}

void WaylandPasteboard::ended(GSubprocess* subprocess) {
  if (!g_subprocess_get_successful(subprocess)) {
    logFailure("“" + program_ + "” failed.");
  }
  if (subprocess != running_.get()) return;
  running_.reset();
  startNext();
}

void WaylandPasteboard::startNext() {
  if (next_) start(*std::exchange(next_, std::nullopt));
}

void WaylandPasteboard::saveForQuit(std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  const auto launchStored = [&] {
    if (stored_.valid() && stored_.wait_until(deadline) == std::future_status::ready) launch();
    return !stored_.valid();
  };
  if (!launchStored() || !running_ || !next_) return;
  const std::shared_ptr<GSubprocess> own(G_SUBPROCESS(g_object_ref(running_.get())),
                                         g_object_unref);
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
  if (!endsWithin(left, [own] { g_subprocess_wait(own.get(), nullptr, nullptr); })) return;
  startNext();
  launchStored();
}

void WaylandPasteboard::logFailure(const std::string& reason) const {
  log_("The text was not copied to the clipboard: " + reason);
}

}  // namespace quillmar
