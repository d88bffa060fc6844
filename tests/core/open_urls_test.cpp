// Files and links that the user opens with the program.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/app_delegate.h"
#include "config/document_encoder.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/image_view.h"
#include "tests/collaborators.h"
#include "tests/core/import_fixture.h"
#include "tests/core/menu_outline.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;

class OpenURLsTest : public testing::Test {
 protected:
  static constexpr const char* settingsPath = "/home/user/.config/Quillmar/settings.json";

  OpenURLsTest() {
    memory.files.addFile("/packs/a.quillmarpack", encodeDocument(packWithHotKey()));
    memory.files.addFile("/packs/b c.json", encodeDocument(packNamed("B")));
    memory.files.addFile("/packs/odd.json", "odd");
    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching();
    memory.queues.runAll();
  }

  static QuillmarConfig packWithHotKey() {
    QuillmarConfig pack = packNamed("A");
    pack.categories[0].showAtTopLevel = true;
    pack.categories[0].items[0].shortcut =
        KeyboardShortcut{.keyCode = 40, .character = "k", .modifiers = modifiers::command};
    return pack;
  }

  SettingsManager::Collaborators withSettingsFile() {
    memory.files.addFile(settingsPath, "{}");
    return {memory.environment, memory.userDirectories, memory.files, center, logLine()};
  }
  LogLine logLine() {
    return [this](std::string_view line) { log.emplace_back(line); };
  }

  /// Null if the settings window was not opened.
  Window* settingsWindow() {
    for (Window* const window : memory.windows.windows()) {
      if (window->title() == "Quillmar Settings") return window;
    }
    return nullptr;
  }
  Window* sheet() { return settingsWindow() == nullptr ? nullptr : settingsWindow()->sheet(); }
  std::string titleOfSheet() { return sheet() == nullptr ? "" : labelTexts(*sheet()).at(0); }
  void press(std::string_view button) {
    ASSERT_THAT(sheet(), NotNull());
    buttonTitled(*sheet(), button)->press();
  }

  MemoryPlatform memory;
  NotificationCenter center;
  std::vector<std::string> log;
  SettingsManager settings{withSettingsFile()};
  PanelPrompts prompts{promptCollaborators(memory.platform)};
  CommandRunner runner{runnerCollaborators(memory.platform, settings, prompts, logLine())};
  UpdaterManager updaterManager{memory.bundle, memory.updaters};
  HotKeyManager hotKeys{hotKeyCollaborators(memory.platform, settings, logLine())};
  ImportCoordinator importCoordinator{importCollaborators(memory.platform, settings, logLine())};
  AppDelegate delegate{delegateCollaborators(
      memory.platform, settings, runner, hotKeys, importCoordinator,
      [this]() -> UpdaterManager& { return updaterManager; }, center, logLine())};
};

TEST_F(OpenURLsTest, AFileOpensTheSettingsWindowAndIsReviewed) {
  memory.application.setActivation({70, "token"});
  delegate.openURLs({"/packs/a.quillmarpack"});
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_THAT(labelTexts(*sheet()),
              ElementsAre("Add “A” to Quillmar?", "From a.quillmarpack", HasSubstr("Merge adds"),
                          "1 item with a global hot key runs without confirmation."));
  EXPECT_EQ(memory.application.takeActivation(), Activation{});
}

TEST_F(OpenURLsTest, AFileUrlIsTheSameAsItsPath) {
  delegate.openURLs({"file:///packs/b%20c.json"});
  EXPECT_THAT(labelTexts(*sheet()),
              ElementsAre("Add “B” to Quillmar?", "From b c.json", HasSubstr("Merge adds")));
}

TEST_F(OpenURLsTest, OfTwoFilesTheSecondIsReviewed) {
  delegate.openURLs({"/packs/a.quillmarpack", "/packs/b c.json"});
  EXPECT_EQ(titleOfSheet(), "Add “B” to Quillmar?");
  press("Cancel");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(settings.config.categories, IsEmpty());
}

TEST_F(OpenURLsTest, AFileThatIsNoDocumentIsReportedAndTheOthersAreOpened) {
  delegate.openURLs({"/packs/odd.json", "quillmar://import?url=https://packs.example/p",
                     "/packs/a.quillmarpack"});
  EXPECT_EQ(titleOfSheet(), "Could not read “odd.json”.");
  EXPECT_EQ(labelTexts(*sheet()).at(1), "“/packs/odd.json” is not a valid document. " +
                                            decodeDocument("odd").error().description);
  EXPECT_EQ(viewsOf<ImageView>(*sheet()).at(0)->accessibilityLabel(), "Warning");
  EXPECT_THAT(memory.downloader.requests, SizeIs(1));
  press("OK");
  EXPECT_EQ(titleOfSheet(), "Add “A” to Quillmar?");
}

TEST_F(OpenURLsTest, AFileThatDoesNotExistIsReported) {
  delegate.openURLs({"file:///packs/missing%0A.json"});
  EXPECT_EQ(titleOfSheet(), "Could not read “missing .json”.");
}

TEST_F(OpenURLsTest, AFileUrlThatNamesNoLocalFileIsReported) {
  memory.files.addFile("/packs/c", encodeDocument(packNamed("C")));
  const std::pair<const char*, const char*> urls[] = {
      {"file://elsewhere/packs/b%20c.json", "b c.json"},
      {"FILE://elsewhere/packs/c", "c"},
      {"file:///packs/c%00.json", "c\uFFFD.json"},
      {"file:packs/c", "c"},
      {"file://[/packs/c", "c"}};
  for (const auto& [url, name] : urls) {
    delegate.openURLs({url});
    ASSERT_THAT(sheet(), NotNull()) << url;
    EXPECT_EQ(titleOfSheet(), "Could not read “" + std::string(name) + "”.") << url;
    EXPECT_EQ(labelTexts(*sheet()).at(1),
              "“" + std::string(url) + "” is not the address of a file on this computer.");
    press("OK");
  }
}

TEST_F(OpenURLsTest, AMergeChangesTheMenuTheHotKeysAndTheFile) {
  delegate.openURLs({"/packs/a.quillmarpack"});
  press("Merge");
  EXPECT_THAT(menuOutline(memory.statusItem.menu()), Contains(HasSubstr("Item")));
  EXPECT_THAT(memory.hotKeys.registered(), SizeIs(1));
  EXPECT_EQ(decodeDocument(*memory.files.contents(settingsPath)).value(), settings.config);
  EXPECT_THAT(settings.config.categories, SizeIs(1));
}

TEST_F(OpenURLsTest, OtherUrlsOpenNothing) {
  delegate.openURLs({"https://packs.example/p.json", "mailto:a@b", "odd.json", ""});
  EXPECT_THAT(settingsWindow(), IsNull());
  EXPECT_THAT(memory.downloader.requests, IsEmpty());
}

TEST_F(OpenURLsTest, ALinkOpensTheSettingsWindowWhenItsPackHasArrived) {
  memory.application.setActivation({70, "token"});
  delegate.openURLs({"quillmar://import?url=https%3A%2F%2Fpacks.example%2Fp"});
  EXPECT_THAT(settingsWindow(), IsNull());
  memory.downloader.respond(0, 200, encodeDocument(packNamed("B")));
  EXPECT_EQ(titleOfSheet(), "Add “B” to Quillmar?");
}

TEST_F(OpenURLsTest, WithoutADisplayTheUserIsTold) {
  memory.windows.failure = Error{"There is no display."};
  delegate.openURLs({"/packs/a.quillmarpack"});
  EXPECT_THAT(settingsWindow(), IsNull());
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].notification.body, "There is no display.");
  memory.windows.failure.reset();
  delegate.openSettings();
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(OpenURLsTest, AfterTheDelegateIsDestroyedImportsAreDropped) {
  {
    AppDelegate other(delegateCollaborators(
        memory.platform, settings, runner, hotKeys, importCoordinator,
        [this]() -> UpdaterManager& { return updaterManager; }, center, logLine()));
    other.applicationWillFinishLaunching();
  }
  importCoordinator.open("/packs/a.quillmarpack");
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

}  // namespace
}  // namespace quillmar
