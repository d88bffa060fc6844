// An image, scaled to fit the view's size.

#pragma once

#include <optional>
#include <utility>

#include "platform/image.h"
#include "platform/widgets/view.h"

namespace quillmar {

class ImageView final : public View {
 public:
  /// If `image` is absent, the view is empty but keeps its size.
  explicit ImageView(std::optional<Image> image) : image_(std::move(image)) {}

  void accept(ViewVisitor& visitor) override;

  const std::optional<Image>& image() const { return image_; }
  void setImage(std::optional<Image> image) { set(image_, std::move(image)); }

 private:
  std::optional<Image> image_;
};

}  // namespace quillmar
