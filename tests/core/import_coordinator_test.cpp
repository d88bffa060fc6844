#include "import/import_coordinator.h"

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings_ui/folder_editor_controller.h"
#include "tests/core/import_fixture.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNull;
using testing::Not;
using testing::NotNull;
using testing::SizeIs;

class ImportCoordinatorTest : public ImportFixture {
 protected:
  ImportCoordinatorTest() { open({folderWith("F", 0, {itemWith("I", "Mine")})}); }

  void review(const std::string& name) { importCoordinator->review(packNamed(name), "source"); }

  std::vector<std::string> folderNames() const {
    std::vector<std::string> names;
    for (const MenuCategory& folder : settings->config.categories) names.push_back(folder.name);
    return names;
  }

  const std::string pack = encodeDocument(packNamed("Tools"));
};

// Links.

TEST_F(ImportCoordinatorTest, ALinkDownloadsThePackThatItPointsAt) {
  importCoordinator->handle(
      linkTo("https%3A%2F%2Fpacks.example%2Fa%2520b%2Bc.json%3Fx%3D1%26y%3D2"));
  ASSERT_THAT(memory.downloader.requests, SizeIs(1));
  EXPECT_EQ(memory.downloader.requests[0].url, "https://packs.example/a%20b+c.json?x=1&y=2");
  EXPECT_EQ(memory.downloader.requests[0].maximumBodySize, 2'097'152U);
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, EquivalentLinksDownloadTheSamePack) {
  for (const char* const link : {
           "QUILLMAR://IMPORT?url=https%3A%2F%2Fpacks.example%2Fp.json",
           "quillmar://import/?url=https%3A%2F%2Fpacks.example%2Fp.json",
           "quillmar://import/any/path?url=https://packs.example/p.json#part",
           "quillmar://import?a&b=c&url=https://packs.example/p.json&url=http://other.example",
           "quillmar://import?url=HTTPS://packs.example/p.json",
       }) {
    memory.downloader.requests.clear();
    importCoordinator->handle(link);
    ASSERT_THAT(memory.downloader.requests, SizeIs(1)) << link;
    EXPECT_THAT(memory.downloader.requests[0].url, HasSubstr("packs.example/p.json")) << link;
  }
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, LinksWithBytesThatNoUrlMayContainWork) {
  importCoordinator->handle("quillmar://import?url=https://packs.example/é {1}|2.json");
  ASSERT_THAT(memory.downloader.requests, SizeIs(1));
  EXPECT_EQ(memory.downloader.requests[0].url, "https://packs.example/%C3%A9%20%7B1%7D%7C2.json");
}

TEST_F(ImportCoordinatorTest, LinksOfOtherSchemesAreIgnored) {
  for (const char* const link :
       {"https://packs.example/p.json", "import?url=https://packs.example", "",
        "quillmars://import", "mailto:quillmar@import", ":", "//import?url=https://a.example"}) {
    importCoordinator->handle(link);
    EXPECT_THAT(sheet(), IsNull()) << link;
  }
  EXPECT_THAT(memory.downloader.requests, IsEmpty());
}

TEST_F(ImportCoordinatorTest, ALinkWithAnotherHostIsUnsupported) {
  for (const std::string link :
       {"quillmar://export?url=https://packs.example/p.json",
        "quillmar:import?url=https://a.example", "quillmar:///import?url=https://a.example",
        "quillmar:", "quillmar://[import?url=x"}) {
    importCoordinator->handle(link);
    expectAlert("Unsupported Quillmar link.", link);
    pressInSheet("OK");
  }
  EXPECT_THAT(memory.downloader.requests, IsEmpty());
}

TEST_F(ImportCoordinatorTest, ALinkWithoutAnHttpsUrlIsRefused) {
  for (const std::string link :
       {"quillmar://import", "quillmar://import?", "quillmar://import?url",
        "quillmar://import?url=", "quillmar://import?URL=https://a.example/p",
        "quillmar://import?url=http://a.example/p", "quillmar://import?url=a.example/p",
        "quillmar://import?url=https", "quillmar://import?url=file:///etc/passwd",
        "quillmar://import?url=https://a:b:c/",
        "quillmar://import?x=https://a.example&url&url=https://b.example"}) {
    importCoordinator->handle(link);
    expectAlert("Quillmar links must point at an https URL.", link);
    pressInSheet("OK");
  }
  EXPECT_THAT(memory.downloader.requests, IsEmpty());
}

TEST_F(ImportCoordinatorTest, TheHostIsCheckedBeforeTheRestOfTheLink) {
  const std::string tooLong = "?x=" + std::string(200'000, 'x') + "&url=https://a.example/p";
  for (const std::string& rest :
       {std::string("?url=https://a.example/p%00"), std::string("?url=https://a.example%00.org/"),
        "/" + std::string(200'000, 'x'), tooLong}) {
    importCoordinator->handle("quillmar://import" + rest);
    EXPECT_EQ(titleOfSheet(), "Quillmar links must point at an https URL.") << rest.substr(0, 60);
    pressInSheet("OK");
  }
  importCoordinator->handle("quillmar://export" + tooLong);
  EXPECT_EQ(titleOfSheet(), "Unsupported Quillmar link.");
  EXPECT_THAT(memory.downloader.requests, IsEmpty());
}

TEST_F(ImportCoordinatorTest, AZeroByteInAnotherQueryItemDoesNotMatter) {
  importCoordinator->handle("quillmar://import?x=%00&url=https://a.example/p%2500");
  ASSERT_THAT(memory.downloader.requests, SizeIs(1));
  EXPECT_EQ(memory.downloader.requests[0].url, "https://a.example/p%00");
}

TEST_F(ImportCoordinatorTest, AnAlertShowsTheLinkAsItWasReceived) {
  importCoordinator->handle("quillmar://import?url=http://a.example/é {\u202E}");
  expectAlert("Quillmar links must point at an https URL.",
              "quillmar://import?url=http://a.example/é {‹U+202E›}");
}

TEST_F(ImportCoordinatorTest, ALongLinkIsShortenedInTheAlert) {
  importCoordinator->handle("quillmar://import?url=http://" + std::string(100'000, 'a'));
  const std::string detail = labelTexts(*sheet()).at(1);
  EXPECT_THAT(detail, SizeIs(500 - 1 + std::string_view("…").size()));
  EXPECT_TRUE(detail.ends_with("a…"));
}

// Downloads.

TEST_F(ImportCoordinatorTest, ADownloadedPackIsReviewedWithItsHostAsSource) {
  openLink(200, pack);
  ASSERT_THAT(importCoordinator->activeSheet(), NotNull());
  EXPECT_THAT(labelTexts(*sheet()), ElementsAre("Add “Tools” to Quillmar?", "From packs.example",
                                                HasSubstr("1 folder and 1 item.")));
  EXPECT_THAT(folderNames(), ElementsAre("Folder F"));
}

TEST_F(ImportCoordinatorTest, EverySuccessfulStatusIsAccepted) {
  for (const int status : {200, 206, 299}) {
    openLink(status, pack);
    EXPECT_EQ(titleOfSheet(), "Add “Tools” to Quillmar?") << status;
  }
}

TEST_F(ImportCoordinatorTest, AFailedTransferShowsItsReason) {
  importCoordinator->handle(linkTo("https://packs.example/p.json"));
  memory.downloader.fail(0, "The server does not answer.");
  expectAlert("Could not download the pack.", "The server does not answer.");
}

TEST_F(ImportCoordinatorTest, AnUnsuccessfulStatusIsShown) {
  for (const int status : {0, 199, 300, 304, 404, 500}) {
    openLink(status, pack);
    expectAlert("Could not download the pack.",
                "The server responded with HTTP " + std::to_string(status) + ".");
    pressInSheet("OK");
  }
}

TEST_F(ImportCoordinatorTest, AReplyWithoutABodyShowsTheStatus) {
  openLink(204, "");
  expectAlert("Could not download the pack.", "The server responded with HTTP 204.");
}

TEST_F(ImportCoordinatorTest, ABodyOfTwoMebibytesIsDecodedAndOneByteMoreIsRefused) {
  const std::string largest = pack + std::string(2'097'152 - pack.size(), ' ');
  openLink(200, largest);
  EXPECT_EQ(titleOfSheet(), "Add “Tools” to Quillmar?");
  pressInSheet("Cancel");
  openLink(200, largest + ' ');
  expectAlert("The pack is too large to import.", "https://packs.example/p.json");
}

TEST_F(ImportCoordinatorTest, ABodyThatIsNoDocumentShowsTheReason) {
  openLink(200, R"({"categories" : 7})");
  ASSERT_THAT(sheet(), NotNull());
  const std::vector<std::string> texts = labelTexts(*sheet());
  EXPECT_EQ(texts.at(0), "That link does not point at a Quillmar pack.");
  EXPECT_EQ(texts.at(1), decodeDocument(R"({"categories" : 7})").error().description);
}

TEST_F(ImportCoordinatorTest, NoFailureChangesTheDocument) {
  openLink(404, pack);
  openLink(200, "<html>");
  importCoordinator->handle("quillmar://other");
  EXPECT_EQ(posts, 0);
  EXPECT_THAT(folderNames(), ElementsAre("Folder F"));
}

TEST_F(ImportCoordinatorTest, TheReviewOfALinkHasTheActivationOfTheClick) {
  std::vector<Activation> taken;
  importCoordinator->settingsWindowProvider = [&]() -> Window* {
    taken.push_back(memory.application.takeActivation());
    return &controller->window();
  };
  memory.application.setActivation({70, "click"});
  importCoordinator->handle(linkTo("https://packs.example/p.json"));
  memory.application.setActivation({90, "later action"});
  memory.downloader.respond(0, 200, pack);
  EXPECT_THAT(taken, ElementsAre(Activation{70, "click"}));
}

TEST_F(ImportCoordinatorTest, ADownloadThatOutlivesTheCoordinatorIsDropped) {
  importCoordinator->handle(linkTo("https://packs.example/p.json"));
  controller.reset();
  importCoordinator.reset();
  memory.downloader.respond(0, 200, pack);
  EXPECT_EQ(memory.windows.frontWindow(), nullptr);
}

// The window.

TEST_F(ImportCoordinatorTest, WithoutASettingsWindowNothingIsShown) {
  importCoordinator->settingsWindowProvider = [] { return nullptr; };
  importCoordinator->handle("quillmar://other");
  review("Pack");
  importCoordinator->settingsWindowProvider = nullptr;
  importCoordinator->handle("quillmar://other");
  review("Pack");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, AReviewThatCannotBeShownIsLogged) {
  memory.windows.failure = Error{"There is no display."};
  review("Pack");
  EXPECT_THAT(log, ElementsAre("Could not show the pack: There is no display."));
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
}

// The choice.

TEST_F(ImportCoordinatorTest, MergeAddsTheNewItemsAndSavesOnce) {
  QuillmarConfig config =
      packOf({folderWith("F", 3, {itemWith("I", "Theirs"), itemWith("J", "New")}),
              folderWith("G", 9, {itemWith("K", "Other")})});
  importCoordinator->review(config, "source");
  pressInSheet("Merge");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
  EXPECT_EQ(posts, 1);
  EXPECT_EQ(folder("F").items, (std::vector{itemWith("I", "Mine"), itemWith("J", "New")}));
  EXPECT_EQ(folder("G").sortOrder, 1);
}

TEST_F(ImportCoordinatorTest, AMergeThatAddsNothingIsSaved) {
  // Even the version stays the same.
  settings->config.version = QuillmarConfig().version;
  importCoordinator->review(packOf({}), "source");
  memory.files.removeEntry(settingsPath);
  pressInSheet("Merge");
  EXPECT_EQ(posts, 1);
  EXPECT_EQ(onDisk(), settings->config);
}

TEST_F(ImportCoordinatorTest, MergeUsesTheDocumentOfThatMoment) {
  review("Pack");
  settings->addCategory("Added meanwhile", std::nullopt, false);
  pressInSheet("Merge");
  EXPECT_THAT(folderNames(), ElementsAre("Folder F", "Added meanwhile", "Folder folder of Pack"));
}

TEST_F(ImportCoordinatorTest, CancelChangesNothing) {
  review("Pack");
  pressInSheet("Cancel");
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 0);
}

TEST_F(ImportCoordinatorTest, ReplaceAsksAgainFirst) {
  review("Pack");
  pressInSheet("Replace Everything…");
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
  expectAlert(
      "Replace everything?",
      "All of your current folders and items will be removed and replaced with the imported "
      "ones. Your preferences are kept.");
  EXPECT_TRUE(buttonTitled(*sheet(), "Replace")->keyEquivalent() == keys::returnKey);
  EXPECT_EQ(posts, 0);
  pressInSheet("Cancel");
  EXPECT_EQ(posts, 0);
  EXPECT_THAT(folderNames(), ElementsAre("Folder F"));
}

TEST_F(ImportCoordinatorTest, ReplaceKeepsThePreferencesAndNothingElse) {
  settings->config.name = "Mine";
  settings->config.preferences.useLoginShell = false;
  QuillmarConfig config = packNamed("Pack");
  config.version = 7;
  config.description = "About it";
  config.preferences.flattenSingleFolder = true;
  importCoordinator->review(config, "source");
  pressInSheet("Replace Everything…");
  pressInSheet("Replace");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 1);
  QuillmarConfig expected = config;
  expected.name.reset();
  expected.description.reset();
  expected.preferences = {.useLoginShell = false};
  EXPECT_EQ(settings->config, expected);
  EXPECT_EQ(onDisk(), expected);
}

TEST_F(ImportCoordinatorTest, AMergeThatCannotBeSavedIsLoggedAndStaysInTheMenu) {
  review("Pack");
  memory.files.removeEntry(settingsPath);
  memory.files.addFolder(settingsPath);
  pressInSheet("Merge");
  EXPECT_THAT(log, ElementsAre(HasSubstr("Failed to save settings: ")));
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 1);
  EXPECT_THAT(folderNames(), SizeIs(2));
}

// Several at once.

TEST_F(ImportCoordinatorTest, ANewReviewEndsTheOneThatIsShown) {
  review("First");
  review("Second");
  EXPECT_EQ(titleOfSheet(), "Add “Second” to Quillmar?");
  pressInSheet("Merge");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(folderNames(), ElementsAre("Folder F", "Folder folder of Second"));
}

TEST_F(ImportCoordinatorTest, ANewReviewAlsoEndsTheDetailsOfTheOldOne) {
  review("First");
  pressInSheet("Show Details…");
  review("Second");
  EXPECT_EQ(titleOfSheet(), "Add “Second” to Quillmar?");
  EXPECT_EQ(memory.windows.frontWindow(), sheet());
  EXPECT_THAT(memory.windows.windows(), SizeIs(2));
}

TEST_F(ImportCoordinatorTest, AReviewWaitsForTheEditorThatIsOpenAndOnlyTheNewestIsShown) {
  controller->addFolder();
  auto* const editor = dynamic_cast<FolderEditorController*>(controller->activeSheet());
  ASSERT_THAT(editor, NotNull());
  editor->nameField().type("Typed before");
  review("First");
  review("Second");
  EXPECT_EQ(sheet(), &editor->window());
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
  editor->savePressed();
  EXPECT_EQ(titleOfSheet(), "Add “Second” to Quillmar?");
  pressInSheet("Cancel");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(folderNames(), ElementsAre("Folder F", "Typed before"));
}

TEST_F(ImportCoordinatorTest, AReviewWaitsForAnOpenPanel) {
  press("Import…");
  review("Pack");
  EXPECT_THAT(sheet(), IsNull());
  endPanel("");
  EXPECT_EQ(titleOfSheet(), "Add “Pack” to Quillmar?");
}

TEST_F(ImportCoordinatorTest, AReviewWaitsForTheQuestionOfAnother) {
  review("First");
  pressInSheet("Replace Everything…");
  review("Second");
  EXPECT_EQ(titleOfSheet(), "Replace everything?");
  pressInSheet("Replace");
  EXPECT_THAT(folderNames(), ElementsAre("Folder folder of First"));
  EXPECT_EQ(titleOfSheet(), "Add “Second” to Quillmar?");
}

TEST_F(ImportCoordinatorTest, AReviewThatWaitsIsDroppedWithTheWindowAndTheNextOneIsShown) {
  controller->addFolder();
  review("First");
  controller->window().close();
  ASSERT_TRUE(controller->window().show({}));
  EXPECT_THAT(sheet(), IsNull());
  review("Second");
  EXPECT_EQ(titleOfSheet(), "Add “Second” to Quillmar?");
}

TEST_F(ImportCoordinatorTest, ClosingTheSettingsWindowCancelsTheReview) {
  review("First");
  controller->window().close();
  EXPECT_THAT(importCoordinator->activeSheet(), IsNull());
  EXPECT_EQ(posts, 0);
  ASSERT_TRUE(controller->window().show({}));
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, FailuresAreShownOneAfterAnotherBehindAReview) {
  review("Pack");
  importCoordinator->fail("First.", "1");
  importCoordinator->fail("Second.", "2");
  EXPECT_EQ(titleOfSheet(), "Add “Pack” to Quillmar?");
  pressInSheet("Cancel");
  expectAlert("First.", "1");
  pressInSheet("OK");
  expectAlert("Second.", "2");
  pressInSheet("OK");
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, AReviewThatComesWhileAFailureIsShownWaitsForIt) {
  importCoordinator->fail("First.", "1");
  review("Pack");
  EXPECT_EQ(titleOfSheet(), "First.");
  pressInSheet("OK");
  EXPECT_EQ(titleOfSheet(), "Add “Pack” to Quillmar?");
}

TEST_F(ImportCoordinatorTest, AFailureThatIsShownOrWaitsIsNotAddedAgain) {
  for (int i = 0; i < 3; ++i) {
    importCoordinator->fail("First.", "1");
    importCoordinator->fail("Second.", "2");
  }
  pressInSheet("OK");
  pressInSheet("OK");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(log, IsEmpty());
  importCoordinator->fail("First.", "1");
  expectAlert("First.", "1");
}

TEST_F(ImportCoordinatorTest, AFailureCanBeShownAgainAfterTheWindowWasClosed) {
  importCoordinator->fail("First.", "1");
  importCoordinator->fail("Second.", "2");
  controller->window().close();
  importCoordinator->fail("Second.", "2");
  expectAlert("Second.", "2");
  pressInSheet("OK");
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(ImportCoordinatorTest, AtMostFiveFailuresWaitAndTheRestAreLogged) {
  for (int i = 0; i < 100; ++i) importCoordinator->fail("Failure.", std::to_string(i));
  ASSERT_THAT(log, SizeIs(95));
  EXPECT_EQ(log[0], "Failure. 5");
  int alerts = 0;
  for (; sheet() != nullptr; ++alerts) pressInSheet("OK");
  EXPECT_EQ(alerts, 5);
}

TEST_F(ImportCoordinatorTest, AHundredLinksShowOneSheetAndMergeNothing) {
  for (int i = 0; i < 100; ++i) {
    importCoordinator->handle(linkTo("https://packs.example/" + std::to_string(i)));
  }
  ASSERT_THAT(memory.downloader.requests, SizeIs(100));
  for (std::size_t i = 0; i < 100; ++i) {
    memory.downloader.respond(i, 200, encodeDocument(packNamed(std::to_string(i))));
    EXPECT_THAT(memory.windows.windows(), SizeIs(2));
  }
  EXPECT_EQ(titleOfSheet(), "Add “99” to Quillmar?");
  EXPECT_EQ(posts, 0);
  pressInSheet("Cancel");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 0);
}

TEST_F(ImportCoordinatorTest, AHundredLinksThatComeDuringAnEditShowOneSheetAfterIt) {
  controller->addFolder();
  for (int i = 0; i < 100; ++i) review(std::to_string(i));
  pressInSheet("Cancel");
  EXPECT_EQ(titleOfSheet(), "Add “99” to Quillmar?");
  pressInSheet("Cancel");
  EXPECT_THAT(sheet(), IsNull());
}

// Files.

TEST_F(ImportCoordinatorTest, AFileIsReviewedWithItsNameAsSource) {
  memory.files.addFile("/home/user/My Packs/tools.quillmarpack", pack);
  importCoordinator->open("/home/user/My Packs/tools.quillmarpack");
  EXPECT_THAT(
      labelTexts(*sheet()),
      ElementsAre("Add “Tools” to Quillmar?", "From tools.quillmarpack", HasSubstr("Merge adds")));
}

TEST_F(ImportCoordinatorTest, AFileThatIsNoDocumentShowsItsNameAndTheReason) {
  memory.files.addFile("/home/user/notes.json", "[]");
  importCoordinator->open("/home/user/notes.json");
  const std::string reason = "“/home/user/notes.json” is not a valid document. " +
                             decodeDocument("[]").error().description;
  expectAlert("Could not read “notes.json”.", reason);
  pressInSheet("OK");
  importCoordinator->open("/home/user/missing.json");
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_EQ(titleOfSheet(), "Could not read “missing.json”.");
  EXPECT_EQ(posts, 0);
}

TEST_F(ImportCoordinatorTest, TheNameOfAFileShowsItsInvisibleCharacters) {
  importCoordinator->open("/home/user/\u202Enosj.txt\n.json/");
  EXPECT_EQ(titleOfSheet(), "Could not read “‹U+202E›nosj.txt .json”.");
}

}  // namespace
}  // namespace quillmar
