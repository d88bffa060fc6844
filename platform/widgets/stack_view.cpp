#include "platform/widgets/stack_view.h"

#include <algorithm>

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void FlexibleSpace::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void StackView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

std::vector<View*> StackView::subviews() const {
  std::vector<View*> views;
  views.reserve(subviews_.size());
  for (const auto& view : subviews_) views.push_back(view.get());
  return views;
}

void StackView::insert(std::unique_ptr<View> view) {
  adopt(*view, this);
  subviews_.push_back(std::move(view));
  if (peer() != nullptr) peer()->subviewsChanged();
}

void StackView::remove(View& view) {
  const auto at = std::find_if(subviews_.begin(), subviews_.end(),
                               [&](const auto& candidate) { return candidate.get() == &view; });
  if (at == subviews_.end()) return;
  customSpacing_.erase(&view);
  subviews_.erase(at);
  if (peer() != nullptr) peer()->subviewsChanged();
}

void StackView::setCustomSpacing(double spacing, const View& after) {
  customSpacing_.insert_or_assign(&after, spacing);
  if (peer() != nullptr) peer()->viewChanged();
}

double StackView::spacingAfter(const View& view) const {
  const auto at = customSpacing_.find(&view);
  return at == customSpacing_.end() ? spacing_ : at->second;
}

}  // namespace quillmar
