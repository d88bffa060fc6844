// A column whose content begins at its top left corner, however large the column is.

#pragma once

#include "platform/widgets/stack_view.h"

namespace quillmar {

class FlippedView final : public StackView {
 public:
  FlippedView() : StackView(Orientation::vertical) { setAlignment(StackAlignment::leading); }
};

}  // namespace quillmar
