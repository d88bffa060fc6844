#include "platform/qt/widgets/text_view_widget.h"

#include <QMimeData>
#include <QPainter>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <algorithm>
#include <cstddef>

#include "platform/qt/widgets/colors.h"
#include "platform/qt/widgets/text_wrapping.h"

namespace quillmar {

namespace {

// In the left margin of the text.
constexpr qreal barLeft = 2;
constexpr qreal barWidth = 2;
constexpr float barContrast = 0.5F;

}  // namespace

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

void TextViewWidget::paintEvent(QPaintEvent* event) {
  RingedArea::paintEvent(event);
  if (marked_) paintContinuationBars();
}

void TextViewWidget::paintContinuationBars() {
  QPainter painter(viewport());
  const QColor color =
      mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), barContrast);
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
    if (area.top() > viewport()->height()) return;
    if (block.layout()->lineCount() < 2) continue;
    const qreal top = area.top() + block.layout()->lineAt(1).y();
    painter.fillRect(QRectF(barLeft, top, barWidth, area.bottom() - top), color);
  }
}

QMimeData* TextViewWidget::createMimeDataFromSelection() const {
  if (!marked_) return RingedArea::createMimeDataFromSelection();
  // The document counts UTF-16 units.
  const QString shown = QString::fromStdString(marked_->visible.text());
  const auto bytesBefore = [&shown](int position) {
    return static_cast<std::size_t>(QStringView(shown).first(position).toUtf8().size());
  };
  const QTextCursor cursor = textCursor();
  auto* const selected = new QMimeData;
  selected->setText(QString::fromStdString(marked_->visible.original(
      bytesBefore(cursor.selectionStart()), bytesBefore(cursor.selectionEnd()))));
  return selected;
}

}  // namespace quillmar
