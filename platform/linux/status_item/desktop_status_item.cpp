#include "platform/linux/status_item/desktop_status_item.h"

#include <utility>

namespace quillmar {

DesktopStatusItem::DesktopStatusItem(Collaborators collaborators)
    : collaborators_(std::move(collaborators)), self_(std::make_shared<DesktopStatusItem*>(this)) {
  collaborators_.notifier.setActionHandler(forwarder());
  awaitHost();
}

DesktopStatusItem::~DesktopStatusItem() {
  stopWaiting_();
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
  // Nothing wakes the program up while its icon is there.
  stopWaiting_();
  collaborators_.trays.stop();
  embedded_.reset();
}

void DesktopStatusItem::awaitHost() {
  stopWaiting_ = collaborators_.runLater(patience, [this] {
    collaborators_.trays.start([this](bool hasTray) { trayChanged(hasTray); });
  });
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
