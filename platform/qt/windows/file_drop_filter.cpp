#include "platform/qt/windows/file_drop_filter.h"

#include <QMimeData>
#include <QUrl>
#include <optional>

#include "platform/qt/windows/local_path.h"

namespace quillmar {

namespace {

std::vector<std::string> localFiles(const QMimeData& dragged) {
  std::vector<std::string> files;
  for (const QUrl& url : dragged.urls()) {
    if (const std::optional<std::string> path = localPath(url)) files.push_back(*path);
  }
  return files;
}

}  // namespace

bool FileDropFilter::eventFilter(QObject* /*watched*/, QEvent* event) {
  const bool drops = event->type() == QEvent::Drop;
  if (!drops && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove) {
    return false;
  }
  auto& drag = static_cast<QDropEvent&>(*event);
  const std::vector<std::string> files = localFiles(*drag.mimeData());
  if (files.empty()) return false;
  // A copy, because a drop may destroy this filter.
  const auto handler = drops ? handlers_.drop : handlers_.drag;
  drag.setDropAction(Qt::CopyAction);
  drag.setAccepted(drag.possibleActions().testFlag(Qt::CopyAction) &&
                   handler(drag.position().toPoint(), files));
  return true;
}

}  // namespace quillmar
