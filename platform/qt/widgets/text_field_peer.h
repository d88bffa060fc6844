#pragma once

#include <QLineEdit>
#include <QPointer>

#include "platform/qt/widgets/completion_list.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/text_field.h"

namespace quillmar {

class TextFieldPeer final : public WidgetPeer {
 public:
  TextFieldPeer(TextField& field, QtWindowPeer& window, QWidget& parent);
  ~TextFieldPeer() override;

  void takeFocus() override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  QLineEdit& line() const { return static_cast<QLineEdit&>(widget()); }

  void updateText();
  void updateCompletions();

  TextField& field_;
  /// Null until there are completions.
  QPointer<CompletionList> list_;
};

}  // namespace quillmar
