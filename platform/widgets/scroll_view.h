// A view that scrolls its content vertically. It is as tall as its content, limited by the screen,
// unless a height is set. It scrolls to the view that gets the focus.

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

  // Events from the user.

  /// Page Up, Page Down, Home and End scroll. The window forwards these keys if no other view uses
  /// them.
  bool key(const KeyPress& press) override;

 private:
  std::unique_ptr<View> content_;
};

}  // namespace quillmar
