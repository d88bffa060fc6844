#include "platform/linux/application/main_loop.h"

#include <utility>

namespace quillmar {

void MainLoop::run() {
  if (!isOver_ && !successor_) g_main_loop_run(first_.get());
  // A loop cannot be told to quit before it runs.
  if (isOver_ || !successor_) return;
  isInSuccessor_ = true;
  successor_->run();
  isInSuccessor_ = false;
  isOver_ = true;
}

void MainLoop::quit() {
  isOver_ = true;
  g_main_loop_quit(first_.get());
  if (isInSuccessor_) successor_->quit();
}

void MainLoop::handOver(Successor successor) {
  successor_ = std::move(successor);
  g_main_loop_quit(first_.get());
}

}  // namespace quillmar
