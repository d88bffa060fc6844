#include "platform/qt/widgets/text_widget.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/widgets/colors.h"
#include "platform/qt/widgets/extent.h"
#include "platform/qt/widgets/text_wrapping.h"
#include "platform/qt/widgets/visible_text.h"

namespace quillmar {

namespace {

qreal heightOf(const QTextLayout& layout) {
  const int count = layout.lineCount();
  if (count == 0) return 0;
  const QTextLine last = layout.lineAt(count - 1);
  return last.y() + last.height();
}

}  // namespace

TextWidget::TextWidget(QWidget* parent) : QWidget(parent) {}

void TextWidget::setText(const QString& text) {
  if (text_ == text) return;
  text_ = text;
  shown_ = withVisibleCharacters(text);
  wrapMode_ = wrapModeFor(shown_);
  anchor_ = cursor_ = 0;
  textChanged();
}

void TextWidget::setSecondary(bool secondary) {
  secondary_ = secondary;
  update();
}

void TextWidget::setTextAlignment(Qt::Alignment alignment) {
  alignment_ = alignment;
  textChanged();
}

void TextWidget::setWraps(bool wraps) {
  wraps_ = wraps;
  textChanged();
}

void TextWidget::setSelectable(bool selectable) {
  selectable_ = selectable;
  setFocusPolicy(selectable ? Qt::ClickFocus : Qt::NoFocus);
  if (selectable) {
    setCursor(Qt::IBeamCursor);
  } else {
    unsetCursor();
  }
}

QString TextWidget::selectedText() const {
  return shown_.mid(std::min(anchor_, cursor_), std::abs(anchor_ - cursor_));
}

std::unique_ptr<QTextLayout> TextWidget::lines(int width) const {
  QString text = shown_;
  text.replace(u'\n', QChar::LineSeparator);
  auto layout = std::make_unique<QTextLayout>(text, font());
  QTextOption option(alignment_);
  const bool wraps = wraps_ && width < Extent::unlimited;
  option.setWrapMode(wraps ? wrapMode_ : QTextOption::NoWrap);
  layout->setTextOption(option);
  layout->beginLayout();
  qreal y = 0;
  for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
    line.setLineWidth(width);
    line.setPosition(QPointF(0, y));
    y += line.height();
  }
  layout->endLayout();
  return layout;
}

const QTextLayout& TextWidget::shownLines() const {
  if (!shownLines_) shownLines_ = lines(width());
  return *shownLines_;
}

void TextWidget::textChanged() {
  naturalWidth_ = -1;
  measuredWidth_ = -1;
  shownLines_.reset();
  update();
}

int TextWidget::naturalWidth() const {
  if (naturalWidth_ < 0) {
    const std::unique_ptr<QTextLayout> layout = lines(Extent::unlimited);
    qreal widest = 0;
    for (int i = 0; i < layout->lineCount(); ++i) {
      widest = std::max(widest, layout->lineAt(i).naturalTextWidth());
    }
    naturalWidth_ = static_cast<int>(std::ceil(widest));
  }
  return naturalWidth_;
}

int TextWidget::heightForWidth(int width) const {
  if (measuredWidth_ != width) {
    // An empty text takes one line's room, too.
    const qreal height = std::max(heightOf(*lines(width)), fontMetrics().height() * 1.0);
    measuredHeight_ = static_cast<int>(std::ceil(height));
    measuredWidth_ = width;
  }
  return measuredHeight_;
}

QSize TextWidget::sizeHint() const {
  return {naturalWidth(), heightForWidth(naturalWidth())};
}

void TextWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(textColor());
  painter.setFont(font());
  const bool whole = heightOf(shownLines()) < height() + 1 && (wraps_ || naturalWidth() <= width());
  if (whole) {
    paintWhole(painter);
  } else {
    paintCut(painter);
  }
}

QColor TextWidget::textColor() const {
  if (!isEnabled()) return palette().color(QPalette::Disabled, QPalette::WindowText);
  const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
  if (!secondary_) return text;
  // The palette has grey texts, for placeholders, that are too faint for whole sentences.
  const QColor window = palette().color(QPalette::Active, QPalette::Window);
  return mixed(window, text, secondaryLabelShare);
}

void TextWidget::paintWhole(QPainter& painter) {
  QList<QTextLayout::FormatRange> formats;
  if (anchor_ != cursor_) {
    const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    QTextCharFormat selected;
    selected.setBackground(palette().brush(group, QPalette::Highlight));
    selected.setForeground(palette().brush(group, QPalette::HighlightedText));
    formats.append({std::min(anchor_, cursor_), std::abs(anchor_ - cursor_), selected});
  }
  shownLines().draw(&painter, QPointF(0, 0), formats);
}

void TextWidget::paintCut(QPainter& painter) {
  const QTextLayout& layout = shownLines();
  for (int i = 0; i < layout.lineCount(); ++i) {
    const QTextLine line = layout.lineAt(i);
    const bool last = i + 1 == layout.lineCount() ||
                      layout.lineAt(i + 1).y() + layout.lineAt(i + 1).height() >= height() + 1;
    QString text = shown_.mid(line.textStart(), line.textLength()).trimmed();
    if (last && i + 1 < layout.lineCount()) text += u'…';
    const QRectF place(0, line.y(), width(), line.height());
    painter.drawText(place, static_cast<int>(alignment_ | Qt::AlignVCenter | Qt::TextSingleLine),
                     fontMetrics().elidedText(text, Qt::ElideRight, width()));
    if (last) return;
  }
}

void TextWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) textChanged();
}

void TextWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  shownLines_.reset();
}

int TextWidget::positionAt(const QPointF& point) const {
  const QTextLayout& layout = shownLines();
  for (int i = 0; i < layout.lineCount(); ++i) {
    const QTextLine line = layout.lineAt(i);
    if (point.y() < line.y() + line.height() || i + 1 == layout.lineCount()) {
      return line.xToCursor(point.x());
    }
  }
  return 0;
}

void TextWidget::select(int anchor, int cursor) {
  anchor_ = anchor;
  cursor_ = cursor;
  update();
}

void TextWidget::copySelection(QClipboard::Mode mode) const {
  if (anchor_ != cursor_) QGuiApplication::clipboard()->setText(selectedText(), mode);
}

void TextWidget::mousePressEvent(QMouseEvent* event) {
  if (!selectable_ || event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  const auto interval =
      static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  if (doubleClick_ && event->timestamp() - *doubleClick_ <= interval) {
    // The third click of three.
    doubleClick_.reset();
    select(0, static_cast<int>(shown_.size()));
    return;
  }
  const int position = positionAt(event->position());
  select(event->modifiers() & Qt::ShiftModifier ? anchor_ : position, position);
}

void TextWidget::mouseMoveEvent(QMouseEvent* event) {
  if (selectable_ && event->buttons() & Qt::LeftButton) {
    select(anchor_, positionAt(event->position()));
  }
}

void TextWidget::mouseReleaseEvent(QMouseEvent* event) {
  QClipboard* const clipboard = QGuiApplication::clipboard();
  if (selectable_ && event->button() == Qt::LeftButton && clipboard->supportsSelection()) {
    copySelection(QClipboard::Selection);
  }
}

void TextWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!selectable_ || event->button() != Qt::LeftButton) return;
  doubleClick_ = event->timestamp();
  QTextBoundaryFinder words(QTextBoundaryFinder::Word, shown_);
  const int position = positionAt(event->position());
  words.setPosition(std::min<qsizetype>(position + 1, shown_.size()));
  const auto from = static_cast<int>(std::max<qsizetype>(0, words.toPreviousBoundary()));
  const auto to = static_cast<int>(words.toNextBoundary());
  select(from, to < 0 ? static_cast<int>(shown_.size()) : to);
}

void TextWidget::keyPressEvent(QKeyEvent* event) {
  if (selectable_ && event->matches(QKeySequence::Copy)) {
    copySelection(QClipboard::Clipboard);
  } else if (selectable_ && event->matches(QKeySequence::SelectAll)) {
    select(0, static_cast<int>(shown_.size()));
  } else {
    QWidget::keyPressEvent(event);
  }
}

void TextWidget::contextMenuEvent(QContextMenuEvent* event) {
  if (!selectable_) {
    event->ignore();
    return;
  }
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  QAction* const copy = menu->addAction(QStringLiteral("Copy"), this,
                                        [this] { copySelection(QClipboard::Clipboard); });
  copy->setEnabled(anchor_ != cursor_);
  menu->addAction(QStringLiteral("Select All"), this,
                  [this] { select(0, static_cast<int>(shown_.size())); });
  menu->popup(event->globalPos());
}

}  // namespace quillmar
