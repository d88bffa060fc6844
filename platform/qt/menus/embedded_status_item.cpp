#include "platform/qt/menus/embedded_status_item.h"

#include <QCursor>
#include <QGuiApplication>
#include <utility>

#include "platform/qt/images/image_icons.h"
#include "platform/qt/menus/menu_widget.h"

namespace quillmar {

namespace {

/// Trays do not tell their colour. This grey has a contrast of 3:1 to light and dark ones.
constexpr QColor templateColor(0x80, 0x80, 0x80);

QIcon imageInTray(const std::optional<Image>& image) {
  QIcon icon = iconOf(image);
  if (!image || !image->isTemplate) return icon;
  QIcon tinted;
  for (const int side : {16, 22, 24, 32, 48}) {
    QPixmap pixmap = icon.pixmap(QSize(side, side));
    if (pixmap.isNull()) continue;
    tint(pixmap, templateColor);
    tinted.addPixmap(pixmap);
  }
  return tinted;
}

}  // namespace

EmbeddedStatusItem::EmbeddedStatusItem(TaskQueue& mainQueue)
    : mainQueue_(mainQueue), self_(std::make_shared<EmbeddedStatusItem*>(this)) {
  icon_.setToolTip(QGuiApplication::applicationDisplayName());
  // A click with either button opens the menu; the toolkit does it for the right one.
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger && menu_)
                       openAt(QCursor::pos(), *menu_);
                   });
}

EmbeddedStatusItem::~EmbeddedStatusItem() {
  icon_.setContextMenu(nullptr);
}

void EmbeddedStatusItem::setImage(std::optional<Image> image) {
  const QIcon icon = imageInTray(image);
  icon_.setIcon(icon.isNull() ? QGuiApplication::windowIcon() : icon);
  icon_.show();
}

void EmbeddedStatusItem::setMenu(Menu menu) {
  auto widget = std::make_unique<ScrollingMenu>();
  const std::weak_ptr<EmbeddedStatusItem*> self = self_;
  fillMenu(*widget, menu, {.mainQueue = mainQueue_, .choose = [self](const ActionEntry& entry) {
                             if (const auto item = self.lock())
                               (*item)->sendAction(entry, Activation());
                           }});
  icon_.setContextMenu(widget.get());
  // One that was replaced before may still be open, and this be the answer to a click in it.
  if (previous_) previous_.release()->deleteLater();
  previous_ = std::exchange(menu_, std::move(widget));
}

}  // namespace quillmar
