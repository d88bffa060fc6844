// A checkbox whose title wraps if it has less space than it needs. The box is beside the first
// line.

#pragma once

#include <QCheckBox>

namespace quillmar {

class CheckboxWidget final : public QCheckBox {
 public:
  explicit CheckboxWidget(QWidget* parent) : QCheckBox(parent) {}

  /// Width of the box and a title of that width.
  int widthFor(int titleWidth) const;
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;

 protected:
  /// Leaves Return to the default button. On some desktops it would press the checkbox.
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  /// The model changes the state.
  void nextCheckState() override {}

 private:
  int lineHeight() const;
  int roomBeforeTitle() const;
  /// The size of the title in lines of that width.
  QSize titleSize(int width) const;
};

}  // namespace quillmar
