#include "platform/qt/widgets/accessible_widgets.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/widgets/icon_widget.h"
#include "platform/qt/widgets/link_widget.h"
#include "platform/qt/widgets/text_widget.h"
#include "platform/qt/windows/window_widget.h"

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

class AccessibleLink final : public QAccessibleWidget {
 public:
  explicit AccessibleLink(LinkWidget& link)
      : QAccessibleWidget(&link, QAccessible::Link), link_(link) {}

  QString text(QAccessible::Text kind) const override {
    const QString said = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && said.isEmpty() ? link_.text() : said;
  }
  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) link_.click();
  }

 private:
  LinkWidget& link_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
  if (auto* const text = dynamic_cast<TextWidget*>(object)) return new AccessibleText(*text);
  if (auto* const icon = dynamic_cast<IconWidget*>(object)) {
    return new QAccessibleWidget(icon, QAccessible::Graphic);
  }
  if (auto* const link = dynamic_cast<LinkWidget*>(object)) return new AccessibleLink(*link);
  if (auto* const window = dynamic_cast<WindowWidget*>(object)) {
    return new QAccessibleWidget(window, QAccessible::Dialog);
  }
  return nullptr;
}

}  // namespace

void makeWidgetsAccessible() {
  QAccessible::installFactory(makeInterface);
}

}  // namespace quillmar
