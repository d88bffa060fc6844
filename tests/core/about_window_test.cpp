#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "about/about_window_controller.h"
#include "about/updater_manager.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/button.h"
#include "tests/core/window_contents.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class AboutWindowTest : public testing::Test {
 protected:
  AboutWindowTest() {
    memory.bundle.information = {{"CFBundleShortVersionString", "1.2.3"},
                                 {"NSHumanReadableCopyright", "Copyright © Tovenworks"},
                                 {"QuillmarSiteURL", "https://quillmar.example/start"},
                                 {"QuillmarSupportAddress", "support@quillmar.example"},
                                 {"SUFeedURL", "https://quillmar.example/feed.xml"},
                                 {"SUPublicEDKey", "a key"}};
  }

  /// The window, made and shown.
  Window& window() {
    updaterManager.emplace(memory.bundle, memory.updaters);
    about.emplace(memory.windows, memory.images, memory.bundle, *updaterManager,
                  [this](const std::string& url) { opened.push_back(url); });
    EXPECT_TRUE(about->window().show({}));
    return about->window();
  }

  MemoryPlatform memory;
  std::vector<std::string> opened;
  std::optional<UpdaterManager> updaterManager;
  std::optional<AboutWindowController> about;
};

TEST_F(AboutWindowTest, ItShowsNameVersionLinksAndCopyright) {
  Window& shown = window();
  EXPECT_EQ(memory.windows.titleOnScreen(shown), "About Quillmar");
  EXPECT_EQ(shown.contentSize(), (Size{300, 312}));
  EXPECT_TRUE(memory.windows.placedInMiddle(shown));
  EXPECT_THAT(
      windowOutline(shown),
      ElementsAre("column centred spacing 10 insets 24 24 20 24",
                  "  image width 96 height 96 then 4: applicationIcon", "  label bold 18: Quillmar",
                  "  label 12 selectable then 16: Version 1.2.3",
                  "  button then 16: Check for Updates…", "  column centred spacing 2 then 14",
                  "    link 11: quillmar.example/start", "    link 11: support@quillmar.example",
                  "  label 10 secondary centred wrapping width 250: Copyright © Tovenworks"));
}

TEST_F(AboutWindowTest, ABundleWithoutAVersionShowsNothingBehindTheWord) {
  memory.bundle.information.erase("CFBundleShortVersionString");
  EXPECT_THAT(windowOutline(window()), Contains("  label 12 selectable then 16: Version "));
}

TEST_F(AboutWindowTest, ABundleWithoutACopyrightShowsNone) {
  memory.bundle.information.erase("NSHumanReadableCopyright");
  EXPECT_EQ(windowOutline(window()).back(), "  label 10 secondary centred wrapping width 250");
}

TEST_F(AboutWindowTest, LinksWithoutAnAddressAreHidden) {
  memory.bundle.information.erase("QuillmarSiteURL");
  memory.bundle.information.erase("QuillmarSupportAddress");
  for (const Button* const button : viewsOf<Button>(window())) {
    EXPECT_EQ(button->hidden(), button->style() == ButtonStyle::link);
  }
}

TEST_F(AboutWindowTest, TheLinksOpenTheSiteAndAMessageToTheSupport) {
  Window& shown = window();
  buttonTitled(shown, "quillmar.example/start")->press();
  buttonTitled(shown, "support@quillmar.example")->press();
  EXPECT_THAT(opened,
              ElementsAre("https://quillmar.example/start", "mailto:support@quillmar.example"));
  EXPECT_TRUE(shown.visible());
}

TEST_F(AboutWindowTest, CheckForUpdatesStartsACheck) {
  buttonTitled(window(), "Check for Updates…")->press();
  EXPECT_EQ(memory.updaters.checks, 1);
}

TEST_F(AboutWindowTest, WithoutAFeedOrAKeyUpdatesCannotBeCheckedFor) {
  for (const char* key : {"SUFeedURL", "SUPublicEDKey"}) {
    for (const bool empty : {true, false}) {
      const BundleInformation complete = memory.bundle.information;
      memory.bundle.information.erase(key);
      if (empty) memory.bundle.information[key] = "";
      Button* const button = buttonTitled(window(), "Check for Updates…");
      EXPECT_FALSE(memory.windows.widget(*button)->enabled) << key << empty;
      button->press();
      EXPECT_EQ(memory.updaters.checks, 0);
      memory.bundle.information = complete;
    }
  }
}

TEST_F(AboutWindowTest, WithoutTheIconTheWindowIsEmpty) {
  memory.images.images.erase("applicationIcon");
  EXPECT_THAT(windowOutline(window()), IsEmpty());
  EXPECT_EQ(about->updateButton(), nullptr);
}

TEST_F(AboutWindowTest, EscapeClosesIt) {
  EXPECT_TRUE(window().key(pressOf(keys::escape)));
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

}  // namespace
}  // namespace quillmar
