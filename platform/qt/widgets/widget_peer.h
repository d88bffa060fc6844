// A peer shows one view: it owns a widget of the toolkit and reports its size limits. It reads its
// view, and calls the view's functions for user events from the widget's signals. Such a function
// may destroy the peer, so no member may be used after the call. Main thread.

#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include "platform/qt/widgets/extent.h"
#include "platform/widgets/view.h"
#include "platform/widgets/view_peer.h"

namespace quillmar {

class QtWindowPeer;

class WidgetPeer : public ViewPeer {
 public:
  /// The view and the window's peer must outlive it. Takes ownership of the widget, which already
  /// has a parent.
  WidgetPeer(View& view, QtWindowPeer& window, QWidget* widget);
  ~WidgetPeer() override;
  WidgetPeer(const WidgetPeer&) = delete;
  WidgetPeer& operator=(const WidgetPeer&) = delete;

  void viewChanged() final;

  View& view() const { return view_; }
  QWidget& widget() const { return *widget_; }

  // Size limits, including the view's stated size.

  Extent horizontal() const;
  /// When it is `width` wide.
  Extent vertical(int width) const;
  /// The view's limits; Extent::unlimited where it has none.
  int maximumWidth() const;
  int maximumHeight() const;
  /// From the top to the middle of the first line of text, if the widget is `width` wide. Forms
  /// align labels with it.
  virtual int firstLineMiddle(int width) const { return vertical(width).preferred / 2; }
  /// In its parent's coordinates.
  virtual void place(const QRect& frame) { widget_->setGeometry(frame); }

  /// The part of the widget that can have the keyboard focus.
  virtual QWidget& keyWidget() const { return *widget_; }
  /// Gives the widget the keyboard focus.
  virtual void takeFocus();

 protected:
  /// Shows the state of the view, except for the state that all views have.
  virtual void update() = 0;
  /// What the content needs.
  virtual Extent contentHorizontal() const = 0;
  virtual Extent contentVertical(int width) const = 0;
  /// True for a view that can be wider than its stated width.
  virtual bool growsBeyondStatedWidth() const { return false; }
  /// True for a view that scrolls what does not fit.
  virtual bool scrolls() const { return false; }

  QtWindowPeer& window() const { return window_; }
  /// False if the widget was destroyed with its parent.
  bool hasWidget() const { return !widget_.isNull(); }
  /// Reports the focus of a part of the widget as that of the view.
  void watchFocus(QWidget& part) { part.installEventFilter(&focusWatcher_); }
  /// Context object for signal connections; they are disconnected when the peer is destroyed.
  QObject* receiver() { return &focusWatcher_; }

 private:
  /// Tells the window when the user gives the widget the focus, and when the window loses it.
  class FocusWatcher final : public QObject {
   public:
    explicit FocusWatcher(WidgetPeer& peer) : peer_(peer) {}
    bool eventFilter(QObject* watched, QEvent* event) override;

   private:
    WidgetPeer& peer_;
  };

  View& view_;
  QtWindowPeer& window_;
  QPointer<QWidget> widget_;
  FocusWatcher focusWatcher_{*this};
};

/// The peer of a view that is on the screen.
inline WidgetPeer& widgetPeer(const View& view) {
  return static_cast<WidgetPeer&>(*view.peer());
}

/// A length of the model, rounded up to whole pixels.
int pixels(double length);

}  // namespace quillmar
