#include "import/import_sheet_controller.h"

#include <algorithm>
#include <utility>

#include "import/pack_details_controller.h"
#include "import/pack_warnings.h"
#include "platform/single_line_text.h"
#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_view.h"

namespace quillmar {

namespace {

constexpr Size contentSize{.width = 520, .height = 420};
constexpr double margin = 20;
constexpr double innerWidth = contentSize.width - 2 * margin;
constexpr double rowSpacing = 10;
constexpr double buttonSpacing = 8;
constexpr double titleFontSize = 14;
constexpr double textFontSize = 11;
constexpr double listingInset = 6;

// Limits in characters. A pack must not imitate the dialog's own text or push the listing out of
// the window. No host name and no file name is longer than the last one.
constexpr std::size_t maximumNameLength = 100;
constexpr std::size_t maximumDescriptionLength = 320;
constexpr std::size_t maximumDescriptionLengthWithWarnings = 160;
constexpr std::size_t maximumSourceLength = 255;

std::string counted(std::int64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

Label& addWrappingLabel(StackView& column, std::string text) {
  auto& label = column.add<Label>(std::move(text), Font::system(textFontSize));
  label.setWraps(true);
  label.setWidth(innerWidth);
  return label;
}

}  // namespace

ImportSheetController::ImportSheetController(WindowSystem& windows, const SettingsManager& settings,
                                             QuillmarConfig incoming, std::string source)
    : windows_(windows),
      settings_(settings),
      incoming_(std::move(incoming)),
      source_(std::move(source)),
      window_(windows) {
  window_.setTitle("Import");
  window_.setContentSize(contentSize);
  window_.setIgnoresEarlyClicks(true);
  window_.setDelegate(this);
}

ImportSheetController::~ImportSheetController() = default;

std::string ImportSheetController::describe(const QuillmarConfig& config) {
  std::string listing;
  for (const MenuCategory* const folder : categoriesInDisplayOrder(config)) {
    if (folder->isSeparator) {
      listing += "----\n";
      continue;
    }
    const auto count = std::ranges::count(folder->items, false, &MenuItem::isSeparator);
    listing += folder->name + "  (" + std::to_string(count) + " items)\n";
    for (const MenuItem& item : folder->items) {
      if (item.isSeparator) {
        listing += "    ----\n";
        continue;
      }
      listing.append("    ").append(item.title).append(": ");
      const std::size_t command = listing.size();
      listing += item.command.value;
      std::replace(listing.begin() + static_cast<std::ptrdiff_t>(command), listing.end(), '\n',
                   ' ');
      listing += '\n';
    }
    listing += '\n';
  }
  if (!listing.empty()) listing.pop_back();
  return listing;
}

void ImportSheetController::buildUI() {
  auto& column = window_.setContent<StackView>(Orientation::vertical);
  column.setAlignment(StackAlignment::leading);
  column.setSpacing(rowSpacing);
  column.setEdgeInsets({margin, margin, margin, margin});
  const std::string warnings = warningText(findWarnings(settings_.config, incoming_));
  // The listing needs the rest of the space.
  addTexts(column,
           warnings.empty() ? maximumDescriptionLength : maximumDescriptionLengthWithWarnings);
  addListing(column);
  addSummary(column, warnings);
  addButtons(column);
}

void ImportSheetController::addTexts(StackView& column, std::size_t descriptionLength) const {
  const std::string name =
      singleLineText(incoming_.name.value_or("Imported settings"), maximumNameLength);
  auto& title =
      column.add<Label>("Add “" + name + "” to Quillmar?", Font::boldSystem(titleFontSize));
  title.setMaximumWidth(innerWidth);

  std::string subtitle;
  if (incoming_.description) {
    subtitle = singleLineText(*incoming_.description, descriptionLength) + "\n";
  }
  subtitle += "From " + singleLineText(source_, maximumSourceLength);
  addWrappingLabel(column, std::move(subtitle)).setColor(TextColor::secondaryLabel);
}

/// The listing takes the space that the other views leave.
void ImportSheetController::addListing(StackView& column) {
  auto& listing = column.add<TextView>();
  listing.setAccessibilityLabel("Contents of the pack");
  listing.setWidth(innerWidth);
  listing.setFont({.size = textFontSize, .monospaced = true});
  listing.setInset(listingInset);
  listing.setEditable(false);
  listing.setShowsInvisibleCharacters(true);
  listing.setText(describe(incoming_));
  // The keyboard scrolls the listing. Return and Escape still press the buttons.
  window_.makeFirstResponder(&listing);

  auto& details = column.add<Button>("Show Details…");
  details.setOnPress([this] { showDetailsPressed(); });
}

void ImportSheetController::addSummary(StackView& column, const std::string& warnings) const {
  const MergePreview preview = settings_.config.mergePreview(incoming_);
  addWrappingLabel(column, "Merge adds " + counted(preview.categories, "folder") + " and " +
                               counted(preview.items, "item") +
                               ". Items you already have are left unchanged.");
  if (!warnings.empty()) addWrappingLabel(column, warnings);
}

void ImportSheetController::addButtons(StackView& column) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setWidth(innerWidth);
  row.setSpacing(buttonSpacing);
  row.add<Button>("Replace Everything…").setOnPress([this] { replacePressed(); });
  row.add<FlexibleSpace>();

  auto& cancel = row.add<Button>("Cancel");
  cancel.setKeyEquivalent(keys::escape);
  cancel.setOnPress([this] { cancelPressed(); });

  auto& merge = row.add<Button>("Merge");
  merge.setKeyEquivalent(keys::returnKey);
  merge.setOnPress([this] { mergePressed(); });
}

Result<void> ImportSheetController::present(Window& parent, Completion completion) {
  completion_ = std::move(completion);
  Result<void> shown = parent.beginSheet(window_, {});
  if (!shown) completion_ = {};
  return shown;
}

void ImportSheetController::discard() {
  completion_ = {};
  window_.close();
}

void ImportSheetController::mergePressed() {
  finish(ImportMode::merge);
}

void ImportSheetController::replacePressed() {
  finish(ImportMode::replace);
}

void ImportSheetController::cancelPressed() {
  finish(std::nullopt);
}

void ImportSheetController::showDetailsPressed() {
  details_ = std::make_unique<PackDetailsController>(windows_, settings_.config, incoming_);
  // A window system that has shown this sheet can show another.
  (void)window_.beginSheet(details_->window(), {});
}

void ImportSheetController::finish(std::optional<ImportMode> mode) {
  mode_ = mode;
  window_.close();
}

void ImportSheetController::windowWillClose(Window& /*window*/) {
  // Copies, because the completion may destroy the controller.
  const Completion completion = std::exchange(completion_, {});
  const std::optional<ImportMode> mode = mode_;
  if (completion) completion(mode);
}

}  // namespace quillmar
