// Decodes, reviews and merges the input as a pack. Any input may be refused; an accepted one keeps
// the promises that the checks below state.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "config/document_decoder.h"
#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "import/import_sheet_controller.h"
#include "import/pack_details.h"
#include "import/pack_warnings.h"
#include "platform/visible_text.h"

namespace quillmar {
namespace {

void check(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "Broken: %s\n", promise);
  std::abort();
}

/// Decodes with predictable ids for folders and items without one.
Result<QuillmarConfig> decode(const std::string& json) {
  int count = 0;
  return decodeDocument(json, [&count] { return "new-" + std::to_string(++count); });
}

/// A document with ids that the corpus uses.
QuillmarConfig current() {
  QuillmarConfig config;
  MenuCategory& folder = config.categories.emplace_back();
  folder.id = "A";
  folder.items.emplace_back().id = "1";
  return config;
}

void review(const std::string& json) {
  const Result<QuillmarConfig> decoded = decode(json);
  if (!decoded) {
    check(!decoded.error().description.empty(), "a refused pack has a reason");
    return;
  }
  const QuillmarConfig& pack = decoded.value();
  const Result<QuillmarConfig> again = decode(SettingsManager::encode(pack));
  check(again.ok() && again.value() == pack, "a document is read as it was written");

  const QuillmarConfig before = current();
  for (const std::string& shown :
       {ImportSheetController::describe(pack), packDetails(before, pack)}) {
    const text::VisibleText visible(shown);
    check(visible.original(0, visible.text().size()) == shown, "everything is copied as it was");
    check(!text::hasInvisibleCharacters(visible.text()), "no character stays invisible");
  }

  (void)warningText(findWarnings(before, pack));
  const QuillmarConfig merged = before.merging(pack);
  check(merged.categories.front().items.front() == before.categories.front().items.front(),
        "a merge leaves the user's items unchanged");
  check(merged.categories.size() >= before.categories.size(), "a merge removes no folder");
  check(merged.mergePreview(pack) == MergePreview{}, "a second merge adds nothing");
  check(merged.merging(pack) == merged, "a second merge changes nothing");
}

}  // namespace
}  // namespace quillmar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillmar::review(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
