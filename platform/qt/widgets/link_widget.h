// A button that looks like a link in a text.

#pragma once

#include <QAbstractButton>

namespace quillmar {

class LinkWidget final : public QAbstractButton {
 public:
  explicit LinkWidget(QWidget* parent);

  /// The text as it is drawn: its ampersands are doubled.
  QString title() const;

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
};

}  // namespace quillmar
