#include "platform/qt/module/default_palettes.h"

#include <QColor>

namespace quillmar {

namespace {

struct Colors {
  QColor window;
  QColor base;
  QColor button;
  QColor text;
  /// Lighter and darker than a button, and between, for its edges.
  QColor lighter;
  QColor darker;
  QColor middle;
  QColor secondaryText;
  QColor disabledText;
  QColor accent;
  QColor link;
};

QPalette paletteOf(const Colors& colors) {
  QPalette palette(colors.text, colors.button, colors.lighter, colors.darker, colors.middle,
                   colors.text, Qt::white, colors.base, colors.window);
  palette.setColor(QPalette::AlternateBase, colors.window);
  palette.setColor(QPalette::PlaceholderText, colors.secondaryText);
  palette.setColor(QPalette::ToolTipBase, colors.button);
  palette.setColor(QPalette::ToolTipText, colors.text);
  palette.setColor(QPalette::Highlight, colors.accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, colors.link);
  palette.setColor(QPalette::LinkVisited, colors.link);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
    palette.setColor(QPalette::Disabled, role, colors.disabledText);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.button);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.disabledText);
  return palette;
}

}  // namespace

QPalette lightPalette() {
  return paletteOf({.window = QColor(0xfa, 0xfa, 0xfa),
                    .base = Qt::white,
                    .button = QColor(0xf0, 0xf0, 0xf0),
                    .text = QColor(0x2e, 0x34, 0x36),
                    .lighter = Qt::white,
                    .darker = QColor(0xa8, 0xa8, 0xa8),
                    .middle = QColor(0xcd, 0xcd, 0xcd),
                    .secondaryText = QColor(0x6b, 0x70, 0x72),
                    .disabledText = QColor(0x92, 0x95, 0x95),
                    .accent = QColor(0x1c, 0x71, 0xd8),
                    .link = QColor(0x1a, 0x5f, 0xb4)});
}

QPalette darkPalette() {
  return paletteOf({.window = QColor(0x2d, 0x2d, 0x2d),
                    .base = QColor(0x1e, 0x1e, 0x1e),
                    .button = QColor(0x3a, 0x3a, 0x3a),
                    .text = QColor(0xee, 0xee, 0xee),
                    .lighter = QColor(0x50, 0x50, 0x50),
                    .darker = QColor(0x15, 0x15, 0x15),
                    .middle = QColor(0x28, 0x28, 0x28),
                    .secondaryText = QColor(0xa6, 0xa6, 0xa6),
                    .disabledText = QColor(0x80, 0x80, 0x80),
                    .accent = QColor(0x35, 0x84, 0xe4),
                    .link = QColor(0x78, 0xae, 0xed)});
}

}  // namespace quillmar
