// A picture, scaled into the view's stated size.

#pragma once

#include <optional>
#include <utility>

#include "platform/image.h"
#include "platform/widgets/view.h"

namespace quillmar {

class ImageView final : public View {
 public:
  /// `image` absent: an empty place.
  explicit ImageView(std::optional<Image> image) : image_(std::move(image)) {}

  void accept(ViewVisitor& visitor) override;

  const std::optional<Image>& image() const { return image_; }
  void setImage(std::optional<Image> image) { set(image_, std::move(image)); }

 private:
  std::optional<Image> image_;
};

}  // namespace quillmar
