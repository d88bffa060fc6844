// A column on which files with packs and settings can be dropped. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/widgets/stack_view.h"

namespace quillmar {

class DropTargetView final : public StackView {
 public:
  DropTargetView() : StackView(Orientation::vertical) {}

  /// In lower case, without the dot. Files may use other case.
  static const std::set<std::string>& acceptedExtensions();

  /// The first of the files that is accepted, judged by its extension alone.
  static std::optional<std::string> droppedFile(const std::vector<std::string>& files);

  /// Called with the absolute path of the accepted file after each drop. May be empty. It may
  /// destroy the view.
  std::function<void(const std::string& path)> onDrop;

  bool isDragDestination() const override { return true; }
  bool draggingEntered(const std::vector<std::string>& files) override;
  bool performDragOperation(const std::vector<std::string>& files) override;
};

}  // namespace quillmar
