// The review of a pack on the screen.

#include <QSize>
#include <QWidget>
#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "config/settings_manager.h"
#include "import/import_sheet_controller.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/label.h"
#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"
#include "tests/views.h"

namespace quillmar {
namespace {

class ImportSheetOnScreenTest : public WidgetsFixture<QtUser> {
 protected:
  void present(const QuillmarConfig& pack, const std::string& source) {
    show();
    review.emplace(harness.windows(), settings, pack, source);
    review->buildUI();
    ASSERT_TRUE(review->present(*window, {}));
    harness.settle();
  }

  QWidget& sheet() { return widgetOf(review->window()); }
  template <class Kind>
  QWidget& nth(std::size_t index) {
    return widgetOf(*viewsOf<Kind>(review->window()).at(index));
  }

  MemoryPlatform memory;
  SettingsManager settings{{.environment = memory.environment,
                            .userDirectories = memory.userDirectories,
                            .files = memory.files,
                            .log = [](std::string_view) {}}};
  std::optional<ImportSheetController> review;
};

MenuItem evilItem(const std::string& id) {
  MenuItem item;
  item.id = id;
  item.title = "Line\nbreak " + std::string(10'000, ' ');
  item.command.value = std::string(10'000, ' ') + "rm \u202E" + std::string(100'000, 'x');
  item.shortcut = KeyboardShortcut{.keyCode = 40, .character = "k", .modifiers = 0x100000};
  return item;
}

TEST_F(ImportSheetOnScreenTest, APackCannotChangeTheSizeOfItsReview) {
  QuillmarConfig pack;
  pack.name = std::string(1'000'000, 'W');
  pack.description = std::string(1'000'000, 'W');
  MenuCategory folder;
  folder.id = "a|b";
  folder.items = {evilItem("1"), evilItem("1")};
  pack.categories = {folder};
  present(pack, std::string(253, 'w'));
  if (const char* const path = std::getenv("QUILLMAR_PICTURE")) sheet().grab().save(path);
  EXPECT_EQ(sheet().size(), QSize(520, 420));
  EXPECT_GE(nth<TextView>(0).height(), 60);
  EXPECT_LE(nth<Label>(0).width(), 480);
}

TEST_F(ImportSheetOnScreenTest, TheListingTakesTheSpaceThatTheTextsLeave) {
  QuillmarConfig pack;
  pack.name = "Tools";
  present(pack, "tools.json");
  if (const char* const path = std::getenv("QUILLMAR_PICTURE")) {
    sheet().grab().save(QString(path) + ".2.png");
  }
  EXPECT_EQ(sheet().size(), QSize(520, 420));
  EXPECT_EQ(nth<TextView>(0).width(), 480);
  EXPECT_GE(nth<TextView>(0).height(), 180);
}

}  // namespace
}  // namespace quillmar
