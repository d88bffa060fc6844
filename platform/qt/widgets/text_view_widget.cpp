#include "platform/qt/widgets/text_view_widget.h"

#include <QMimeData>
#include <QSignalBlocker>
#include <QTextCursor>
#include <algorithm>
#include <cstddef>

#include "platform/qt/widgets/text_wrapping.h"

namespace quillmar {

void TextViewWidget::showText(const std::string& text) {
  marked_.reset();
  // The same text set again would take the cursor and the undo history away.
  if (shownText() != text) setDocumentText(text);
}

void TextViewWidget::showVisibleText(const std::string& text) {
  if (marked_ && marked_->original == text) return;
  marked_ = Marked{.original = text, .visible = text::VisibleText(text)};
  setDocumentText(marked_->visible.text());
}

std::string TextViewWidget::shownText() const {
  // The document's plain text has ordinary spaces for non-breaking ones.
  return document()->toRawText().replace(QChar::ParagraphSeparator, u'\n').toStdString();
}

void TextViewWidget::setDocumentText(const std::string& text) {
  const QSignalBlocker setByProgram(this);
  const int position = textCursor().position();
  const QString shown = QString::fromStdString(text);
  // The previous text would be wrapped again.
  clear();
  setWordWrapMode(wrapModeFor(shown));
  setPlainText(shown);
  if (!hasFocus()) return;
  QTextCursor cursor = textCursor();
  cursor.setPosition(std::min(position, document()->characterCount() - 1));
  setTextCursor(cursor);
}

QMimeData* TextViewWidget::createMimeDataFromSelection() const {
  if (!marked_) return RingedArea::createMimeDataFromSelection();
  // The document counts UTF-16 units.
  const QString shown = QString::fromStdString(marked_->visible.text());
  const auto bytesBefore = [&shown](int position) {
    return static_cast<std::size_t>(QStringView(shown).first(position).toUtf8().size());
  };
  const QTextCursor cursor = textCursor();
  auto* const data = new QMimeData;
  data->setText(QString::fromStdString(marked_->visible.original(
      bytesBefore(cursor.selectionStart()), bytesBefore(cursor.selectionEnd()))));
  return data;
}

}  // namespace quillmar
