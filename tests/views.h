// Finds views in a window.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/view.h"
#include "platform/widgets/window.h"

namespace quillmar {

/// The views of one kind in `view`, itself included, in reading order.
template <class Kind>
std::vector<Kind*> viewsOf(View& view) {
  std::vector<Kind*> found;
  if (auto* const match = dynamic_cast<Kind*>(&view)) found.push_back(match);
  for (View* const subview : view.subviews()) {
    for (Kind* const match : viewsOf<Kind>(*subview)) found.push_back(match);
  }
  return found;
}

template <class Kind>
std::vector<Kind*> viewsOf(const Window& window) {
  return window.contentView() == nullptr ? std::vector<Kind*>()
                                         : viewsOf<Kind>(*window.contentView());
}

/// Null if there is none.
inline Button* buttonTitled(const Window& window, std::string_view title) {
  for (Button* const button : viewsOf<Button>(window)) {
    if (button->title() == title) return button;
  }
  return nullptr;
}

inline std::vector<std::string> labelTexts(const Window& window) {
  std::vector<std::string> texts;
  for (const Label* const label : viewsOf<Label>(window)) texts.push_back(label->text());
  return texts;
}

}  // namespace quillmar
