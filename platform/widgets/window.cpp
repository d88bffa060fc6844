#include "platform/widgets/window.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/widgets/alert_sheet.h"
#include "platform/widgets/button.h"
#include "platform/widgets/custom_view.h"
#include "platform/widgets/scroll_view.h"
#include "platform/window_system.h"

namespace quillmar {

namespace {

/// Calls `see` for the view and all its descendants, in reading order.
template <class See>
void walk(View& view, const See& see) {
  see(view);
  for (View* const subview : view.subviews()) walk(*subview, see);
}

/// The window; null if it has been destroyed. Unlike a locked pointer, the result does not keep
/// `window` from expiring.
Window* existing(const std::weak_ptr<Window*>& window) {
  const auto locked = window.lock();
  return locked ? *locked : nullptr;
}

}  // namespace

Window::Window(WindowSystem& windowSystem) : windowSystem_(windowSystem) {}

Window::~Window() {
  delegate_ = nullptr;
  isClosing_ = true;
  waitingTasks_.clear();
  filePanel_.reset();
  if (sheet_ != nullptr) sheet_->close();
  std::weak_ptr<Window*> parent;
  if (sheetParent_ != nullptr) parent = sheetParent_->self_;
  leaveSheetParent();
  contentView_.reset();
  if (Window* const window = existing(parent)) window->callWaitingTasks();
}

void Window::setContentView(std::unique_ptr<View> view) {
  contentView_ = std::move(view);
  contentView_->window_ = this;
  if (peer_) peer_->windowChanged();
}

Result<void> Window::show(const Activation& activation) {
  if (!peer_) {
    auto peer = windowSystem_.makeWindowPeer(*this);
    if (!peer) return peer.error();
    peer_ = std::move(peer).value();
    if (firstResponder_ == nullptr) makeFirstResponder(defaultButton());
  }
  visible_ = true;
  peer_->show(activation);
  return {};
}

void Window::close() {
  if (!visible_) return;
  const std::weak_ptr<Window*> self = self_;
  waitingTasks_.clear();
  filePanel_.reset();
  if (sheet_ != nullptr) {
    isClosing_ = true;
    sheet_->close();
    if (self.expired()) return;
    isClosing_ = false;
    if (!visible_) return;
  }
  visible_ = false;
  std::weak_ptr<Window*> parent;
  if (sheetParent_ != nullptr) parent = sheetParent_->self_;
  leaveSheetParent();
  peer_->hide();
  keyboardLost();
  if (delegate_ != nullptr) delegate_->windowWillClose(*this);
  // The delegate may have destroyed this window.
  if (Window* const window = existing(parent)) window->callWaitingTasks();
}

Result<void> Window::beginSheet(Window& sheet, const Activation& activation) {
  if (auto error = obstacle()) return *error;
  sheet.sheetParent_ = this;
  Result<void> shown = sheet.show(activation);
  if (shown) {
    sheet_ = &sheet;
    keyboardLost();
  } else {
    sheet.sheetParent_ = nullptr;
  }
  return shown;
}

std::optional<Error> Window::obstacle() const {
  if (!isClosing_ && isFree()) return std::nullopt;
  return Error{"The window “" + title_ + "” " +
               (isClosing_ ? "is closing." : "already has an open sheet or panel.")};
}

template <class Show>
Result<void> Window::beginPanel(const Show& show,
                                std::function<void(const std::string& path)> onChoose) {
  if (auto error = obstacle()) return *error;
  if (!visible_) return Error{"The window “" + title_ + "” is not open."};
  auto panel = show([this, onChoose = std::move(onChoose)](std::optional<std::string> path) {
    // Destroying the panel destroys this function.
    const auto choose = onChoose;
    const std::optional<std::string> chosen = std::move(path);
    const std::weak_ptr<Window*> self = self_;
    filePanel_.reset();
    if (chosen) choose(*chosen);
    if (Window* const window = existing(self)) window->callWaitingTasks();
  });
  if (!panel) return panel.error();
  filePanel_ = std::move(panel).value();
  keyboardLost();
  return {};
}

Result<void> Window::beginOpenPanel(const OpenPanel& panel,
                                    std::function<void(const std::string& path)> onChoose) {
  return beginPanel(
      [&](auto onEnd) { return windowSystem_.showOpenPanel(*this, panel, std::move(onEnd)); },
      std::move(onChoose));
}

Result<void> Window::beginSavePanel(const SavePanel& panel,
                                    std::function<void(const std::string& path)> onChoose) {
  return beginPanel(
      [&](auto onEnd) { return windowSystem_.showSavePanel(*this, panel, std::move(onEnd)); },
      std::move(onChoose));
}

void Window::whenFree(std::function<void()> task) {
  if (!visible_ || isClosing_) return;
  waitingTasks_.push_back(std::move(task));
  callWaitingTasks();
}

void Window::callWaitingTasks() {
  const std::weak_ptr<Window*> self = self_;
  while (!self.expired() && takesInput() && !isClosing_ && !waitingTasks_.empty()) {
    const std::function<void()> task = std::move(waitingTasks_.front());
    waitingTasks_.erase(waitingTasks_.begin());
    task();
  }
}

Result<void> Window::beginAlert(Alert alert, const Activation& activation,
                                std::function<void(std::size_t button)> onAnswer) {
  auto sheet = std::make_unique<AlertSheet>(
      windowSystem_, std::move(alert),
      [this, onAnswer = std::move(onAnswer)](std::optional<std::size_t> button) {
        // Destroying the alert destroys this function.
        const auto answer = onAnswer;
        alert_.reset();
        if (button && answer) answer(*button);
      });
  Result<void> shown = sheet->begin(*this, activation);
  if (shown) alert_ = std::move(sheet);
  return shown;
}

void Window::leaveSheetParent() {
  if (sheetParent_ == nullptr) return;
  sheetParent_->sheet_ = nullptr;
  sheetParent_ = nullptr;
}

void Window::makeFirstResponder(View* view) {
  if (firstResponder_ == view) return;
  View* const previous = std::exchange(firstResponder_, view);
  if (peer_) peer_->firstResponderChanged();
  if (previous != nullptr) previous->focusLost();
}

Button* Window::defaultButton() const {
  return buttonFor([](const KeyEquivalent& key) { return key == keys::returnKey; });
}

Button* Window::cancelButton() const {
  return buttonFor([](const KeyEquivalent& key) { return key == keys::escape; });
}

template <class Condition>
Button* Window::buttonFor(const Condition& wanted) const {
  Button* found = nullptr;
  if (contentView_) {
    walk(*contentView_, [&](View& view) {
      auto* const button = dynamic_cast<Button*>(&view);
      if (found != nullptr || button == nullptr || !button->keyEquivalent()) return;
      if (wanted(*button->keyEquivalent())) found = button;
    });
  }
  return found;
}

std::vector<View*> Window::keyViews() const {
  std::vector<View*> found;
  if (contentView_) {
    walk(*contentView_, [&](View& view) {
      if (view.acceptsFirstResponder()) found.push_back(&view);
    });
  }
  return found;
}

bool Window::key(const KeyPress& press) {
  return performKeyEquivalent(press) || keyDown(press);
}

bool Window::performKeyEquivalent(const KeyPress& press) {
  if (!takesInput() || !contentView_) return false;
  std::vector<View*> views;
  walk(*contentView_, [&](View& view) { views.push_back(&view); });
  // The view that handles the key may destroy the others.
  return std::ranges::any_of(
      views, [&](View* view) { return view->takesInput() && view->performKeyEquivalent(press); });
}

bool Window::keyDown(const KeyPress& press) {
  if (!takesInput()) return false;
  if (firstResponder_ != nullptr && firstResponder_->takesInput() && firstResponder_->key(press)) {
    return true;
  }
  // A view that uses Tab itself leaves it with Control to the window.
  if (press.is(keys::tab) || press.is(keys::controlTab)) return moveFocus(1);
  if (press.is(keys::backTab) || press.is(keys::controlBackTab)) return moveFocus(-1);
  Button* const button = buttonFor([&](const KeyEquivalent& key) { return press.is(key); });
  if (button != nullptr) {
    const bool takesInput = button->takesInput();
    button->press();
    return takesInput;
  }
  if (scroll(press)) return true;
  if (!press.is(keys::escape) || !closesOnEscape_) return false;
  performClose();
  return true;
}

bool Window::scroll(const KeyPress& press) {
  bool isDone = false;
  if (contentView_) {
    walk(*contentView_, [&](View& view) {
      isDone = isDone || (dynamic_cast<ScrollView*>(&view) != nullptr && view.key(press));
    });
  }
  return isDone;
}

/// Moves the focus to the next or previous view and wraps around. Without a first responder, starts
/// at the first or last view.
bool Window::moveFocus(int step) {
  const std::vector<View*> views = keyViews();
  if (views.empty()) return false;
  const auto count = static_cast<std::ptrdiff_t>(views.size());
  const auto at = std::find(views.begin(), views.end(), firstResponder_);
  std::ptrdiff_t next = step > 0 ? 0 : count - 1;
  if (at != views.end()) next = (at - views.begin() + step + count) % count;
  makeFirstResponder(views[static_cast<std::size_t>(next)]);
  return true;
}

void Window::focus(View* view) {
  if (view == nullptr || view->takesInput()) makeFirstResponder(view);
}

void Window::mouseDown() {
  if (takesInput() && dynamic_cast<CustomView*>(firstResponder_) != nullptr) {
    makeFirstResponder(nullptr);
  }
}

void Window::keyboardLost() {
  if (firstResponder_ != nullptr) firstResponder_->focusLost();
}

void Window::beep() const {
  if (peer_) peer_->beep();
}

void Window::inputChanged() {
  if (firstResponder_ != nullptr && !firstResponder_->takesInput()) keyboardLost();
}

void Window::performClose() {
  if (takesInput()) close();
}

void Window::viewWillBeDestroyed(const View& view) {
  if (firstResponder_ != &view) return;
  firstResponder_ = nullptr;
  if (peer_) peer_->firstResponderChanged();
}

}  // namespace quillmar
