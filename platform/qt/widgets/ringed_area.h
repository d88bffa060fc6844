// A scrolling widget with the frame of a text field, and a ring around it while it has the focus.

#pragma once

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include "platform/qt/widgets/focus_ring.h"

namespace quillmar {

/// `Area` is a QAbstractScrollArea.
template <class Area>
class RingedArea : public Area {
 public:
  explicit RingedArea(QWidget* parent) : Area(parent) {
    // Keeps the place free; the frame itself is drawn below.
    Area::setFrameStyle(QFrame::Box | QFrame::Plain);
    Area::setLineWidth(focusRingWidth);
  }

 protected:
  bool event(QEvent* event) override {
    switch (event->type()) {
      case QEvent::Paint:
        paintFrame();
        return true;
      case QEvent::FocusIn:
      case QEvent::FocusOut:
        Area::update();
        break;
      default:
        break;
    }
    return Area::event(event);
  }

 private:
  void paintFrame() {
    QPainter painter(this);
    QStyleOptionFrame option;
    option.initFrom(this);
    option.lineWidth = Area::style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
    option.state |= QStyle::State_Sunken;
    // The ring takes the place of the style's own mark.
    option.state.setFlag(QStyle::State_HasFocus, false);
    Area::style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    if (Area::hasFocus()) {
      drawFocusRing(painter, Area::rect(), Area::palette().color(QPalette::Highlight));
    }
  }
};

}  // namespace quillmar
