#include "platform/widgets/window.h"

#include <algorithm>
#include <string>

#include "platform/widgets/button.h"
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

}  // namespace

Window::Window(WindowSystem& windowSystem) : windowSystem_(windowSystem) {}

Window::~Window() {
  delegate_ = nullptr;
  isClosing_ = true;
  if (sheet_ != nullptr) sheet_->close();
  leaveSheetParent();
  contentView_.reset();
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
  if (sheet_ != nullptr) {
    isClosing_ = true;
    sheet_->close();
    if (self.expired()) return;
    isClosing_ = false;
    if (!visible_) return;
  }
  visible_ = false;
  leaveSheetParent();
  peer_->hide();
  if (delegate_ != nullptr) delegate_->windowWillClose(*this);
}

Result<void> Window::beginSheet(Window& sheet, const Activation& activation) {
  if (sheet_ != nullptr || isClosing_) {
    return Error{"The window “" + title_ + "” " +
                 (isClosing_ ? "is closing." : "already has a sheet.")};
  }
  sheet.sheetParent_ = this;
  Result<void> shown = sheet.show(activation);
  if (shown) {
    sheet_ = &sheet;
  } else {
    sheet.sheetParent_ = nullptr;
  }
  return shown;
}

void Window::leaveSheetParent() {
  if (sheetParent_ == nullptr) return;
  sheetParent_->sheet_ = nullptr;
  sheetParent_ = nullptr;
}

void Window::makeFirstResponder(View* view) {
  if (firstResponder_ == view) return;
  firstResponder_ = view;
  if (peer_) peer_->firstResponderChanged();
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
  if (!takesInput()) return false;
  if (firstResponder_ != nullptr && firstResponder_->takesInput() && firstResponder_->key(press)) {
    return true;
  }
  if (press.is(keys::tab)) return moveFocus(1);
  if (press.is(keys::backTab)) return moveFocus(-1);
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

void Window::performClose() {
  if (takesInput()) close();
}

void Window::viewWillBeDestroyed(const View& view) {
  if (firstResponder_ == &view) makeFirstResponder(nullptr);
}

}  // namespace quillmar
