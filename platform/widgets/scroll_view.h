// A view that is as tall as its content while there is room on the screen, and scrolls it upright
// when there is not.

#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/widgets/view.h"

namespace quillmar {

class ScrollView final : public View {
 public:
  explicit ScrollView(std::unique_ptr<View> content);

  void accept(ViewVisitor& visitor) override;
  std::vector<View*> subviews() const override { return {content_.get()}; }

  View& content() const { return *content_; }

  // The user.

  /// The page keys, Home and End scroll. A window hands them on when nobody else wants them.
  bool key(const KeyPress& press) override;

 private:
  std::unique_ptr<View> content_;
};

}  // namespace quillmar
