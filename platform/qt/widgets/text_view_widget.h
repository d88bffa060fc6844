// Several lines of plain text. Invisible characters can be shown as marks; copied, selected and
// dragged text contains the characters themselves. A text with marks also has a bar beside each
// line that continues a wrapped one, so that no text can wrap to look like another line.

#pragma once

#include <QPlainTextEdit>
#include <optional>
#include <string>

#include "platform/qt/widgets/ringed_area.h"
#include "platform/visible_text.h"

namespace quillmar {

class TextViewWidget final : public RingedArea<QPlainTextEdit> {
 public:
  using RingedArea::RingedArea;

  /// Shows the text as it is. Keeps the cursor and the undo history if it is shown already.
  void showText(const std::string& text);
  /// Shows the text with visible characters.
  void showVisibleText(const std::string& text);

  /// What the document contains.
  std::string shownText() const;

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Marked {
    std::string original;
    text::VisibleText visible;
  };

  void paintContinuationBars();
  void setDocumentText(const std::string& text);

  /// Absent if the text is shown as it is.
  std::optional<Marked> marked_;
};

}  // namespace quillmar
