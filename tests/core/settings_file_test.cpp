#include "config/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "config/document_encoder.h"
#include "platform/memory/faulty_file_system.h"
#include "platform/memory/memory_file_system.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char path[] = "/settings/settings.json";
constexpr char previousPath[] = "/settings/settings.previous.json";
constexpr char damagedPath[] = "/settings/settings.damaged-20010909T014640Z.json";

std::string document(const std::string& name, std::size_t folders = 0) {
  QuillmarConfig config;
  config.name = name;
  for (std::size_t i = 0; i < folders; ++i) {
    config.categories.push_back({.id = std::to_string(i), .name = name});
  }
  return encodeDocument(config);
}

class SettingsFileTest : public testing::Test {
 protected:
  SettingsFileTest() { files.addFolder("/settings"); }

  static std::chrono::system_clock::time_point now() {
    return std::chrono::system_clock::from_time_t(1000000000);
  }

  Result<void> overwrite(FileSystem& fileSystem, const std::string& bytes) {
    return SettingsFile(fileSystem, now).overwrite(path, bytes);
  }

  MemoryFileSystem files;
};

TEST_F(SettingsFileTest, TheFirstWriteMakesTheFileAndNothingElse) {
  EXPECT_TRUE(overwrite(files, document("first")));
  EXPECT_EQ(files.contents(path), document("first"));
  EXPECT_THAT(files.paths(), ElementsAre("/settings", path));
}

TEST_F(SettingsFileTest, ThePreviousDocumentIsKeptBesideTheFileWithItsMode) {
  files.addFile(path, document("old"), 0640);
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
  EXPECT_EQ(files.contents(previousPath), document("old"));
  EXPECT_EQ(files.permissions(path).value(), 0640u);
  EXPECT_EQ(files.permissions(previousPath).value(), 0640u);
}

TEST_F(SettingsFileTest, AShorterDocumentLeavesNothingOfTheLongerOne) {
  files.addFile(path, document("old", 100));
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
}

TEST_F(SettingsFileTest, ASymbolicLinkStaysOneAndItsTargetIsWritten) {
  files.addFile("/dotfiles/quillmar.json", document("old"), 0600);
  files.addSymbolicLink(path, "/dotfiles/quillmar.json");
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_TRUE(files.isSymbolicLink(path));
  EXPECT_EQ(files.contents("/dotfiles/quillmar.json"), document("new"));
  EXPECT_EQ(files.permissions("/dotfiles/quillmar.json").value(), 0600u);
  EXPECT_EQ(files.contents(previousPath), document("old"));
}

TEST_F(SettingsFileTest, BytesThatAreNoDocumentAreKeptAsDamagedBeforeTheyAreOverwritten) {
  files.addFile(previousPath, document("good"));
  files.addFile(path, "{ my precious notes");
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(damagedPath), "{ my precious notes");
  EXPECT_EQ(files.contents(previousPath), document("good"));
  EXPECT_EQ(files.contents(path), document("new"));
}

TEST_F(SettingsFileTest, ASecondDamagedFileOfTheSameSecondGetsANameOfItsOwn) {
  files.addFile(damagedPath, "first");
  files.addFile(path, "second");
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(damagedPath), "first");
  EXPECT_EQ(files.contents("/settings/settings.damaged-20010909T014640Z-2.json"), "second");
}

TEST_F(SettingsFileTest, ACopyThatCannotBeKeptDoesNotStopTheSave) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::replace);
  EXPECT_TRUE(overwrite(faulty, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
  EXPECT_FALSE(files.exists(previousPath));
}

TEST_F(SettingsFileTest, AFileThatCannotBeReadIsWrittenAllTheSame) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::read);
  EXPECT_TRUE(overwrite(faulty, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
}

TEST_F(SettingsFileTest, WithoutRoomNotAByteIsOverwritten) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::reserve, Error{"No room."});
  const Result<void> saved = overwrite(faulty, document("new", 100));
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.error().description, "No room.");
  EXPECT_EQ(files.contents(path), document("old"));
}

TEST_F(SettingsFileTest, AWriteThatFailsMidwayPutsTheOldBytesBack) {
  const std::string old = document("old", 3);
  files.addFile(path, old);
  FaultyFileSystem faulty(files);
  // Room for the copy and for a part of the new document; what was there before finds its place.
  faulty.failCall(FileOperation::setLength);
  const Result<void> saved = overwrite(faulty, document("new", 100));
  EXPECT_FALSE(saved);
  EXPECT_EQ(files.contents(path), old);
  EXPECT_EQ(files.contents(previousPath), old);
}

TEST_F(SettingsFileTest, WhenTheOldBytesCannotBePutBackTheErrorNamesTheCopy) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::write, Error{"The disk is broken."});
  const Result<void> saved = overwrite(faulty, document("new"));
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error().description, HasSubstr("The disk is broken."));
  EXPECT_THAT(saved.error().description, HasSubstr(previousPath));
  EXPECT_EQ(files.contents(previousPath), document("old"));
}

TEST_F(SettingsFileTest, WithoutACopyTheErrorSaysThatThereIsNone) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::replace);
  faulty.failEveryCall(FileOperation::write, Error{"The disk is broken."});
  EXPECT_EQ(overwrite(faulty, document("new")).error().description,
            "The disk is broken. The old settings could not be put back; no copy of them could be "
            "kept either.");
}

TEST_F(SettingsFileTest, WhenDamagedBytesCannotBePutBackTheErrorNamesTheirCopy) {
  files.addFile(path, "{ my precious notes");
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::write, Error{"The disk is broken."});
  EXPECT_THAT(overwrite(faulty, document("new")).error().description, HasSubstr(damagedPath));
  EXPECT_EQ(files.contents(damagedPath), "{ my precious notes");
}

TEST_F(SettingsFileTest, AWriteThatTheDiskRefusesAtTheEndPutsTheOldBytesBack) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failCall(FileOperation::finish, 1, Error{"The server has no room."});
  EXPECT_EQ(overwrite(faulty, document("new")).error().description, "The server has no room.");
  EXPECT_EQ(files.contents(path), document("old"));
}

TEST_F(SettingsFileTest, AFailedFirstWriteLeavesNoFileBehind) {
  FaultyFileSystem faulty(files);
  faulty.limitRoom(10);
  EXPECT_FALSE(overwrite(faulty, document("new")));
  EXPECT_FALSE(files.exists(path));
}

TEST_F(SettingsFileTest, KilledDuringTheFirstWriteThereIsNoFileOrAWholeOne) {
  for (std::uint64_t steps = 0; steps < 4; ++steps) {
    MemoryFileSystem disk;
    disk.addFolder("/settings");
    FaultyFileSystem faulty(disk);
    faulty.dieAfterSteps(steps, 5);
    (void)overwrite(faulty, document("new"));
    EXPECT_EQ(disk.contents(path).value_or(document("new")), document("new"));
  }
}

TEST_F(SettingsFileTest, AfterATornWriteTheLastWholeCopyOutlivesLaterSaves) {
  files.addFile(previousPath, document("the user's menu"));
  files.addFile(path, document("torn").substr(0, 20));
  EXPECT_TRUE(overwrite(files, document("first save")));
  EXPECT_TRUE(overwrite(files, document("second save")));
  EXPECT_EQ(files.contents(previousPath), document("first save"));
  EXPECT_EQ(files.contents("/settings/settings.previous-20010909T014640Z.json"),
            document("the user's menu"));
}

TEST_F(SettingsFileTest, KilledAtAnyStepAndAnyByteTheFileOrTheCopyIsWhole) {
  const std::string older = document("older", 5);
  const std::string old = document("old", 3);
  const std::string replacements[] = {document("new", 1), document("new", 9)};
  for (const std::string& replacement : replacements) {
    for (std::uint64_t steps = 0; steps < 8; ++steps) {
      for (std::uint64_t bytes = 0; bytes <= replacement.size(); bytes += 7) {
        MemoryFileSystem disk;
        disk.addFile(path, old);
        disk.addFile(previousPath, older);
        FaultyFileSystem faulty(disk);
        faulty.dieAfterSteps(steps, bytes);
        (void)overwrite(faulty, replacement);

        const std::string settings = disk.contents(path).value();
        const std::string previous = disk.contents(previousPath).value();
        const bool settingsWhole = settings == old || settings == replacement;
        const bool previousWhole = previous == old;
        ASSERT_TRUE(settingsWhole || previousWhole) << steps << " steps, " << bytes << " bytes";
        ASSERT_TRUE(decodeDocument(settings).ok() || decodeDocument(previous).ok());
      }
    }
  }
}

}  // namespace
}  // namespace quillmar
