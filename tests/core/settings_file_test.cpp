#include "config/settings_file.h"

#include <string>
#include <vector>

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
using testing::IsEmpty;
using testing::SizeIs;

constexpr char path[] = "/settings/settings.json";
constexpr char previousPath[] = "/settings/settings.previous.json";
constexpr char damagedPath[] = "/settings/settings.damaged-20010909T014640Z.json";
constexpr char editedPath[] = "/settings/settings.edited-20010909T014640Z.json";

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

  SettingsFile settingsFile(FileSystem& fileSystem) {
    return {fileSystem, [this](std::string_view line) { log.emplace_back(line); }, now};
  }

  /// Loads the file and saves the bytes, as the program does.
  Result<void> overwrite(FileSystem& fileSystem, const std::string& bytes) {
    SettingsFile file = settingsFile(fileSystem);
    (void)file.load(path);
    return file.overwrite(path, bytes);
  }

  MemoryFileSystem files;
  std::vector<std::string> log;
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

TEST_F(SettingsFileTest, BytesThatAnotherProgramWroteAreKeptAsEditedAndOneLineIsLogged) {
  const std::string sameLength = document("SAVED");
  for (const std::string& edited : {sameLength, std::string("{ edited with a mistake")}) {
    MemoryFileSystem disk;
    disk.addFile(path, document("loaded"), 0640);
    SettingsFile file = settingsFile(disk);
    ASSERT_TRUE(file.load(path));
    ASSERT_TRUE(file.overwrite(path, document("saved")));
    disk.addFile(path, edited, 0600);
    ASSERT_TRUE(file.overwrite(path, document("saved again")));

    EXPECT_EQ(disk.contents(path), document("saved again"));
    EXPECT_EQ(disk.contents(editedPath), edited);
    EXPECT_EQ(disk.permissions(editedPath).value(), 0600u);
    EXPECT_EQ(disk.contents(previousPath), document("loaded"));
    EXPECT_THAT(log, ElementsAre("The settings file “" + std::string(path) +
                                 "” was changed while Quillmar was running. The changed version is "
                                 "kept in “" +
                                 std::string(editedPath) + "”."));
    log.clear();
  }
}

TEST_F(SettingsFileTest, WhatWasLoadedOrWrittenIsNotTakenForAnEdit) {
  files.addFile(path, document("loaded"));
  SettingsFile file = settingsFile(files);
  ASSERT_TRUE(file.load(path));
  for (const char* name : {"first", "second", "third"}) {
    EXPECT_TRUE(file.overwrite(path, document(name)));
  }
  EXPECT_EQ(files.contents(previousPath), document("second"));
  EXPECT_THAT(files.paths(), ElementsAre("/settings", path, previousPath));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsFileTest, AFileThatAppearedAfterTheFirstLaunchIsKeptAsEdited) {
  SettingsFile file = settingsFile(files);
  files.addFile(path, document("copied here by the user"));
  EXPECT_TRUE(file.overwrite(path, document("new")));
  EXPECT_EQ(files.contents(editedPath), document("copied here by the user"));
}

TEST_F(SettingsFileTest, AfterAFailedSaveTheRestoredBytesAreNotTakenForAnEdit) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  SettingsFile file = settingsFile(faulty);
  ASSERT_TRUE(file.load(path));
  faulty.failCall(FileOperation::setLength);
  EXPECT_FALSE(file.overwrite(path, document("new")));
  EXPECT_TRUE(file.overwrite(path, document("newer")));
  EXPECT_EQ(files.contents(previousPath), document("old"));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsFileTest, InAFolderWithoutThePermissionForACopyTheSaveContinues) {
  files.addFile(path, document("old"));
  files.addFolder("/settings", 0555);
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
  EXPECT_THAT(files.paths(), ElementsAre("/settings", path));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsFileTest, AnEditThatCannotBeKeptForLackOfPermissionIsLogged) {
  files.addFile(path, document("edited"));
  files.addFolder("/settings", 0555);
  EXPECT_TRUE(settingsFile(files).overwrite(path, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
  EXPECT_THAT(log, ElementsAre(HasSubstr("The changed version could not be kept: The file “" +
                                         std::string(editedPath) +
                                         "” could not be written: Permission denied.")));
}

TEST_F(SettingsFileTest, WithoutSpaceForTheCopyOrOnABrokenDiskTheSaveFailsAndTheFileIsUntouched) {
  for (const ErrorKind kind : {ErrorKind::noSpace, ErrorKind::deviceFailure}) {
    for (const std::string& old : {document("old"), std::string("{ damaged")}) {
      MemoryFileSystem disk;
      disk.addFile(path, old);
      disk.addFile(previousPath, document("older"));
      for (const int copy : {1, 2}) {
        FaultyFileSystem faulty(disk);
        faulty.failCall(FileOperation::replace, copy, Error{"No copy.", kind});
        if (copy == 2 && old == document("old")) continue;  // only damaged files have two copies
        EXPECT_EQ(overwrite(faulty, document("new")).error(), (Error{"No copy.", kind}));
        EXPECT_EQ(disk.contents(path), old);
        EXPECT_EQ(disk.contents(previousPath), document("older"));
      }
    }
  }
}

TEST_F(SettingsFileTest, ASaveThatFailsAgainMakesNoSecondCopyOfTheSameContents) {
  for (const bool isEdited : {true, false}) {
    MemoryFileSystem disk;
    disk.addFile(path, isEdited ? document("loaded") : "{ damaged");
    disk.addFile(previousPath, document("older"));
    FaultyFileSystem faulty(disk);
    SettingsFile file = settingsFile(faulty);
    EXPECT_EQ(file.load(path).ok(), isEdited);
    if (isEdited) disk.addFile(path, document("edited"));
    faulty.failEveryCall(FileOperation::reserve, Error{"No room.", ErrorKind::noSpace});
    EXPECT_FALSE(file.overwrite(path, document("new")));
    const auto paths = disk.paths();
    EXPECT_FALSE(file.overwrite(path, document("newer")));
    EXPECT_EQ(disk.paths(), paths);
  }
  EXPECT_THAT(log, SizeIs(1));  // of the edited file
}

TEST_F(SettingsFileTest, AnUnfinishedFileIsKeptAsDamagedAndNotTakenForAnEdit) {
  files.addFile(path, document("old"));
  SettingsFile file = settingsFile(files);
  ASSERT_TRUE(file.load(path));
  ASSERT_TRUE(file.overwrite(path, document("new")));
  files.addFile(path, "!half of the newest");
  EXPECT_TRUE(file.overwrite(path, document("newest")));
  EXPECT_EQ(files.contents(damagedPath), "!half of the newest");
  EXPECT_EQ(files.contents("/settings/settings.previous-20010909T014640Z.json"), document("old"));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsFileTest, ADocumentThatCouldNotBeLoadedAgainIsNotWritten) {
  files.addFile(path, document("old"));
  EXPECT_EQ(overwrite(files, std::string(maximumFileSize + 1, ' ')).error(),
            (Error{"The file “" + std::string(path) +
                       "” could not be written: It would be larger than 64 MiB.",
                   ErrorKind::tooLarge}));
  EXPECT_EQ(files.contents(path), document("old"));
  EXPECT_THAT(files.paths(), ElementsAre("/settings", path));
}

TEST_F(SettingsFileTest, AFileThatMayNotBeReadIsWrittenAllTheSame) {
  files.addFile(path, document("old"), 0200);
  EXPECT_TRUE(overwrite(files, document("new")));
  EXPECT_EQ(files.contents(path), document("new"));
}

TEST_F(SettingsFileTest, AFileThatIsTooLargeToBeKeptIsNotOverwritten) {
  files.addFile(path, "");
  ASSERT_TRUE(files.openForOverwriting(path).value()->setLength(maximumFileSize + 1));
  EXPECT_EQ(overwrite(files, document("new")).error().description,
            "The file “" + std::string(path) + "” could not be read: It is larger than 64 MiB.");
  EXPECT_EQ(files.contents(path)->size(), maximumFileSize + 1);
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
  faulty.failEveryCall(FileOperation::setLength, Error{"The disk is broken."});
  EXPECT_EQ(overwrite(faulty, document("new")).error().description,
            "The disk is broken. The old settings could not be restored; they are kept in “" +
                std::string(previousPath) + "”.");
  EXPECT_EQ(files.contents(previousPath), document("old"));
}

TEST_F(SettingsFileTest, WithoutACopyTheErrorSaysThatThereIsNone) {
  files.addFile(path, document("old"));
  files.addFolder("/settings", 0555);
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::setLength, Error{"The disk is broken."});
  EXPECT_EQ(overwrite(faulty, document("new")).error().description,
            "The disk is broken. The old settings could not be restored; no copy of them could be "
            "kept either.");
}

TEST_F(SettingsFileTest, WhenTheFirstByteCannotBeWrittenTheFileIsUntouched) {
  files.addFile(path, document("old"));
  FaultyFileSystem faulty(files);
  faulty.failEveryCall(FileOperation::write, Error{"The disk is broken."});
  EXPECT_EQ(overwrite(faulty, document("new")).error().description, "The disk is broken.");
  EXPECT_EQ(files.contents(path), document("old"));
}

// A copy-on-write file system needs space even to put the old bytes back.
TEST_F(SettingsFileTest, ASaveThatFailsTwiceForLackOfSpaceLeavesNoMixtureThatDecodes) {
  const std::string old = document("old", 2);
  const std::string replacement = document("new", 2);
  ASSERT_EQ(old.size(), replacement.size());
  for (std::size_t room = 0; room <= 2 * replacement.size() + 2; ++room) {
    MemoryFileSystem disk;
    disk.addFile(path, old);
    FaultyFileSystem faulty(disk);
    faulty.limitSpace(old.size() + room);
    const bool saved = overwrite(faulty, replacement).ok();
    const std::string left = disk.contents(path).value();
    EXPECT_EQ(saved, left == replacement) << room;
    EXPECT_TRUE(saved || left == old || !decodeDocument(left)) << room;
    EXPECT_EQ(disk.contents(previousPath), old);
  }
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
  faulty.limitSpace(10);
  EXPECT_FALSE(overwrite(faulty, document("new")));
  EXPECT_FALSE(files.exists(path));
}

TEST_F(SettingsFileTest, KilledDuringTheFirstWriteThereIsNoFileOrAWholeOne) {
  for (std::uint64_t steps = 0; steps < 4; ++steps) {
    MemoryFileSystem disk;
    disk.addFolder("/settings");
    FaultyFileSystem faulty(disk);
    faulty.killAfterSteps(steps, 5);
    (void)overwrite(faulty, document("new"));
    EXPECT_EQ(disk.contents(path).value_or(document("new")), document("new"));
  }
}

TEST_F(SettingsFileTest, AfterATornWriteTheLastWholeCopyOutlivesLaterSaves) {
  files.addFile(previousPath, document("the user's menu"));
  files.addFile(path, document("torn").substr(0, 20));
  SettingsFile file = settingsFile(files);
  EXPECT_FALSE(file.load(path));
  EXPECT_TRUE(file.overwrite(path, document("first save")));
  EXPECT_TRUE(file.overwrite(path, document("second save")));
  EXPECT_EQ(files.contents(previousPath), document("first save"));
  EXPECT_EQ(files.contents("/settings/settings.previous-20010909T014640Z.json"),
            document("the user's menu"));
}

TEST_F(SettingsFileTest, KilledAtAnyStepAndAnyByteTheFileOrTheCopyIsWhole) {
  const std::string older = document("older", 5);
  const std::string old = document("old", 3);
  const std::string replacements[] = {document("new", 1), document("new", 9)};
  for (const std::string& replacement : replacements) {
    for (std::uint64_t steps = 0; steps < 9; ++steps) {
      for (std::uint64_t bytes = 0; bytes <= replacement.size(); bytes += 7) {
        MemoryFileSystem disk;
        disk.addFile(path, old);
        disk.addFile(previousPath, older);
        FaultyFileSystem faulty(disk);
        faulty.killAfterSteps(steps, bytes);
        (void)overwrite(faulty, replacement);

        const std::string settings = disk.contents(path).value();
        const std::string previous = disk.contents(previousPath).value();
        const bool settingsWhole = settings == old || settings == replacement;
        const bool previousWhole = previous == old;
        ASSERT_TRUE(settingsWhole || previousWhole) << steps << " steps, " << bytes << " bytes";
        ASSERT_TRUE(settingsWhole || !decodeDocument(settings).ok()) << "A mixture decodes.";
      }
    }
  }
}

}  // namespace
}  // namespace quillmar
