// Arranges views in a row or a column, with optional flexible space between them.

#pragma once

#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/widgets/view.h"

namespace quillmar {

enum class Orientation { horizontal, vertical };

/// Alignment of views across the direction of the stack. In a column, leading is the side where
/// lines of text begin and trailing the opposite side; in a row they are the top and the bottom.
/// Fill makes each view as wide as the column, or as high as the row, up to its maximum size.
enum class StackAlignment { leading, center, trailing, fill };

struct EdgeInsets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;

  bool operator==(const EdgeInsets&) const = default;
};

/// An empty view that takes the remaining space of its stack.
class FlexibleSpace final : public View {
 public:
  void accept(ViewVisitor& visitor) override;
};

class StackView : public View {
 public:
  explicit StackView(Orientation orientation) : orientation_(orientation) {}

  void accept(ViewVisitor& visitor) override;
  std::vector<View*> subviews() const override;

  /// Fixed at construction.
  Orientation orientation() const { return orientation_; }

  /// Creates a view and appends it.
  template <class Kind, class... Arguments>
  Kind& add(Arguments&&... arguments) {
    auto view = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
    Kind& added = *view;
    insert(std::move(view));
    return added;
  }

  /// Removes and destroys a view of this stack.
  void remove(View& view);

  /// Space between adjacent views.
  double spacing() const { return spacing_; }
  void setSpacing(double spacing) { set(spacing_, spacing); }

  /// Overrides the spacing after this view of the stack.
  void setCustomSpacing(double spacing, const View& after);
  double spacingAfter(const View& view) const;

  StackAlignment alignment() const { return alignment_; }
  void setAlignment(StackAlignment alignment) { set(alignment_, alignment); }

  const EdgeInsets& edgeInsets() const { return edgeInsets_; }
  void setEdgeInsets(const EdgeInsets& insets) { set(edgeInsets_, insets); }

 private:
  void insert(std::unique_ptr<View> view);

  Orientation orientation_;
  std::vector<std::unique_ptr<View>> subviews_;
  double spacing_ = 0;
  std::map<const View*, double> customSpacing_;
  StackAlignment alignment_ = StackAlignment::center;
  EdgeInsets edgeInsets_;
};

}  // namespace quillmar
