// A view that scrolls its content vertically. It is as tall as the content while there is room on
// the screen, or has its stated height. It scrolls to the view that gets the focus.

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

  /// The page keys, Home and End scroll. A window passes them on when no other view uses them.
  bool key(const KeyPress& press) override;

 private:
  std::unique_ptr<View> content_;
};

}  // namespace quillmar
