// Plain text, in one line or wrapped. Words longer than a line are broken; text that does not fit
// ends in an ellipsis. If enabled, the text can be selected with the pointer and copied.
//
// Invisible characters, and those that change the direction of writing, are shown as their code
// points. Otherwise one command could look like another.

#pragma once

#include <QClipboard>
#include <QColor>
#include <QString>
#include <QTextLayout>
#include <QTextOption>
#include <QWidget>
#include <memory>
#include <optional>

namespace quillmar {

class TextWidget final : public QWidget {
 public:
  explicit TextWidget(QWidget* parent);

  const QString& text() const { return text_; }
  /// The widget draws and copies withVisibleCharacters(text).
  void setText(const QString& text);
  /// If true, the text is paler than other texts.
  void setSecondary(bool secondary);
  /// Qt::AlignLeft stands for the side where lines begin.
  void setTextAlignment(Qt::Alignment alignment);
  void setWraps(bool wraps);
  void setSelectable(bool selectable);

  QString selectedText() const;

  /// The width of the widest line if nothing is wrapped.
  int naturalWidth() const;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// Lays out the text at the given width; an unlimited width does not wrap.
  std::unique_ptr<QTextLayout> lines(int width) const;
  /// The lines that are shown now.
  const QTextLayout& shownLines() const;
  void textChanged();
  QColor textColor() const;
  void paintWhole(QPainter& painter);
  /// Draws as much as fits.
  void paintCut(QPainter& painter);
  int positionAt(const QPointF& point) const;
  void select(int anchor, int cursor);
  void copySelection(QClipboard::Mode mode) const;

  QString text_;
  /// As it is drawn.
  QString shown_;
  QTextOption::WrapMode wrapMode_ = QTextOption::WrapAtWordBoundaryOrAnywhere;
  bool secondary_ = false;
  Qt::Alignment alignment_ = Qt::AlignLeft;
  bool wraps_ = false;
  bool selectable_ = false;
  /// Where the selection began and where it ends now.
  int anchor_ = 0;
  int cursor_ = 0;
  /// Timestamp of the last double click; a third click then selects all text.
  std::optional<quint64> doubleClick_;
  // Measured or laid out once for each text, font and width; negative or null before.
  mutable int naturalWidth_ = -1;
  mutable int measuredWidth_ = -1;
  mutable int measuredHeight_ = 0;
  mutable std::unique_ptr<QTextLayout> shownLines_;
};

}  // namespace quillmar
