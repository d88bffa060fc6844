#include "platform/qt/widgets/text_view_peer.h"

#include <QSignalBlocker>
#include <QTextDocument>
#include <algorithm>

#include "platform/qt/widgets/fonts.h"
#include "platform/qt/widgets/ringed_area.h"

namespace quillmar {

namespace {

constexpr int fewestLines = 2;
constexpr int preferredLines = 4;
/// In characters.
constexpr int shortestLine = 20;
constexpr int preferredLine = 40;

}  // namespace

TextViewPeer::TextViewPeer(TextView& textView, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(textView, window, new RingedArea<QPlainTextEdit>(&parent)), textView_(textView) {
  edit().setTabChangesFocus(true);
  edit().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit().setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QObject::connect(&edit(), &QPlainTextEdit::textChanged, receiver(), [this] {
    // Also sent when only the looks have changed.
    const std::string text = shownText();
    if (text != textView_.text()) textView_.type(text);
  });
}

std::string TextViewPeer::shownText() const {
  // The document's plain text has ordinary spaces for non-breaking ones.
  return edit().document()->toRawText().replace(QChar::ParagraphSeparator, u'\n').toStdString();
}

void TextViewPeer::update() {
  edit().setFont(desktopFont(textView_.font(), edit()));
  edit().setReadOnly(!textView_.editable());
  if (textView_.inset()) edit().document()->setDocumentMargin(*textView_.inset());
  // The same text set again would take the cursor and the undo history away.
  if (shownText() == textView_.text()) return;
  const QSignalBlocker setByProgram(edit());
  const int position = edit().textCursor().position();
  edit().setPlainText(QString::fromStdString(textView_.text()));
  if (!edit().hasFocus()) return;
  QTextCursor cursor = edit().textCursor();
  cursor.setPosition(std::min(position, edit().document()->characterCount() - 1));
  edit().setTextCursor(cursor);
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
  const int least = fewestLines * line + 2 * margin();
  return {least, least, preferredLines * line + 2 * margin(), Extent::unlimited};
}

}  // namespace quillmar
