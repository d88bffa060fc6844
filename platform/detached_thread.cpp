#include "platform/detached_thread.h"

#include <csignal>
#include <cstddef>
#include <memory>
#include <utility>

#include <pthread.h>

namespace quillmar {

namespace {

constexpr std::size_t stackBytes = 256 << 10;

struct Start {
  std::function<void()> task;
  std::string name;
};

void* run(void* argument) {
  const std::unique_ptr<Start> start(static_cast<Start*>(argument));
  if (!start->name.empty()) pthread_setname_np(pthread_self(), start->name.c_str());
  start->task();
  return nullptr;
}

}  // namespace

bool startDetachedThread(std::function<void()> task, const std::string& name) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  sigset_t all;
  sigfillset(&all);
  pthread_attr_setsigmask_np(&attributes, &all);
  pthread_attr_setstacksize(&attributes, stackBytes);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  auto start = std::make_unique<Start>(Start{std::move(task), name});
  pthread_t thread;
  const int error = pthread_create(&thread, &attributes, run, start.get());
  pthread_attr_destroy(&attributes);
  if (error != 0) return false;
  static_cast<void>(start.release());  // The thread owns it.
  return true;
}

}  // namespace quillmar
