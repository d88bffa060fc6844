#include "platform/linux/status_item/desktop_status_item.h"

#include <utility>

namespace quillmar {

DesktopStatusItem::DesktopStatusItem(Collaborators collaborators)
    : collaborators_(std::move(collaborators)), self_(std::make_shared<DesktopStatusItem*>(this)) {
  collaborators_.notifier.setActionHandler(forwarder());
}

DesktopStatusItem::~DesktopStatusItem() {
  stopLooking();
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

void DesktopStatusItem::setHost(StatusNotifierHost host) {
  if (host == host_) return;
  host_ = host;
  // Nothing wakes the program up while its icon is there.
  stopLooking();
  if (host == StatusNotifierHost::present) embedded_.reset();
  if (host != StatusNotifierHost::missing) return;
  stopWaiting_ = collaborators_.runLater(panelTimeout, [this] {
    // The tray may have gone while it was not watched.
    embedded_.reset();
    collaborators_.trays.start([this](bool hasTray) { trayChanged(hasTray); });
  });
}

void DesktopStatusItem::stopLooking() {
  if (stopWaiting_) stopWaiting_();
  collaborators_.trays.stop();
}

void DesktopStatusItem::trayChanged(bool hasTray) {
  embedded_.reset();
  if (!hasTray) return;
  auto made = collaborators_.windows.makeEmbeddedStatusItem();
  // The window system has logged why.
  if (!made) return;
  embedded_ = std::move(made).value();
  embedded_->setImage(image_);
  embedded_->setMenu(menu_);
  embedded_->setActionHandler(forwarder());
}

Result<void> DesktopStatusItem::popUp(const Activation& activation,
                                      std::optional<ScreenPoint> position) {
  return collaborators_.windows.popUpMenu(
      menu_, position, activation, [weakSelf = std::weak_ptr(self_)](const ActionEntry& entry) {
        // The choice was made in a window of this program: the window system knows of it.
        if (const auto self = weakSelf.lock()) (*self)->sendAction(entry, {});
      });
}

}  // namespace quillmar
