#include "tests/qt/qt_user.h"

#include <QAccessible>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include "platform/qt/widgets/text_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/qt/windows/qt_window_peer.h"
#include "platform/widgets/label.h"

namespace quillmar {

namespace {

constexpr int failureMilliseconds = 60000;

/// What the toolkit calls a key, and the text that comes with it.
struct Key {
  Qt::Key key;
  QString text;
  Qt::KeyboardModifiers modifiers;
};

Key keyOf(const KeyEquivalent& equivalent) {
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ShiftModifier, equivalent.modifierMask & modifiers::shift);
  held.setFlag(Qt::ControlModifier, equivalent.modifierMask & modifiers::control);
  const QString text = QString::fromStdString(equivalent.character);
  if (equivalent == keys::backTab) return {Qt::Key_Backtab, text, held};
  if (equivalent == keys::tab) return {Qt::Key_Tab, text, held};
  if (equivalent == keys::returnKey) return {Qt::Key_Return, text, held};
  if (equivalent == keys::escape) return {Qt::Key_Escape, text, held};
  return {static_cast<Qt::Key>(text.toUpper().at(0).unicode()), text, held};
}

/// The window may be gone after the press.
void sendKey(QWindow* handle, const Key& key) {
  const QPointer<QWindow> window(handle);
  QTest::sendKeyEvent(QTest::Press, window, key.key, key.text, key.modifiers);
  if (window) QTest::sendKeyEvent(QTest::Release, window, key.key, key.text, key.modifiers);
}

}  // namespace

bool handleEventsUntil(const std::function<bool()>& done) {
  const QDeadlineTimer deadline(failureMilliseconds);
  while (!done() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 1000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_TRUE(done()) << "The effect that was waited for did not come.";
  return done();
}

void handleReadyEvents() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

QWidget& widgetOf(const Window& window) {
  return static_cast<QtWindowPeer*>(window.peer())->widget();
}

QWidget& widgetOf(const View& view) {
  return widgetPeer(view).widget();
}

QString withoutMnemonics(const QString& text) {
  QString shown;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'&') ++i;
    if (i < text.size()) shown += text[i];
  }
  return shown;
}

void QtUser::settle() {
  handleReadyEvents();
}

void QtUser::click(const View& view) {
  QWidget& widget = widgetOf(view);
  QWidget* const top = widget.window();
  QTest::mouseClick(top->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    widget.mapTo(top, widget.rect().center()));
}

void QtUser::typeText(const View& field, const std::string& text) {
  click(field);
  QWindow* const window = widgetOf(field).window()->windowHandle();
  sendKey(window, {Qt::Key_End, {}, Qt::NoModifier});
  typeAtFocus(*field.window(), text);
}

void QtUser::typeAtFocus(Window& window, const std::string& text) {
  const QPointer<QWindow> handle(widgetOf(window).windowHandle());
  for (const QChar character : QString::fromStdString(text)) {
    if (!handle) return;
    sendKey(handle, {static_cast<Qt::Key>(character.toUpper().unicode()), character, {}});
  }
}

void QtUser::pressKey(Window& window, const KeyEquivalent& key) {
  sendKey(widgetOf(window).windowHandle(), keyOf(key));
}

void QtUser::closeByTitleBar(Window& window) {
  widgetOf(window).windowHandle()->close();
}

bool QtUser::isOnScreen(const Window& window) const {
  return window.peer() != nullptr && widgetOf(window).windowHandle()->isVisible();
}

std::string QtUser::titleOnScreen(const Window& window) const {
  return widgetOf(window).windowHandle()->title().toStdString();
}

bool QtUser::isShown(const View& view) const {
  return view.peer() != nullptr && widgetOf(view).isVisible();
}

bool QtUser::isEnabledOnScreen(const View& view) const {
  return widgetOf(view).isEnabled();
}

bool QtUser::isDefaultOnScreen(const Button& button) const {
  return dynamic_cast<QPushButton&>(widgetOf(button)).isDefault();
}

std::string QtUser::textOnScreen(const View& view) const {
  const QWidget& widget = widgetOf(view);
  if (const auto* const line = dynamic_cast<const QLineEdit*>(&widget)) {
    return line->displayText().toStdString();
  }
  if (const auto* const text = dynamic_cast<const TextWidget*>(&widget)) {
    return text->text().toStdString();
  }
  return withoutMnemonics(dynamic_cast<const QAbstractButton&>(widget).text()).toStdString();
}

std::string QtUser::placeholderOnScreen(const TextField& field) const {
  return dynamic_cast<QLineEdit&>(widgetOf(field)).placeholderText().toStdString();
}

std::string QtUser::nameForScreenReaders(const View& view) const {
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widgetOf(view));
  return accessible->text(QAccessible::Name).toStdString();
}

const View* QtUser::focusedOnScreen(const Window& window) const {
  for (const View* const view : window.keyViews()) {
    if (widgetOf(window).focusWidget() == &widgetOf(*view)) return view;
  }
  return nullptr;
}

int QtUser::widgetCount() const {
  return static_cast<int>(QApplication::allWidgets().size());
}

}  // namespace quillmar
