// The widget of a custom view: reports mouse presses, and stores the state for screen readers.

#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace quillmar {

class CustomWidget final : public QWidget {
 public:
  struct Handlers {
    std::function<void(CustomWidget& widget)> paint;
    /// May destroy the view, and with it these handlers.
    std::function<void()> mouseDown;
  };

  CustomWidget(Handlers handlers, QWidget* parent);

  /// From now on the widget does nothing; it is about to be deleted.
  void detach() { handlers_ = {}; }

  /// As if the user pressed the main mouse button on it.
  void press();

  // For screen readers. Changes are reported to them.

  const QString& value() const { return value_; }
  bool isPressed() const { return isPressed_; }
  void setAccessibleState(const QString& value, bool isPressed);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  Handlers handlers_;
  QString value_;
  bool isPressed_ = false;
};

}  // namespace quillmar
