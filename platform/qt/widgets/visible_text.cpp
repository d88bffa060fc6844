#include "platform/qt/widgets/visible_text.h"

#include "platform/visible_text.h"

namespace quillmar {

QString withVisibleCharacters(const QString& text) {
  return QString::fromStdString(text::withVisibleCharacters(text.toStdString()));
}

}  // namespace quillmar
