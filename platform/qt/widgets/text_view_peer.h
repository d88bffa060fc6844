#pragma once

#include <QPlainTextEdit>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/text_view.h"

namespace quillmar {

class TextViewPeer final : public WidgetPeer {
 public:
  TextViewPeer(TextView& textView, QtWindowPeer& window, QWidget& parent);

  int firstLineMiddle(int width) const override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool scrolls() const override { return true; }

 private:
  QPlainTextEdit& edit() const { return static_cast<QPlainTextEdit&>(widget()); }
  std::string shownText() const;
  /// Between the edge and the text.
  int margin() const;

  TextView& textView_;
};

}  // namespace quillmar
