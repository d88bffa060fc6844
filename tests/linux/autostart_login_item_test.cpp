#include "platform/linux/login/autostart_login_item.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>

#include "platform/memory/memory_user_directories.h"
#include "tests/conformance/login_item_conformance.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/small_disk.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

/// A program and the autostart folders of a user and of the system.
class AutostartFolders {
 public:
  AutostartFolders() {
    addProgram(program());
    directories.applicationSupport = {path("/config")};
  }

  AutostartLoginItem item() { return {program(), environment, directories, files}; }

  std::string program() const { return path("/bin a/quill\"$mar"); }
  std::string userFile() const { return path("/config/autostart/com.tovenworks.quillmar.desktop"); }
  std::string systemFile() const { return path("/xdg/autostart/com.tovenworks.quillmar.desktop"); }
  std::string path(const std::string& inFolder) const { return folder_.path() + inFolder; }

  static void write(const std::string& file, const std::string& text) {
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream(file) << text;
  }
  static std::string read(const std::string& file) {
    std::ifstream stream(file);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  }
  static void addProgram(const std::string& file) {
    write(file, "#!/bin/sh\n");
    fs::permissions(file, fs::perms::owner_all);
  }
  /// A desktop entry with these lines.
  static std::string entry(const std::string& lines) {
    return "[Desktop Entry]\nType=Application\nName=Quillmar\n" + lines + "\n";
  }

 private:
  TemporaryFolder folder_;

 public:
  Environment environment{{{"PATH", path("/bin")},
                           {"XDG_CONFIG_DIRS", path("/none") + ":" + path("/xdg")},
                           {"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}}};
  MemoryUserDirectories directories;
  PosixFileSystem files;
};

class AutostartLoginItemFixture {
 public:
  LoginItem& item() { return *item_; }
  void writeAsSomeoneElse() {
    folders_.addProgram(otherProgram_);
    folders_.write(folders_.userFile(), folders_.entry("Exec=quill\\\\\"\\\\$mar"));
  }
  void switchOff() {
    folders_.write(folders_.userFile(), folders_.read(folders_.userFile()) + "Hidden=true\n");
  }
  void removeProgram() {
    fs::remove(otherProgram_);
    const std::string elsewhere = folders_.path("/elsewhere");
    fs::rename(folders_.program(), elsewhere);
    item_.emplace(elsewhere, folders_.environment, folders_.directories, folders_.files);
  }

 private:
  AutostartFolders folders_;
  std::string otherProgram_ = folders_.path("/bin/quill\"$mar");
  std::optional<AutostartLoginItem> item_{folders_.item()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Autostart, LoginItemConformance, AutostartLoginItemFixture);

class AutostartLoginItemTest : public testing::Test {
 protected:
  AutostartLoginItemTest() { AutostartFolders::addProgram(folders_.path("/bin/true")); }

  LoginItemStatus statusWith(const std::string& lines) {
    AutostartFolders::write(folders_.userFile(), AutostartFolders::entry(lines));
    return folders_.item().status();
  }

  std::string exec() const {
    return "Exec=\"" + folders_.path("/bin/quill\\\\\"\\\\$mar") + "\"\n";
  }

  void enableBySystem() {
    AutostartFolders::addProgram(folders_.path("/bin/quill\"$mar"));
    AutostartFolders::write(folders_.systemFile(), AutostartFolders::entry(exec()));
  }

  AutostartFolders folders_;
};

TEST_F(AutostartLoginItemTest, TheFileIsADesktopEntryThatStartsTheProgramByItsAbsolutePath) {
  ASSERT_TRUE(folders_.item().registerItem().ok());
  EXPECT_THAT(AutostartFolders::read(folders_.userFile()),
              HasSubstr("\nExec=\"" + folders_.path("/bin a/quill\\\\\"\\\\$mar\"\n")));
  EXPECT_EQ(runCommand({"desktop-file-validate", folders_.userFile()}), "");
}

TEST_F(AutostartLoginItemTest, UnregisteringDeletesTheFile) {
  ASSERT_TRUE(folders_.item().registerItem().ok());
  ASSERT_TRUE(folders_.item().unregisterItem().ok());
  EXPECT_FALSE(fs::exists(folders_.userFile()));
}

TEST_F(AutostartLoginItemTest, AFileThatDesktopsSkipRequiresApproval) {
  AutostartFolders::addProgram(folders_.path("/bin/quill\"$mar"));
  EXPECT_EQ(statusWith(exec()), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(exec() + "Hidden=true"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusWith(exec() + "Hidden=false"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(exec() + "X-GNOME-Autostart-enabled=false"),
            LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusWith(exec() + "X-GNOME-Autostart-enabled=true"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(exec() + "OnlyShowIn=KDE;"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusWith(exec() + "OnlyShowIn=KDE;GNOME;"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(exec() + "NotShowIn=XFCE;GNOME"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusWith(exec() + "NotShowIn=XFCE;"), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, AFileThatStartsAnotherProgramRequiresApprovalAndIsKept) {
  EXPECT_EQ(statusWith("Exec=true"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(folders_.item().registerItem().error().description,
            "The file “" + folders_.userFile() +
                "” does not start this program, and Quillmar did not write it. Correct or delete "
                "the file.");
  EXPECT_EQ(AutostartFolders::read(folders_.userFile()), AutostartFolders::entry("Exec=true"));
}

TEST_F(AutostartLoginItemTest, AFileWhoseProgramIsMissingIsNotFound) {
  AutostartFolders::addProgram(folders_.path("/bin/quill\"$mar"));
  EXPECT_EQ(statusWith("Exec=missing"), LoginItemStatus::notFound);
  EXPECT_EQ(statusWith(exec() + "TryExec=missing"), LoginItemStatus::notFound);
  EXPECT_EQ(statusWith(exec() + "TryExec=true"), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(""), LoginItemStatus::notFound);
  AutostartFolders::write(folders_.userFile(), "nonsense");
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::notFound);
}

TEST_F(AutostartLoginItemTest, AFileThatIsSwitchedOffIsReportedAndKept) {
  const std::string text = AutostartFolders::entry(exec() + "Hidden=true");
  AutostartFolders::write(folders_.userFile(), text);
  EXPECT_EQ(folders_.item().registerItem().error().description,
            "Quillmar is switched off in the file “" + folders_.userFile() +
                "”: its key Hidden is true. Switch it on in the settings of your desktop, or "
                "delete the file.");
  EXPECT_EQ(AutostartFolders::read(folders_.userFile()), text);
}

TEST_F(AutostartLoginItemTest, AFileThatSomeoneElseWroteIsReportedAndKept) {
  AutostartFolders::addProgram(folders_.path("/bin/quill\"$mar"));
  ASSERT_EQ(statusWith(exec()), LoginItemStatus::enabled);
  EXPECT_EQ(folders_.item().unregisterItem().error().description,
            "The file “" + folders_.userFile() +
                "” starts Quillmar at login, and Quillmar did not write it. Switch it off in the "
                "settings of your desktop, or delete the file.");
  EXPECT_EQ(AutostartFolders::read(folders_.userFile()), AutostartFolders::entry(exec()));
}

TEST_F(AutostartLoginItemTest, AFileOfTheSystemCountsUnlessTheUserHasOne) {
  enableBySystem();
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::enabled);
  EXPECT_EQ(statusWith(exec() + "Hidden=true"), LoginItemStatus::requiresApproval);
}

TEST_F(AutostartLoginItemTest, RegisteringWritesNothingIfAFileOfTheSystemStartsTheProgram) {
  enableBySystem();
  EXPECT_TRUE(folders_.item().registerItem().ok());
  EXPECT_FALSE(fs::exists(folders_.userFile()));
}

TEST_F(AutostartLoginItemTest, UnregisteringHidesAFileOfTheSystemThatStartsTheProgram) {
  ASSERT_TRUE(folders_.item().registerItem().ok());
  enableBySystem();
  for (const char* const fileBefore : {"the user's", "none"}) {
    SCOPED_TRACE(fileBefore);
    ASSERT_EQ(folders_.item().status(), LoginItemStatus::enabled);
    EXPECT_TRUE(folders_.item().unregisterItem().ok());
    EXPECT_EQ(folders_.item().status(), LoginItemStatus::notRegistered);
    EXPECT_THAT(AutostartFolders::read(folders_.userFile()), HasSubstr("\nHidden=true\n"));
    EXPECT_EQ(runCommand({"desktop-file-validate", folders_.userFile()}), "");
    fs::remove(folders_.userFile());
  }
}

TEST_F(AutostartLoginItemTest, AHiddenFileCanBeUnregisteredAgainAndRegistered) {
  enableBySystem();
  ASSERT_TRUE(folders_.item().unregisterItem().ok());
  EXPECT_TRUE(folders_.item().unregisterItem().ok());
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::notRegistered);
  EXPECT_TRUE(folders_.item().registerItem().ok());
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, AHiddenFileThatTheDesktopSwitchesOnStartsTheProgram) {
  enableBySystem();
  ASSERT_TRUE(folders_.item().unregisterItem().ok());
  AutostartFolders::write(folders_.userFile(),
                          AutostartFolders::read(folders_.userFile()) + "Hidden=false\n");
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, WithoutThePathOfTheProgramRegisteringFailsAndWritesNothing) {
  AutostartLoginItem item("", folders_.environment, folders_.directories, folders_.files);
  EXPECT_EQ(item.registerItem().error().description,
            "The path of this program could not be read from “/proc/self/exe”.");
  EXPECT_FALSE(fs::exists(folders_.userFile()));
}

TEST_F(AutostartLoginItemTest, TheUsersFileReplacesOneOfTheSystemThatIsSwitchedOff) {
  AutostartFolders::write(folders_.systemFile(), AutostartFolders::entry(exec() + "Hidden=true"));
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::requiresApproval);
  EXPECT_TRUE(folders_.item().registerItem().ok());
  EXPECT_EQ(folders_.item().status(), LoginItemStatus::enabled);
}

using AutostartLoginItemDeathTest = AutostartLoginItemTest;

TEST_F(AutostartLoginItemDeathTest, AReadOnlyFolderIsAnErrorThatSaysWhy) {
  const std::string folder = folders_.path("/config/autostart");
  fs::create_directories(folder);
  EXPECT_ON_SMALL_DISK(folder, [&] {
    const auto makeReadOnly = [&](unsigned long flag) {
      ASSERT_EQ(mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | flag, nullptr), 0);
    };
    makeReadOnly(MS_RDONLY);
    EXPECT_EQ(
        folders_.item().registerItem().error().description,
        "The file “" + folders_.userFile() + "” could not be written: Read-only file system.");
    EXPECT_EQ(folders_.item().status(), LoginItemStatus::notRegistered);
    makeReadOnly(0);
    EXPECT_TRUE(folders_.item().registerItem().ok());
    makeReadOnly(MS_RDONLY);
    EXPECT_EQ(
        folders_.item().unregisterItem().error().description,
        "The file “" + folders_.userFile() + "” could not be deleted: Read-only file system.");
    EXPECT_EQ(folders_.item().status(), LoginItemStatus::enabled);
  });
}

}  // namespace
}  // namespace quillmar
