#include "platform/qt/module/dark_palette.h"

#include <QColor>

namespace quillmar {

QPalette darkPalette() {
  const QColor window(0x2d, 0x2d, 0x2d);
  const QColor base(0x1e, 0x1e, 0x1e);
  const QColor button(0x3a, 0x3a, 0x3a);
  const QColor text(0xee, 0xee, 0xee);
  const QColor secondary(0xa6, 0xa6, 0xa6);
  const QColor disabled(0x80, 0x80, 0x80);
  const QColor accent(0x35, 0x84, 0xe4);
  const QColor link(0x78, 0xae, 0xed);

  QPalette palette(text, button, QColor(0x50, 0x50, 0x50), QColor(0x15, 0x15, 0x15),
                   QColor(0x28, 0x28, 0x28), text, Qt::white, base, window);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::PlaceholderText, secondary);
  palette.setColor(QPalette::ToolTipBase, button);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, link);
  palette.setColor(QPalette::LinkVisited, link);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
    palette.setColor(QPalette::Disabled, role, disabled);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, button);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, disabled);
  return palette;
}

}  // namespace quillmar
