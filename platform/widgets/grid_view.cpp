#include "platform/widgets/grid_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void GridView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

std::vector<View*> GridView::subviews() const {
  std::vector<View*> views;
  for (const Row& row : rows_) {
    if (row.label) views.push_back(row.label.get());
    views.push_back(row.view.get());
  }
  return views;
}

void GridView::insert(const std::string& label, std::unique_ptr<View> view) {
  Row row{.label = label.empty() ? nullptr : std::make_unique<Label>(label),
          .view = std::move(view)};
  if (row.label) {
    adopt(*row.label, this);
    row.view->setAccessibilityLabel(label.ends_with(':') ? label.substr(0, label.size() - 1)
                                                         : label);
  }
  adopt(*row.view, this);
  rows_.push_back(std::move(row));
  if (peer() != nullptr) peer()->subviewsChanged();
}

void GridView::setTopPadding(double padding, const View& view) {
  for (Row& row : rows_) {
    if (row.view.get() == &view) set(row.topPadding, padding);
  }
}

}  // namespace quillmar
