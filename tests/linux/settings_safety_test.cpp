// What happens to the user's settings when the disk is full or read-only, or the file is damaged or
// edited: on real files. What a killed program leaves is tested in memory, with kill points.

#include <filesystem>
#include <fstream>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "config/document_decoder.h"
#include "config/settings_manager.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/memory/memory_user_directories.h"
#include "tests/linux/small_disk.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A document that says in every folder which one it is, so that a mixture of two shows.
QuillmarConfig numberedDocument(int number, std::size_t folders) {
  QuillmarConfig config;
  config.name = std::to_string(number);
  for (std::size_t i = 0; i < folders; ++i) {
    config.categories.push_back({.id = std::to_string(i), .name = *config.name});
  }
  return config;
}

/// True when the bytes are one whole document of numberedDocument().
bool isWhole(const std::string& bytes) {
  const Result<QuillmarConfig> decoded = decodeDocument(bytes);
  if (!decoded) return false;
  for (const MenuCategory& category : decoded.value().categories) {
    if (category.name != decoded.value().name) return false;
  }
  return SettingsManager::encode(decoded.value()) == bytes;
}

class SettingsSafetyTest : public testing::Test {
 protected:
  SettingsSafetyTest() { environment.variables["QUILLMAR_SETTINGS_DIR"] = folder.path(); }

  SettingsManager makeManager() {
    return SettingsManager({environment, directories, files, center,
                            [this](std::string_view line) { log.emplace_back(line); }});
  }

  std::string path(const std::string& name) const { return folder.path() + "/" + name; }

  std::string contents(const std::string& name) const {
    const Result<std::string> read = files.read(path(name));
    return read ? read.value() : "";
  }

  void write(const std::string& name, const std::string& bytes) {
    std::ofstream(path(name), std::ios::binary) << bytes;
  }

  std::set<std::string> names() const {
    std::set<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      result.insert(entry.path().filename());
    }
    return result;
  }

  TemporaryFolder folder;
  Environment environment;
  MemoryUserDirectories directories;
  PosixFileSystem files;
  NotificationCenter center;
  std::vector<std::string> log;
};

TEST_F(SettingsSafetyTest, AFileCutAtEveryByteIsKeptAsDamagedAndNothingElseIsLost) {
  const std::string whole = SettingsManager::encode(numberedDocument(1, 2));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    for (const std::string& name : names()) std::filesystem::remove(path(name));
    const std::string cut = whole.substr(0, length);
    write("settings.json", cut);

    SettingsManager manager = makeManager();
    ASSERT_TRUE(manager.loadError()) << length;
    EXPECT_FALSE(manager.isFirstLaunch());
    ASSERT_EQ(contents("settings.json"), cut);
    ASSERT_EQ(names().size(), 1u) << "Nothing is written before the first save.";

    manager.config = numberedDocument(2, 1);
    manager.save();
    EXPECT_TRUE(isWhole(contents("settings.json")));
    const std::set<std::string> left = names();
    ASSERT_EQ(left.size(), 2u);
    EXPECT_THAT(*left.begin(), testing::MatchesRegex("settings.damaged-.*Z.json"));
    EXPECT_EQ(contents(*left.begin()), cut);
  }
}

using SettingsSafetyDeathTest = SettingsSafetyTest;

TEST_F(SettingsSafetyDeathTest, OnAFullDiskTheOldSettingsStayAndTheChangeIsKeptInMemory) {
  EXPECT_ON_SMALL_DISK(folder.path(), [&] {
    const std::string old = SettingsManager::encode(numberedDocument(1, 100));
    write("settings.json", old);
    SettingsManager manager = makeManager();
    int posts = 0;
    const auto observation = center.addObserver(menuItemSettingsChanged, [&] { ++posts; });
    manager.config = numberedDocument(2, 20000);
    manager.save();
    EXPECT_THAT(log, ElementsAre("Failed to save settings: The file “" + path("settings.json") +
                                 "” could not be written: No space left on device."));
    EXPECT_EQ(contents("settings.json"), old);
    EXPECT_EQ(manager.config.name, "2");
    EXPECT_EQ(posts, 1);

    manager.config = numberedDocument(3, 50);
    manager.save();
    EXPECT_TRUE(isWhole(contents("settings.json")));
  });
}

TEST_F(SettingsSafetyDeathTest, OnADiskWithoutRoomForACopyTheSaveFailsAndTheFileIsUntouched) {
  EXPECT_ON_SMALL_DISK(folder.path(), [&] {
    const std::string old = SettingsManager::encode(numberedDocument(1, 3500));
    ASSERT_GT(old.size(), std::size_t{512} << 10);
    ASSERT_LT(old.size(), std::size_t{1} << 20);
    write("settings.json", old);
    SettingsManager manager = makeManager();
    manager.config = numberedDocument(2, 10);
    manager.save();
    EXPECT_THAT(log,
                ElementsAre("Failed to save settings: The file “" + path("settings.previous.json") +
                            "” could not be written: No space left on device."));
    EXPECT_EQ(contents("settings.json"), old);
    EXPECT_THAT(names(), ElementsAre("settings.json"));
  });
}

TEST_F(SettingsSafetyTest, ASparseFileOf8TBIsReportedAndLeftAlone) {
  write("settings.json", "{}");
  std::filesystem::resize_file(path("settings.json"), std::uintmax_t{8} << 40);
  SettingsManager manager = makeManager();
  manager.save();
  const std::string reason =
      "The file “" + path("settings.json") + "” could not be read: It is larger than 64 MiB.";
  EXPECT_THAT(
      log, ElementsAre("Failed to load settings: " + reason, "Failed to save settings: " + reason));
  EXPECT_EQ(std::filesystem::file_size(path("settings.json")), std::uintmax_t{8} << 40);
}

TEST_F(SettingsSafetyTest, AnEditWhileTheProgramRunsIsKept) {
  SettingsManager manager = makeManager();
  manager.config = numberedDocument(1, 2);
  manager.save();
  write("settings.json", "edited by hand");
  manager.config = numberedDocument(2, 2);
  manager.save();
  const std::set<std::string> left = names();
  ASSERT_EQ(left.size(), 2u);
  EXPECT_THAT(*left.begin(), testing::MatchesRegex("settings.edited-.*Z.json"));
  EXPECT_EQ(contents(*left.begin()), "edited by hand");
  EXPECT_TRUE(isWhole(contents("settings.json")));
}

TEST_F(SettingsSafetyTest, AFolderBelowAFileIsAFirstLaunch) {
  write("file", "");
  environment.variables["QUILLMAR_SETTINGS_DIR"] = path("file/below");
  EXPECT_TRUE(makeManager().isFirstLaunch());
  EXPECT_THAT(log, IsEmpty());
}

/// Root may write everywhere: gives that up for the rest of a death test's child.
void becomeAnOrdinaryUser(const std::string& folder) {
  if (geteuid() != 0) return;
  constexpr uid_t nobody = 65534;
  ASSERT_EQ(chown(folder.c_str(), nobody, nobody), 0);
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    ASSERT_EQ(chown(entry.path().c_str(), nobody, nobody), 0);
  }
  ASSERT_EQ(setresgid(nobody, nobody, nobody), 0);
  ASSERT_EQ(setresuid(nobody, nobody, nobody), 0);
}

TEST_F(SettingsSafetyDeathTest, InAReadOnlyFolderTheFileIsStillSavedThoughNoCopyCanBeKept) {
  EXPECT_EXIT(
      {
        const std::string old = SettingsManager::encode(numberedDocument(1, 3));
        write("settings.json", old);
        becomeAnOrdinaryUser(folder.path());
        chmod(folder.path().c_str(), 0555);
        SettingsManager manager = makeManager();
        manager.config = numberedDocument(2, 1);
        manager.save();
        EXPECT_THAT(log, IsEmpty());
        EXPECT_EQ(contents("settings.json"), SettingsManager::encode(manager.config));
        EXPECT_THAT(names(), ElementsAre("settings.json"));
        _exit(HasFailure() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(SettingsSafetyDeathTest, InAReadOnlyFolderWithoutAFileTheFailureIsToldAndNothingIsMade) {
  EXPECT_EXIT(
      {
        becomeAnOrdinaryUser(folder.path());
        chmod(folder.path().c_str(), 0555);
        SettingsManager manager = makeManager();
        EXPECT_TRUE(manager.isFirstLaunch());
        manager.save();
        EXPECT_THAT(log, ElementsAre("Failed to save settings: The file “" + path("settings.json") +
                                     "” could not be written: Permission denied."));
        EXPECT_THAT(names(), IsEmpty());
        _exit(HasFailure() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(SettingsSafetyDeathTest, AFileInAnUnreadableFolderIsALoadErrorAndNoFirstLaunch) {
  EXPECT_EXIT(
      {
        write("settings.json", "{}");
        becomeAnOrdinaryUser(folder.path());
        chmod(folder.path().c_str(), 0000);
        EXPECT_FALSE(makeManager().isFirstLaunch());
        EXPECT_THAT(log, ElementsAre("Failed to load settings: The file “" + path("settings.json") +
                                     "” could not be read: Permission denied."));
        _exit(HasFailure() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(SettingsSafetyTest, ASymbolicLinkAndTheModeOfItsTargetSurviveASave) {
  std::filesystem::create_directory(path("dotfiles"));
  write("dotfiles/quillmar.json", SettingsManager::encode(numberedDocument(1, 1)));
  chmod(path("dotfiles/quillmar.json").c_str(), 0640);
  std::filesystem::create_symlink("dotfiles/quillmar.json", path("settings.json"));

  SettingsManager manager = makeManager();
  manager.config = numberedDocument(2, 1);
  manager.save();
  EXPECT_TRUE(std::filesystem::is_symlink(path("settings.json")));
  EXPECT_EQ(contents("dotfiles/quillmar.json"), SettingsManager::encode(manager.config));
  EXPECT_EQ(files.permissions(path("settings.json")).value(), 0640u);
  EXPECT_EQ(files.permissions(path("settings.previous.json")).value(), 0640u);
  EXPECT_THAT(contents("settings.previous.json"), HasSubstr("\"name\" : \"1\""));
}

}  // namespace
}  // namespace quillmar
