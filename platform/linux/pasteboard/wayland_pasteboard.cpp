#include "platform/linux/pasteboard/wayland_pasteboard.h"

#include <cerrno>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/files/system_error.h"
#include "platform/linux/processes/bounded_wait.h"

namespace quillmar {

namespace {

/// A file without a name that holds the text and is read from its start; none, with errno set, when
/// there is no room for it.
FileDescriptor fileInMemory(std::string_view text) {
  FileDescriptor file(memfd_create("clipboard", MFD_CLOEXEC));
  if (!file) return file;
  while (!text.empty()) {
    const ssize_t written = write(file.number(), text.data(), text.size());
    if (written < 0) return FileDescriptor();
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  lseek(file.number(), 0, SEEK_SET);
  return file;
}

}  // namespace

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
  FileDescriptor input = fileInMemory(text);
  if (!input) {
    logFailure("it could not be stored (" + systemErrorText(errno) + ").");
    return;
  }
  // The part of wl-copy that stays behind would keep a pipe open, so its outputs get none.
  const GObjectPtr<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                              G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
  g_subprocess_launcher_take_stdin_fd(launcher.get(), input.release());
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
    logFailure("“" + program_ + "” did not take it.");
  }
  if (subprocess != running_.get()) return;
  running_.reset();
  startNext();
}

void WaylandPasteboard::startNext() {
  if (!next_) return;
  const std::string text = *std::exchange(next_, std::nullopt);
  start(text);
}

void WaylandPasteboard::saveForQuit(std::chrono::milliseconds timeout) {
  if (!running_ || !next_) return;
  const std::shared_ptr<GSubprocess> own(G_SUBPROCESS(g_object_ref(running_.get())),
                                         g_object_unref);
  if (endsWithin(timeout, [own] { g_subprocess_wait(own.get(), nullptr, nullptr); })) startNext();
}

void WaylandPasteboard::logFailure(const std::string& reason) const {
  log_("The text was not copied to the clipboard: " + reason);
}

}  // namespace quillmar
