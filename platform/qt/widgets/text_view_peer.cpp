#include "platform/qt/widgets/text_view_peer.h"

#include <QTextDocument>
#include <string>

#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

constexpr int minimumLines = 2;
constexpr int preferredLines = 4;
/// In characters.
constexpr int shortestLine = 20;
constexpr int preferredLine = 40;

}  // namespace

TextViewPeer::TextViewPeer(TextView& textView, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(textView, window, new TextViewWidget(&parent)), textView_(textView) {
  edit().setTabChangesFocus(true);
  edit().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QObject::connect(&edit(), &QPlainTextEdit::textChanged, receiver(), [this] {
    // Also sent when only the looks have changed.
    const std::string text = edit().shownText();
    if (text != textView_.text()) textView_.type(text);
  });
}

void TextViewPeer::update() {
  edit().setFont(desktopFont(textView_.font(), edit()));
  edit().setReadOnly(!textView_.editable());
  if (textView_.inset()) edit().document()->setDocumentMargin(*textView_.inset());
  if (!textView_.editable()) {
    edit().setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  }
  if (textView_.showsInvisibleCharacters()) {
    edit().showVisibleText(textView_.text());
  } else {
    edit().showText(textView_.text());
  }
}

int TextViewPeer::margin() const {
  return edit().frameWidth() + static_cast<int>(edit().document()->documentMargin());
}

int TextViewPeer::firstLineMiddle(int /*width*/) const {
  return margin() + edit().fontMetrics().height() / 2;
}

Extent TextViewPeer::contentHorizontal() const {
  const int character = edit().fontMetrics().averageCharWidth();
  const int least = shortestLine * character + 2 * margin();
  return {least, least, preferredLine * character + 2 * margin(), Extent::unlimited};
}

Extent TextViewPeer::contentVertical(int /*width*/) const {
  const int line = edit().fontMetrics().lineSpacing();
  const int least = minimumLines * line + 2 * margin();
  return {least, least, preferredLines * line + 2 * margin(), Extent::unlimited};
}

}  // namespace quillmar
