#include "platform/qt/widgets/custom_view_peer.h"

#include <algorithm>
#include <utility>

#include "platform/qt/widgets/focus_ring.h"
#include "platform/qt/widgets/qt_canvas.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

namespace {

/// Around a text that makes its view grow.
constexpr int marginAroundText = 4;

}  // namespace

CustomViewPeer::CustomViewPeer(CustomView& view, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(view, window,
                 new CustomWidget({.paint = [this](CustomWidget& widget) { paint(widget); },
                                   .mouseDown = [this] { view_.mouseDown(); }},
                                  &parent)),
      view_(view) {}

CustomViewPeer::~CustomViewPeer() {
  if (capturesKeyboard_) window().captureKeyboard(false);
  if (hasWidget()) custom().detach();
}

void CustomViewPeer::update() {
  custom().setAccessibleState(QString::fromStdString(view_.accessibilityValue()),
                              view_.accessibilityPressed());
  const bool captures = view_.capturesKeyboard();
  if (std::exchange(capturesKeyboard_, captures) != captures) window().captureKeyboard(captures);
  custom().update();
}

void CustomViewPeer::paint(CustomWidget& widget) const {
  QtCanvas canvas(widget);
  view_.draw(canvas);
  if (!widget.hasFocus() || view_.capturesKeyboard()) return;
  drawFocusRing(canvas.painter(), widget, widget.palette().color(QPalette::Highlight), 0,
                view_.cornerRadius());
}

QSize CustomViewPeer::neededSize() const {
  const Size natural = view_.naturalSize();
  MeasuringCanvas canvas(widget(), natural);
  view_.draw(canvas);
  const Size text = canvas.textSize();
  return {std::max(pixels(natural.width), pixels(text.width) + 2 * marginAroundText),
          std::max(pixels(natural.height), pixels(text.height))};
}

Extent CustomViewPeer::contentHorizontal() const {
  return Extent::fixed(neededSize().width());
}

Extent CustomViewPeer::contentVertical(int /*width*/) const {
  return Extent::fixed(neededSize().height());
}

}  // namespace quillmar
