#include "platform/linux/status_item/desktop_status_item.h"

#include <utility>

namespace quillmar {

DesktopStatusItem::DesktopStatusItem(Collaborators collaborators)
    : collaborators_(std::move(collaborators)), self_(std::make_shared<DesktopStatusItem*>(this)) {
  collaborators_.notifier.setActionHandler(forwarder());
  awaitHost();
}

DesktopStatusItem::~DesktopStatusItem() {
  collaborators_.trays.stop();
  collaborators_.notifier.setActionHandler(nullptr);
}

StatusItem::ActionHandler DesktopStatusItem::forwarder() {
  return [this](const ActionEntry& entry, const Activation& activation) {
    sendAction(entry, activation);
  };
}

void DesktopStatusItem::setImage(std::optional<Image> image) {
  collaborators_.notifier.setImage(image);
  if (embedded_) embedded_->setImage(image);
  image_ = std::move(image);
}

void DesktopStatusItem::setMenu(Menu menu) {
  collaborators_.notifier.setMenu(menu);
  if (embedded_) embedded_->setMenu(menu);
  menu_ = std::move(menu);
}

void DesktopStatusItem::setHasHost(bool hasHost) {
  if (hasHost == hasHost_) return;
  hasHost_ = hasHost;
  if (!hasHost) return awaitHost();
  ++wait_;
  collaborators_.trays.stop();
  embedded_.reset();
}

void DesktopStatusItem::awaitHost() {
  const auto isOver = [weakSelf = std::weak_ptr(self_), wait = ++wait_] {
    const auto self = weakSelf.lock();
    if (!self || (*self)->wait_ != wait) return;
    (*self)->collaborators_.trays.start(
        [item = *self](bool hasTray) { item->trayChanged(hasTray); });
  };
  collaborators_.runLater(patience, isOver);
}

void DesktopStatusItem::trayChanged(bool hasTray) {
  embedded_.reset();
  if (!hasTray) return;
  auto made = collaborators_.windows.makeEmbeddedStatusItem();
  // The window system has said why.
  if (!made) return;
  embedded_ = std::move(made).value();
  embedded_->setImage(image_);
  embedded_->setMenu(menu_);
  embedded_->setActionHandler(forwarder());
}

Result<void> DesktopStatusItem::popUp(const Activation& activation) {
  return collaborators_.windows.popUpMenu(
      menu_, activation, [weakSelf = std::weak_ptr(self_)](const ActionEntry& entry) {
        // The choice was made in a window of this program: the window system knows of it.
        if (const auto self = weakSelf.lock()) (*self)->sendAction(entry, {});
      });
}

}  // namespace quillmar
