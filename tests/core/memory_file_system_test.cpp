#include "platform/memory/memory_file_system.h"

#include <gtest/gtest.h>

#include "tests/conformance/file_system_conformance.h"
#include "tests/core/memory_file_system_fixture.h"

namespace quillmar {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FileSystemConformance, MemoryFileSystemFixture);

TEST(MemoryFileSystem, ContainsTheAddedEntries) {
  MemoryFileSystem files;
  files.addFile("/a/b/file", "bytes", 0700);
  files.addSymbolicLink("/a/link", "b/file");
  EXPECT_EQ(files.paths(), (std::vector<std::string>{"/a", "/a/b", "/a/b/file", "/a/link"}));
  EXPECT_EQ(files.contents("/a/link"), "bytes");
  EXPECT_TRUE(files.isSymbolicLink("/a/link"));
  EXPECT_FALSE(files.isSymbolicLink("/a/b/file"));
  EXPECT_TRUE(files.isExecutableFile("a/b/file"));
  files.removeEntry("/a/b");
  EXPECT_EQ(files.paths(), (std::vector<std::string>{"/a", "/a/link"}));
  EXPECT_EQ(files.contents("/a/link"), std::nullopt);
}

TEST(MemoryFileSystem, ThePermissionsOfFilesBindTheUser) {
  MemoryFileSystem files;
  files.addFile("/unreadable", "secret", 0200);
  files.addFile("/readOnly", "old", 0400);
  EXPECT_EQ(files.read("/unreadable").error().description,
            "The file “/unreadable” could not be read: Permission denied.");
  EXPECT_EQ(files.openForOverwriting("/readOnly").error().description,
            "The file “/readOnly” could not be written: Permission denied.");
  EXPECT_EQ(files.contents("/unreadable"), "secret");
  EXPECT_TRUE(files.replace("/readOnly", "new", 0400).ok());
  EXPECT_EQ(files.contents("/readOnly"), "new");
}

TEST(MemoryFileSystem, NothingIsMadeInAReadOnlyFolder) {
  MemoryFileSystem files;
  files.addFile("/folder/file", "old");
  files.addFolder("/folder", 0500);
  EXPECT_FALSE(files.createDirectories("/folder/new").ok());
  EXPECT_FALSE(files.openForOverwriting("/folder/new").ok());
  EXPECT_FALSE(files.replace("/folder/file", "new", 0644).ok());
  EXPECT_TRUE(files.openForOverwriting("/folder/file").ok());
  EXPECT_EQ(files.paths(), (std::vector<std::string>{"/folder", "/folder/file"}));
  EXPECT_EQ(files.contents("/folder/file"), "old");
}

TEST(MemoryFileSystem, AForeignFolderIsNotPrivate) {
  MemoryFileSystem files;
  files.addForeignFolder("/folder");
  EXPECT_EQ(files.createPrivateDirectory("/folder").error().description,
            "The folder “/folder” could not be used: It belongs to another user.");
}

TEST(MemoryFileSystem, AFolderThatMayNotBeSearchedDoesNotTellWhatIsInIt) {
  MemoryFileSystem files;
  files.addFile("/folder/file", "bytes");
  files.addFolder("/folder", 0600);
  EXPECT_TRUE(files.exists("/folder/file"));
  EXPECT_TRUE(files.exists("/folder/nothing"));
  EXPECT_EQ(files.read("/folder/file").error().description,
            "The file “/folder/file” could not be read: Permission denied.");
}

}  // namespace
}  // namespace quillmar
