#include "platform/qt/widgets/image_view_peer.h"

#include <QFontMetrics>

#include "platform/qt/widgets/fonts.h"
#include "platform/qt/widgets/icon_widget.h"

namespace quillmar {

ImageViewPeer::ImageViewPeer(ImageView& imageView, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(imageView, window, new IconWidget(&parent)), imageView_(imageView) {}

void ImageViewPeer::update() {
  static_cast<IconWidget&>(widget()).setImage(imageView_.image());
}

Extent ImageViewPeer::side(const std::optional<double>& stated) const {
  if (stated || !imageView_.image()) return Extent::fixed(0);
  Font font;
  font.size = imageView_.image()->pointSize.value_or(Font::defaultSize);
  return Extent::fixed(QFontMetrics(desktopFont(font, widget())).height());
}

}  // namespace quillmar
