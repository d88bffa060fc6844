#pragma once

#include <optional>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/image_view.h"

namespace quillmar {

class ImageViewPeer final : public WidgetPeer {
 public:
  ImageViewPeer(ImageView& imageView, QtWindowPeer& window, QWidget& parent);

 protected:
  void update() override;
  Extent contentHorizontal() const override { return side(imageView_.width()); }
  Extent contentVertical(int /*width*/) const override { return side(imageView_.height()); }

 private:
  /// Size limits of the square image; zero if its size is stated.
  Extent side(const std::optional<double>& stated) const;

  ImageView& imageView_;
};

}  // namespace quillmar
