#include "platform/qt/widgets/accessible_widgets.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>

#include "platform/qt/widgets/custom_widget.h"
#include "platform/qt/widgets/icon_widget.h"
#include "platform/qt/widgets/link_widget.h"
#include "platform/qt/widgets/pop_up_button_peer.h"
#include "platform/qt/widgets/text_widget.h"
#include "platform/qt/windows/window_widget.h"

namespace quillmar {

namespace {

constexpr const char* roleProperty = "accessibilityRole";

QAccessible::Role roleOf(AccessibilityRole role) {
  switch (role) {
    case AccessibilityRole::button:
      return QAccessible::Button;
    case AccessibilityRole::checkbox:
      return QAccessible::CheckBox;
    case AccessibilityRole::group:
      return QAccessible::Grouping;
    case AccessibilityRole::image:
      return QAccessible::Graphic;
    case AccessibilityRole::link:
      return QAccessible::Link;
    case AccessibilityRole::outline:
      return QAccessible::Tree;
    case AccessibilityRole::popUpButton:
      return QAccessible::ComboBox;
    case AccessibilityRole::staticText:
      return QAccessible::StaticText;
    case AccessibilityRole::tabGroup:
      return QAccessible::PageTabList;
    case AccessibilityRole::textArea:
    case AccessibilityRole::textField:
      return QAccessible::EditableText;
  }
  return QAccessible::NoRole;
}

/// A widget of ours in its view's role, or in that of its kind. What it shows is its name, unless
/// its view has another.
class AccessibleView : public QAccessibleWidget {
 public:
  AccessibleView(QWidget& widget, AccessibilityRole role)
      : QAccessibleWidget(&widget), role_(role) {}

  QAccessible::Role role() const override {
    const QVariant stated = widget()->property(roleProperty);
    return roleOf(stated.isValid() ? static_cast<AccessibilityRole>(stated.toInt()) : role_);
  }
  QString text(QAccessible::Text kind) const override {
    const QString said = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && said.isEmpty() ? shownText() : said;
  }

 protected:
  virtual QString shownText() const { return {}; }

 private:
  AccessibilityRole role_;
};

class AccessibleText final : public AccessibleView {
 public:
  explicit AccessibleText(TextWidget& text)
      : AccessibleView(text, AccessibilityRole::staticText), text_(text) {}

 private:
  QString shownText() const override { return text_.text(); }

  TextWidget& text_;
};

class AccessibleLink final : public AccessibleView {
 public:
  explicit AccessibleLink(LinkWidget& link)
      : AccessibleView(link, AccessibilityRole::link), link_(link) {}

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) link_.click();
  }

 private:
  QString shownText() const override { return link_.title(); }

  LinkWidget& link_;
};

class AccessibleCustomWidget final : public AccessibleView {
 public:
  explicit AccessibleCustomWidget(CustomWidget& custom)
      : AccessibleView(custom, AccessibilityRole::group), custom_(custom) {}

  QString text(QAccessible::Text kind) const override {
    // Screen readers ask buttons for a description, not for a value.
    const bool isValue = kind == QAccessible::Value || kind == QAccessible::Description;
    return isValue ? custom_.value() : AccessibleView::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = AccessibleView::state();
    state.pressed = custom_.isPressed();
    return state;
  }
  QStringList actionNames() const override {
    QStringList names = AccessibleView::actionNames();
    if (role() == QAccessible::Button) names.prepend(pressAction());
    return names;
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      custom_.press();
    } else {
      AccessibleView::doAction(name);
    }
  }

 private:
  CustomWidget& custom_;
};

/// The toolkit's own interface has the selected title for a name, and no other.
class AccessiblePopUp final : public AccessibleView {
 public:
  explicit AccessiblePopUp(PopUpWidget& popUp)
      : AccessibleView(popUp, AccessibilityRole::popUpButton), popUp_(popUp) {}

  QString text(QAccessible::Text kind) const override {
    // Screen readers ask it for a description, not for a value.
    const bool isValue = kind == QAccessible::Value || kind == QAccessible::Description;
    return isValue ? popUp_.currentText() : AccessibleView::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = AccessibleView::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = popUp_.view()->isVisible();
    return state;
  }
  /// The list of the titles.
  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(popUp_.view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == popUp_.view() ? 0 : -1;
  }
  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& /*name*/) override {
    if (popUp_.isEnabled()) popUp_.showPopup();
  }

 private:
  QString shownText() const override { return popUp_.currentText(); }

  PopUpWidget& popUp_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
  if (auto* const text = dynamic_cast<TextWidget*>(object)) return new AccessibleText(*text);
  if (auto* const icon = dynamic_cast<IconWidget*>(object)) {
    return new AccessibleView(*icon, AccessibilityRole::image);
  }
  if (auto* const link = dynamic_cast<LinkWidget*>(object)) return new AccessibleLink(*link);
  if (auto* const custom = dynamic_cast<CustomWidget*>(object)) {
    return new AccessibleCustomWidget(*custom);
  }
  if (auto* const popUp = dynamic_cast<PopUpWidget*>(object)) return new AccessiblePopUp(*popUp);
  if (auto* const window = dynamic_cast<WindowWidget*>(object)) {
    return new QAccessibleWidget(window, QAccessible::Dialog);
  }
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget != nullptr && widget->property(roleProperty).isValid()) {
    return new AccessibleView(*widget, AccessibilityRole::group);
  }
  return nullptr;
}

}  // namespace

void makeWidgetsAccessible() {
  QAccessible::installFactory(makeInterface);
}

void setAccessibilityRole(QWidget& widget, std::optional<AccessibilityRole> role) {
  widget.setProperty(roleProperty, role ? QVariant(static_cast<int>(*role)) : QVariant());
}

}  // namespace quillmar
