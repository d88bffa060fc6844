#include "platform/linux/files/posix_file_system.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/conformance/file_system_conformance.h"
#include "tests/linux/small_disk.h"
#include "tests/linux/temporary_folder.h"

/// The entries of the folders that were flushed, at that time.
static std::vector<std::string> flushedFolderEntries;

/// In place of the C library's function.
extern "C" int fsync(int file) {
  const std::string path =
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)).string();
  if (std::filesystem::is_directory(path)) {
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      flushedFolderEntries.push_back(entry.path().string());
    }
  }
  return static_cast<int>(syscall(SYS_fsync, file));
}

namespace quillmar {
namespace {

class PosixFileSystemFixture {
 public:
  PosixFileSystem& files() { return files_; }
  std::string root() { return folder_.path(); }
  void addSymbolicLink(const std::string& path, const std::string& target) {
    std::filesystem::create_symlink(target, path);
  }
  bool isSymbolicLink(const std::string& path) { return std::filesystem::is_symlink(path); }
  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
      names.push_back(entry.path().lexically_relative(folder_.path()).string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  TemporaryFolder folder_;
  PosixFileSystem files_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, FileSystemConformance, PosixFileSystemFixture);

class PosixFileSystemTest : public testing::Test {
 protected:
  std::string path(const std::string& name) { return folder_.path() + "/" + name; }

  TemporaryFolder folder_;
  PosixFileSystem files_;
};

TEST_F(PosixFileSystemTest, ANewFileHasTheDefaultPermissions) {
  const mode_t before = umask(027);
  EXPECT_TRUE(files_.openForOverwriting(path("a")).ok());
  umask(before);
  EXPECT_EQ(files_.permissions(path("a")).value(), 0640u);
}

TEST_F(PosixFileSystemTest, ReplacingSetsThePermissionsWhateverTheMaskIs) {
  const mode_t before = umask(077);
  EXPECT_TRUE(files_.replace(path("a"), "x", 0755).ok());
  umask(before);
  EXPECT_EQ(files_.permissions(path("a")).value(), 0755u);
}

TEST_F(PosixFileSystemTest, AFolderOfAnotherUserIsNotPrivate) {
  std::string foreign = "/";
  if (geteuid() == 0) {
    foreign = path("foreign");
    ASSERT_EQ(mkdir(foreign.c_str(), 0700), 0);
    ASSERT_EQ(chown(foreign.c_str(), 1, 1), 0);
  }
  EXPECT_EQ(files_.createPrivateDirectory(foreign).error().description,
            "The folder “" + foreign + "” could not be used: It belongs to another user.");
}

TEST_F(PosixFileSystemTest, TheFolderIsFlushedAfterTheRename) {
  flushedFolderEntries.clear();
  EXPECT_TRUE(files_.replace(path("a"), "x", 0600).ok());
  EXPECT_THAT(flushedFolderEntries, testing::ElementsAre(path("a")));
}

TEST_F(PosixFileSystemTest, OverwritingKeepsTheFilesIdentity) {
  std::ofstream(path("a")) << "old";
  struct stat before {};
  ASSERT_EQ(stat(path("a").c_str(), &before), 0);
  EXPECT_TRUE(files_.openForOverwriting(path("a")).value()->write(0, "new").ok());
  struct stat after {};
  ASSERT_EQ(stat(path("a").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(PosixFileSystemTest, AFileWhoseSizeTheSystemDoesNotSayIsReadWhole) {
  const Result<std::string> read = files_.read("/proc/self/status");
  ASSERT_TRUE(read.ok()) << read.error().description;
  EXPECT_THAT(read.value(), testing::HasSubstr("Pid:\t" + std::to_string(getpid())));
  EXPECT_GE(read.value().capacity(), read.value().size() + 64);
}

TEST_F(PosixFileSystemTest, PipesAndDevicesAreRefusedRatherThanWaitedFor) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& special : {path("pipe"), std::string("/dev/zero")}) {
    EXPECT_EQ(files_.read(special).error().description,
              "The file “" + special + "” could not be read: It is not a regular file.");
    EXPECT_EQ(files_.openForOverwriting(special).error().description,
              "The file “" + special + "” could not be written: It is not a regular file.");
  }
}

TEST_F(PosixFileSystemTest, APathThatIsNotUtf8IsToldInUtf8) {
  EXPECT_EQ(files_.read("/no/such/\xFF").error().description,
            "The file “/no/such/\uFFFD” could not be read: No such file or directory.");
}

TEST_F(PosixFileSystemTest, RelativePathsResolveAgainstTheWorkingDirectory) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  EXPECT_TRUE(files_.replace("a", "bytes", 0600).ok());
  EXPECT_EQ(files_.read("./a").value(), "bytes");
  std::filesystem::current_path(before);
  EXPECT_EQ(files_.read(path("a")).value(), "bytes");
}

TEST_F(PosixFileSystemTest, NoOperationLeavesADescriptorOpen) {
  const auto countDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = countDescriptors();
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(files_.replace(path("a"), "x", 0600).ok());
    EXPECT_TRUE(files_.read(path("a")).ok());
    EXPECT_TRUE(files_.openForOverwriting(path("a")).ok());
    EXPECT_FALSE(files_.replace(folder_.path(), "x", 0600).ok());
    EXPECT_FALSE(files_.read(folder_.path()).ok());
  }
  EXPECT_EQ(countDescriptors(), before);
}

class FullDiskDeathTest : public PosixFileSystemTest {
 protected:
  const std::string large_ = std::string(2 << 20, 'x');
};

TEST_F(FullDiskDeathTest, ReservingMoreThanThereIsFailsAndChangesNothing) {
  EXPECT_ON_SMALL_DISK(folder_.path(), [&] {
    EXPECT_TRUE(files_.replace(path("a"), "old", 0600).ok());
    const auto file = std::move(files_.openForOverwriting(path("a"))).value();
    EXPECT_EQ(file->reserve(large_.size()).error().description,
              "The file “" + path("a") + "” could not be written: No space left on device.");
    EXPECT_EQ(file->reserve(large_.size()).error().kind, ErrorKind::noSpace);
    EXPECT_EQ(files_.read(path("a")).value(), "old");
    EXPECT_TRUE(file->reserve(100000).ok());
  });
}

TEST_F(FullDiskDeathTest, WhatWasReservedCanBeWrittenWhenTheRestOfTheDiskIsFull) {
  EXPECT_ON_SMALL_DISK(folder_.path(), [&] {
    const auto file = std::move(files_.openForOverwriting(path("a"))).value();
    EXPECT_TRUE(file->reserve(500000).ok());
    const auto filler = std::move(files_.openForOverwriting(path("filler"))).value();
    EXPECT_FALSE(filler->write(0, large_).ok());
    EXPECT_TRUE(file->write(0, std::string(500000, 'y')).ok());
  });
}

TEST_F(FullDiskDeathTest, AFailedReplacementLeavesTheOldFileAndNothingElse) {
  EXPECT_ON_SMALL_DISK(folder_.path(), [&] {
    EXPECT_TRUE(files_.replace(path("a"), "old", 0600).ok());
    EXPECT_EQ(files_.replace(path("a"), large_, 0600).error().description,
              "The file “" + path("a") + "” could not be written: No space left on device.");
    EXPECT_EQ(files_.read(path("a")).value(), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
  });
}

}  // namespace
}  // namespace quillmar
