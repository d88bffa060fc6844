// The packs that ship with the application, as their files stand in the source tree.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "config/document_encoder.h"
#include "platform/uuid.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::Not;
using testing::Optional;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;

constexpr std::string_view placeholder = "{{input}}";

std::string bytesOf(const std::string& name) {
  std::ifstream file(fs::path(QUILLMAR_PACKS) / (name + ".quillmarpack"), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<const MenuItem*> commandsOf(const QuillmarConfig& pack) {
  std::vector<const MenuItem*> commands;
  for (const MenuCategory& folder : pack.categories) {
    for (const MenuItem& item : folder.items) {
      if (!item.isSeparator) commands.push_back(&item);
    }
  }
  return commands;
}

bool asksForInput(const MenuItem& item) {
  return item.command.value.find(placeholder) != std::string::npos;
}

/// All packs; each test runs for each.
const std::vector<std::string> packNames = {"audio", "clipboard", "networking", "screenshots",
                                            "starter"};

class Packs : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    const auto decoded = decodeDocument(bytesOf(GetParam()), [this] {
      ++missingIds;
      return makeUuid();
    });
    ASSERT_TRUE(decoded) << decoded.error().description;
    pack = decoded.value();
  }

  QuillmarConfig pack;
  int missingIds = 0;
};

INSTANTIATE_TEST_SUITE_P(, Packs, testing::ValuesIn(packNames),
                         [](const auto& pack) { return pack.param; });

TEST_P(Packs, AreWrittenAsTheProgramWritesThem) {
  EXPECT_EQ(encodeDocument(pack), bytesOf(GetParam()));
  EXPECT_EQ(missingIds, 0);
  EXPECT_EQ(pack.version, 2);
  EXPECT_EQ(pack.preferences, Preferences());
}

TEST_P(Packs, StayWithinTheSizeOfAFolder) {
  for (const MenuCategory& folder : pack.categories) {
    EXPECT_GE(folder.items.size(), 3U) << folder.name;
    EXPECT_LE(folder.items.size(), 14U) << folder.name;
  }
}

TEST_P(Packs, HaveANameAndADescription) {
  EXPECT_THAT(pack.name, Optional(Not(IsEmpty())));
  EXPECT_THAT(pack.description, Optional(Not(IsEmpty())));
}

TEST_P(Packs, HaveFoldersWithIconsInTheOrderOfTheFile) {
  std::int64_t order = 0;
  for (const MenuCategory& folder : pack.categories) {
    EXPECT_EQ(folder.sortOrder, order++) << folder.name;
    EXPECT_THAT(folder.name, Not(IsEmpty()));
    EXPECT_THAT(folder.iconSymbolName, Optional(Not(IsEmpty()))) << folder.name;
  }
}

TEST_P(Packs, HaveCommandsWithTitlesAndIcons) {
  std::set<std::string> titles;
  for (const MenuItem* item : commandsOf(pack)) {
    EXPECT_TRUE(titles.insert(item->title).second) << item->title;
    EXPECT_THAT(item->title, Not(IsEmpty())) << item->id;
    EXPECT_THAT(item->iconSymbolName, Optional(Not(IsEmpty()))) << item->title;
    EXPECT_THAT(item->command.value, Not(IsEmpty())) << item->title;
    EXPECT_TRUE(item->isEnabled) << item->title;
  }
}

TEST_P(Packs, TakeNoGlobalHotKeys) {
  for (const MenuItem* item : commandsOf(pack)) {
    EXPECT_FALSE(item->shortcut && item->shortcut->isGlobal) << item->title;
  }
}

TEST_P(Packs, AskAQuestionOfTheirOwnForEveryInput) {
  for (const MenuItem* item : commandsOf(pack)) {
    EXPECT_EQ(item->inputPrompt && !item->inputPrompt->empty(), asksForInput(*item)) << item->title;
    EXPECT_EQ(item->title.ends_with("…"), asksForInput(*item)) << item->title;
  }
}

// The menu stays alive, and a command that reads what Quillmar itself put on the clipboard gets an
// answer.
TEST_P(Packs, RunInTheBackground) {
  for (const MenuItem* item : commandsOf(pack)) {
    EXPECT_TRUE(item->command.runInBackground) << item->title;
  }
}

// The typed text is put in as it stands, so it belongs where no quote or sign means anything.
TEST_P(Packs, TakeInputOnALineOfAQuotedHereDocument) {
  for (const MenuItem* item : commandsOf(pack)) {
    if (!asksForInput(*item)) continue;
    const std::string& value = item->command.value;
    const std::size_t start = value.find("<<'END_OF_INPUT'\n{{input}}\nEND_OF_INPUT\n");
    EXPECT_NE(start, std::string::npos) << value;
    EXPECT_EQ(value.find(placeholder), value.rfind(placeholder)) << value;
  }
}

bool isCanonicalUuid(std::string_view id) {
  if (id.size() != 36) return false;
  for (std::size_t i = 0; i < id.size(); ++i) {
    const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
    const auto byte = static_cast<unsigned char>(id[i]);
    const bool isUpperHex = std::isdigit(byte) != 0 || (id[i] >= 'A' && id[i] <= 'F');
    if (isHyphen ? id[i] != '-' : !isUpperHex) return false;
  }
  return true;
}

TEST(AllPacks, AreAllTested) {
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(QUILLMAR_PACKS)) {
    if (entry.path().extension() == ".quillmarpack") files.push_back(entry.path().stem());
  }
  EXPECT_THAT(files, UnorderedElementsAreArray(packNames));
}

TEST(AllPacks, HaveAnIdOfItsOwnForEveryFolderAndItem) {
  std::set<std::string> ids;
  const auto check = [&ids](const std::string& id) {
    EXPECT_TRUE(isCanonicalUuid(id)) << id;
    EXPECT_TRUE(ids.insert(id).second) << id;
  };
  for (const std::string& name : packNames) {
    const QuillmarConfig pack = decodeDocument(bytesOf(name)).value();
    for (const MenuCategory& folder : pack.categories) {
      check(folder.id);
      for (const MenuItem& item : folder.items) check(item.id);
    }
  }
}

TEST(StarterPack, IsOfTheSizeThatAMenuTakes) {
  const QuillmarConfig pack = decodeDocument(bytesOf("starter")).value();
  EXPECT_THAT(pack.categories, SizeIs(AllOf(Ge(3), Le(4))));
  EXPECT_THAT(commandsOf(pack), SizeIs(20));
  EXPECT_EQ(QuillmarConfig().mergePreview(pack), (MergePreview{4, 20}));
}

TEST(StarterPack, ShowsWhatItemsCanDo) {
  const QuillmarConfig pack = decodeDocument(bytesOf("starter")).value();
  const std::vector<const MenuItem*> items = commandsOf(pack);
  const auto has = [&items](auto condition) {
    return std::ranges::any_of(items, [&](const MenuItem* item) { return condition(*item); });
  };
  EXPECT_TRUE(has(asksForInput));
  EXPECT_TRUE(has([](const MenuItem& item) { return item.confirmBeforeRunning; }));
  EXPECT_TRUE(has([](const MenuItem& item) { return item.command.copyToClipboard; }));
  EXPECT_TRUE(has([](const MenuItem& item) { return item.command.showNotification; }));
}

TEST(StarterPack, MergedAgainAddsNothing) {
  const QuillmarConfig pack = decodeDocument(bytesOf("starter")).value();
  const QuillmarConfig once = QuillmarConfig().merging(pack);
  EXPECT_EQ(once.categories, pack.categories);
  EXPECT_EQ(once.merging(pack), once);
}

}  // namespace
}  // namespace quillmar
