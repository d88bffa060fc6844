#include "platform/qt/windows/window_widget.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>
#include <utility>

#include "platform/qt/windows/key_presses.h"
#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

/// Another program has destroyed the window on the display.
constexpr QEvent::Type displayWindowDestroyed = QEvent::User;

/// Calls a copy: the handler may destroy the one that it is called through.
template <class Handler, class... Arguments>
auto call(const Handler& handler, Arguments&&... arguments) {
  const Handler copy = handler;
  using Answer = decltype(copy(std::forward<Arguments>(arguments)...));
  return copy ? copy(std::forward<Arguments>(arguments)...) : Answer();
}

KeyPress tabPress(bool forwards) {
  const KeyEquivalent& key = forwards ? keys::tab : keys::backTab;
  return {.keyCode = virtualKeyForKeysym("Tab")->code,
          .character = key.character,
          .modifiers = key.modifierMask};
}

}  // namespace

WindowWidget::WindowWidget(Handlers handlers)
    : handlers_(std::move(handlers)),
      keyEquivalents_(
          [this](const KeyPress& press) { return call(handlers_.keyEquivalent, press); }),
      fileDrops_({.drag =
                      [this](const QPoint& position, const std::vector<std::string>& files) {
                        return call(handlers_.dragFiles, widgetAt(position), files);
                      },
                  .drop =
                      [this](const QPoint& position, const std::vector<std::string>& files) {
                        return call(handlers_.dropFiles, widgetAt(position), files);
                      }}),
      destroyedWindow_(
          [this] { QCoreApplication::postEvent(this, new QEvent(displayWindowDestroyed)); }) {}

QWidget& WindowWidget::widgetAt(const QPoint& position) {
  QWidget* const child = childAt(position);
  return child == nullptr ? *this : *child;
}

void WindowWidget::requestLayout() {
  QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

bool WindowWidget::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::LayoutRequest:
      call(handlers_.layOut);
      return true;
    case displayWindowDestroyed:
      call(handlers_.destroyed);
      return true;
    case QEvent::WinIdChange:
      // Without one at the display there is nothing to watch: the window is about to go.
      if (windowHandle() != nullptr && windowHandle()->handle() != nullptr) {
        keyEquivalents_.watch(*windowHandle());
        // The last filter is asked first: keys that it drops are no key equivalents either.
        heldKeys_.watch(*windowHandle());
        fileDrops_.watch(*windowHandle());
        destroyedWindow_.watch(windowHandle()->winId());
      } else {
        destroyedWindow_.watch(0);
      }
      break;
    case QEvent::WindowActivate:
      call(handlers_.activated);
      break;
    case QEvent::ApplicationFontChange:
    case QEvent::StyleChange:
      call(handlers_.looksChanged);
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void WindowWidget::closeEvent(QCloseEvent* event) {
  // The model decides, and takes the window off the screen itself.
  event->ignore();
  call(handlers_.close);
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
  const auto press = keyPressOf(*event);
  if (!press || !call(handlers_.key, *press)) QWidget::keyPressEvent(event);
}

void WindowWidget::mousePressEvent(QMouseEvent* event) {
  QWidget::mousePressEvent(event);
  call(handlers_.mouseDown);
}

void WindowWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  call(handlers_.resized);
}

bool WindowWidget::focusNextPrevChild(bool next) {
  return call(handlers_.key, tabPress(next));
}

}  // namespace quillmar
