#include "platform/qt/widgets/accessible_widgets.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/widgets/icon_widget.h"
#include "platform/qt/widgets/text_widget.h"

namespace quillmar {

namespace {

class AccessibleText final : public QAccessibleWidget {
 public:
  explicit AccessibleText(TextWidget& text)
      : QAccessibleWidget(&text, QAccessible::StaticText), text_(text) {}

  QString text(QAccessible::Text kind) const override {
    const QString said = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && said.isEmpty() ? text_.text() : said;
  }

 private:
  TextWidget& text_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
  if (auto* const text = dynamic_cast<TextWidget*>(object)) return new AccessibleText(*text);
  if (auto* const icon = dynamic_cast<IconWidget*>(object)) {
    return new QAccessibleWidget(icon, QAccessible::Graphic);
  }
  return nullptr;
}

}  // namespace

void makeWidgetsAccessible() {
  QAccessible::installFactory(makeInterface);
}

}  // namespace quillmar
