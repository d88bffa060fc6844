#include "import/pack_details_controller.h"

#include "import/pack_details.h"
#include "platform/widgets/button.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_view.h"

namespace quillmar {

namespace {

constexpr Size contentSize{.width = 640, .height = 480};
constexpr double margin = 20;
constexpr double rowSpacing = 10;
constexpr double fontSize = 11;
constexpr double textInset = 6;

}  // namespace

PackDetailsController::PackDetailsController(WindowSystem& windows, const QuillmarConfig& current,
                                             const QuillmarConfig& pack)
    : window_(windows) {
  window_.setTitle("Details of the Pack");
  window_.setContentSize(contentSize);
  window_.setClosesOnEscape(true);
  auto& column = window_.setContent<StackView>(Orientation::vertical);
  column.setAlignment(StackAlignment::fill);
  column.setSpacing(rowSpacing);
  column.setEdgeInsets({margin, margin, margin, margin});

  auto& text = column.add<TextView>();
  text.setAccessibilityLabel("Details of the pack");
  text.setFont({.size = fontSize, .monospaced = true});
  text.setInset(textInset);
  text.setEditable(false);
  text.setShowsInvisibleCharacters(true);
  text.setText(packDetails(current, pack));
  window_.makeFirstResponder(&text);

  auto& row = column.add<StackView>(Orientation::horizontal);
  row.add<FlexibleSpace>();
  auto& close = row.add<Button>("Close");
  close.setKeyEquivalent(keys::returnKey);
  close.setOnPress([this] { window_.close(); });
}

}  // namespace quillmar
