// Open and save panels: the file dialog of the desktop, or that of the toolkit. Main thread.

#pragma once

#include <QPointer>
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
  /// Shows the panel above the window `parent`.
  QtFilePanel(const OpenPanel& panel, QWidget& parent, FilePanelCompletion onEnd);
  QtFilePanel(const SavePanel& panel, QWidget& parent, FilePanelCompletion onEnd);
  ~QtFilePanel() override;
  QtFilePanel(const QtFilePanel&) = delete;
  QtFilePanel& operator=(const QtFilePanel&) = delete;

 private:
  QtFilePanel(const std::string& title, const std::vector<FileType>& types, QWidget& parent,
              FilePanelCompletion onEnd);
  void finished(int result);
  /// Asks whether to replace the file whose name got its extension after the dialog had closed.
  void askToReplace(const std::string& path);
  void end(std::optional<std::string> path);

  FilePanelCompletion onEnd_;
  /// Appended to a name without an extension; empty for none.
  std::string extension_;
  /// Null when it was destroyed with its parent.
  QPointer<FileDialog> dialog_;
  QPointer<QMessageBox> question_;
};

}  // namespace quillmar
