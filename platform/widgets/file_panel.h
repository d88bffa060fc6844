// Panels in which the user chooses a file to open, or where to save one. See
// Window::beginOpenPanel() and Window::beginSavePanel().

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmar {

struct FileType {
  /// As shown to the user, such as "JSON files".
  std::string name;
  /// In lower case, without the dot. The user's file may use other case.
  std::vector<std::string> extensions;

  bool operator==(const FileType&) const = default;
};

struct OpenPanel {
  std::string title;
  /// The files that the user can choose.
  std::vector<FileType> types;
};

struct SavePanel {
  std::string title;
  std::string proposedName;
  /// The first extension is appended to a name without an extension.
  FileType type;
};

/// Called once, when the panel has left the screen, with the absolute path of the chosen file, or
/// absent if the user cancelled. It may destroy the panel. Not called if the panel is destroyed
/// before.
using FilePanelCompletion = std::function<void(std::optional<std::string> path)>;

/// An open panel. Destroying it closes the panel.
class FilePanelPeer {
 public:
  virtual ~FilePanelPeer() = default;
};

}  // namespace quillmar
