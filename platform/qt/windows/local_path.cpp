#include "platform/qt/windows/local_path.h"

#include <QByteArray>

namespace quillmar {

std::optional<std::string> localPath(const QUrl& url) {
  const bool isHere = url.host().isEmpty() || url.host() == QStringLiteral("localhost");
  if (!url.isLocalFile() || !isHere) return std::nullopt;
  // The toolkit's own conversion replaces bytes that are not valid UTF-8.
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8()).toStdString();
}

}  // namespace quillmar
