// Static text. It is plain text, without markup or mnemonics.

#pragma once

#include <string>
#include <utility>

#include "platform/font.h"
#include "platform/widgets/view.h"

namespace quillmar {

/// Semantic colours; the desktop's palette defines the actual ones.
enum class TextColor { label, secondaryLabel, tertiaryLabel };

enum class TextAlignment { leading, center };

class Label final : public View {
 public:
  explicit Label(std::string text, Font font = {}) : text_(std::move(text)), font_(font) {}

  void accept(ViewVisitor& visitor) override;

  const std::string& text() const { return text_; }
  void setText(std::string text) { set(text_, std::move(text)); }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  TextColor color() const { return color_; }
  void setColor(TextColor color) { set(color_, color); }

  TextAlignment alignment() const { return alignment_; }
  void setAlignment(TextAlignment alignment) { set(alignment_, alignment); }

  /// A wrapping label uses its full width and as many lines as needed. It breaks words that are
  /// longer than a line.
  bool wraps() const { return wraps_; }
  void setWraps(bool wraps) { set(wraps_, wraps); }

  /// The user can select the text with the pointer and copy it.
  bool selectable() const { return selectable_; }
  void setSelectable(bool selectable) { set(selectable_, selectable); }

 private:
  std::string text_;
  Font font_;
  TextColor color_ = TextColor::label;
  TextAlignment alignment_ = TextAlignment::leading;
  bool wraps_ = false;
  bool selectable_ = false;
};

}  // namespace quillmar
