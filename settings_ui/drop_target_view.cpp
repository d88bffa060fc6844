#include "settings_ui/drop_target_view.h"

#include <filesystem>

#include "platform/pack_file_type.h"
#include "platform/text.h"

namespace quillmar {

const std::set<std::string>& DropTargetView::acceptedExtensions() {
  static const auto* extensions =
      new std::set<std::string>{"json", std::string(pack_file_type::extension)};
  return *extensions;
}

std::optional<std::string> DropTargetView::droppedFile(const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    const std::string extension = std::filesystem::path(file).extension().string();
    if (extension.empty()) continue;
    if (acceptedExtensions().contains(text::lowercased(extension.substr(1)))) return file;
  }
  return std::nullopt;
}

bool DropTargetView::draggingEntered(const std::vector<std::string>& files) {
  return droppedFile(files).has_value();
}

bool DropTargetView::performDragOperation(const std::vector<std::string>& files) {
  const std::optional<std::string> file = droppedFile(files);
  if (!file) return false;
  // A copy, because the handler may destroy this view.
  const auto handler = onDrop;
  if (handler) handler(*file);
  return true;
}

}  // namespace quillmar
