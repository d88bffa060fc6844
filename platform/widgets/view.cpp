#include "platform/widgets/view.h"

#include "platform/widgets/window.h"

namespace quillmar {

View::~View() {
  if (Window* const window = this->window()) window->viewWillBeDestroyed(*this);
}

Window* View::window() const {
  const View* top = this;
  while (top->superview_ != nullptr) top = top->superview_;
  return top->window_;
}

void View::setEnabled(bool enabled) {
  set(enabled_, enabled);
  if (Window* const window = this->window()) window->inputChanged();
}

void View::setHidden(bool hidden) {
  set(hidden_, hidden);
  if (Window* const window = this->window()) window->inputChanged();
}

bool View::takesInput() const {
  for (const View* view = this; view != nullptr; view = view->superview_) {
    if (!view->enabled_ || view->hidden_) return false;
    if (view->superview_ == nullptr) return view->window_ != nullptr && view->window_->takesInput();
  }
  return false;
}

View* View::dragDestination() {
  View* view = this;
  while (view != nullptr && !view->isDragDestination()) view = view->superview_;
  return view != nullptr && view->takesInput() ? view : nullptr;
}

bool View::dragFiles(const std::vector<std::string>& files) {
  View* const destination = dragDestination();
  return destination != nullptr && destination->draggingEntered(files);
}

bool View::dropFiles(const std::vector<std::string>& files) {
  View* const destination = dragDestination();
  return destination != nullptr && destination->performDragOperation(files);
}

}  // namespace quillmar
