// What is in a window: its views by kind and text, and the whole of it as lines of text.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/button.h"
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

/// Null when there is none.
inline Button* buttonTitled(const Window& window, std::string_view title) {
  for (Button* const button : viewsOf<Button>(window)) {
    if (button->title() == title) return button;
  }
  return nullptr;
}

/// A line for each view, two blanks of indentation before what lies in it: the kind, how it is laid
/// out and drawn, and its text behind a colon. "then 4" is a spacing of its own behind the view.
std::vector<std::string> windowOutline(const Window& window);

}  // namespace quillmar
