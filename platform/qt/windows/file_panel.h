// Open and save panels: the file dialog of the desktop, or that of the toolkit. Main thread.

#pragma once

#include <QPointer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/widgets/file_panel.h"

class QMessageBox;
class QWidget;

namespace quillmar {

class FileDialog;

class QtFilePanel final : public FilePanelPeer {
 public:
  /// See WindowSystem::showOpenPanel().
  using OnEnd = std::function<void(std::optional<std::string> path)>;

  /// Shows the panel above the window `parent`.
  QtFilePanel(const OpenPanel& panel, QWidget& parent, OnEnd onEnd);
  QtFilePanel(const SavePanel& panel, QWidget& parent, OnEnd onEnd);
  ~QtFilePanel() override;
  QtFilePanel(const QtFilePanel&) = delete;
  QtFilePanel& operator=(const QtFilePanel&) = delete;

 private:
  QtFilePanel(const std::string& message, const std::vector<FileType>& types, QWidget& parent,
              OnEnd onEnd);
  void finished(int result);
  /// Asks whether to replace a file that the dialog did not know of.
  void askToReplace(const std::string& path);
  void end(std::optional<std::string> path);

  OnEnd onEnd_;
  /// Appended to a name without an extension; empty for none.
  std::string extension_;
  /// Null when it was destroyed with its parent.
  QPointer<FileDialog> dialog_;
  QPointer<QMessageBox> question_;
};

}  // namespace quillmar
