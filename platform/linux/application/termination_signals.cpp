#include "platform/linux/application/termination_signals.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <glib-unix.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quillmar {

namespace {

constexpr int orders[] = {SIGTERM, SIGINT};

// State of the signal handlers, which may run at any time.
std::atomic<int> wakeupDescriptor = -1;
std::atomic<bool> isOrdered = false;

extern "C" void takeOrder(int) {
  // Repeated signals do not extend the grace period.
  if (isOrdered.exchange(true)) return;
  const int errorBefore = errno;
  alarm(TerminationSignals::graceSeconds);
  const std::uint64_t one = 1;
  // If this fails, the alarm still ends the process.
  [[maybe_unused]] const ssize_t written = write(wakeupDescriptor, &one, sizeof one);
  errno = errorBefore;
}

extern "C" void endNow(int) {
  _exit(EXIT_SUCCESS);
}

void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : terminate_(std::move(terminate)), wakeup_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  const auto wakeUp = [](gint, GIOCondition, gpointer self) -> gboolean {
    auto& signals = *static_cast<TerminationSignals*>(self);
    signals.source_ = 0;
    signals.terminate_();
    return G_SOURCE_REMOVE;
  };
  if (wakeup_) {
    source_ = g_unix_fd_add_full(G_PRIORITY_HIGH, wakeup_.number(), G_IO_IN, wakeUp, this, nullptr);
  }
  wakeupDescriptor = wakeup_.number();
  isOrdered = false;
  handle(SIGALRM, endNow);
  for (const int signal : orders) handle(signal, takeOrder);
}

TerminationSignals::~TerminationSignals() {
  for (const int signal : orders) handle(signal, SIG_DFL);
  alarm(0);
  handle(SIGALRM, SIG_DFL);
  wakeupDescriptor = -1;
  if (source_ != 0) g_source_remove(source_);
}

bool TerminationSignals::isShuttingDown() {
  return isOrdered;
}

void TerminationSignals::loopHasEnded() {
  isOrdered = true;
  alarm(graceSeconds);
}

}  // namespace quillmar
