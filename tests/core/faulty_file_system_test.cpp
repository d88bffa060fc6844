#include "platform/memory/faulty_file_system.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_file_system.h"
#include "tests/conformance/file_system_conformance.h"
#include "tests/core/memory_file_system_fixture.h"

namespace quillmar {
namespace {

/// A wrapper without faults is like the file system that it wraps.
class FaultlessFileSystemFixture : public MemoryFileSystemFixture {
 public:
  FaultyFileSystem& files() { return faulty_; }

 private:
  FaultyFileSystem faulty_{files_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Faultless, FileSystemConformance, FaultlessFileSystemFixture);

class FaultyFileSystemTest : public testing::Test {
 protected:
  FaultyFileSystemTest() { memory_.addFile("/file", "0123456789"); }

  /// Overwrites /file as a careful program does, giving up at the first failure.
  Result<void> overwrite(std::string_view bytes) {
    auto opened = faulty_.openForOverwriting("/file");
    if (!opened) return opened.error();
    FileOverwrite& file = *opened.value();
    if (auto reserved = file.reserve(bytes.size()); !reserved) return reserved;
    if (auto written = file.write(0, bytes); !written) return written;
    return file.setLength(bytes.size());
  }

  MemoryFileSystem memory_;
  FaultyFileSystem faulty_{memory_};
};

TEST_F(FaultyFileSystemTest, TheNthCallFailsAndTheOthersDoNot) {
  faulty_.failCall(FileOperation::read, 2, {"No luck."});
  EXPECT_TRUE(faulty_.read("/file").ok());
  EXPECT_EQ(faulty_.read("/file").error().description, "No luck.");
  EXPECT_TRUE(faulty_.read("/file").ok());
}

TEST_F(FaultyFileSystemTest, EveryOperationCanFailWithoutAnEffect) {
  for (const FileOperation operation :
       {FileOperation::createDirectories, FileOperation::read, FileOperation::permissions,
        FileOperation::replace, FileOperation::openForOverwriting, FileOperation::reserve,
        FileOperation::write, FileOperation::setLength}) {
    MemoryFileSystem memory;
    memory.addFile("/file", "0123");
    FaultyFileSystem faulty(memory);
    faulty.failEveryCall(operation, {"No luck."});
    const auto expectFailure = [&](FileOperation which, const auto& result) {
      EXPECT_EQ(result.ok(), which != operation);
    };
    expectFailure(FileOperation::createDirectories, faulty.createDirectories("/folder"));
    expectFailure(FileOperation::read, faulty.read("/file"));
    expectFailure(FileOperation::permissions, faulty.permissions("/file"));
    expectFailure(FileOperation::replace, faulty.replace("/other", "x", 0644));
    auto opened = faulty.openForOverwriting("/file");
    expectFailure(FileOperation::openForOverwriting, opened);
    if (opened) {
      expectFailure(FileOperation::reserve, opened.value()->reserve(1));
      expectFailure(FileOperation::write, opened.value()->write(0, "ab"));
      expectFailure(FileOperation::setLength, opened.value()->setLength(3));
    }
    EXPECT_EQ(memory.exists("/folder"), operation != FileOperation::createDirectories);
    EXPECT_EQ(memory.exists("/other"), operation != FileOperation::replace);
    const std::string written = operation == FileOperation::openForOverwriting ? "0123"
                                : operation == FileOperation::write            ? "012"
                                : operation == FileOperation::setLength        ? "ab23"
                                                                               : "ab2";
    EXPECT_EQ(memory.contents("/file"), written);
  }
}

TEST_F(FaultyFileSystemTest, AFullDiskTakesTheBytesThatFit) {
  faulty_.limitSpace(4);
  EXPECT_EQ(overwrite("abcdefgh").error().description,
            "The file “/file” could not be written: No space left on device.");
  EXPECT_EQ(memory_.contents("/file"), "abcd456789");
  EXPECT_FALSE(overwrite("x").ok());
}

TEST_F(FaultyFileSystemTest, AFullDiskLeavesAFileThatIsReplacedAsItIs) {
  faulty_.limitSpace(4);
  EXPECT_FALSE(faulty_.replace("/file", "abcdefgh", 0600).ok());
  EXPECT_EQ(memory_.contents("/file"), "0123456789");
  EXPECT_TRUE(faulty_.replace("/file", "abcd", 0600).ok());
  EXPECT_EQ(memory_.contents("/file"), "abcd");
}

TEST_F(FaultyFileSystemTest, AKillLeavesWhatTheStepsBeforeItHaveDone) {
  ASSERT_TRUE(overwrite("abc").ok());
  EXPECT_EQ(faulty_.stepCount(), 4u);
  EXPECT_EQ(memory_.contents("/file"), "abc");
  const std::vector<std::string> expected = {"abc", "abc", "abc", "xyc", "xy"};
  for (std::size_t steps = 0; steps < expected.size(); ++steps) {
    memory_.addFile("/file", "abc");
    faulty_.killAfterSteps(steps);
    EXPECT_TRUE(overwrite("xy").ok());
    EXPECT_EQ(memory_.contents("/file"), expected[steps]) << "after " << steps << " steps";
  }
}

TEST_F(FaultyFileSystemTest, AKillInsideAWriteLeavesItsBeginning) {
  faulty_.killAfterSteps(2, 3);
  EXPECT_TRUE(overwrite("abcdefgh").ok());
  EXPECT_EQ(memory_.contents("/file"), "abc3456789");
  EXPECT_TRUE(overwrite("zzz").ok());
  EXPECT_EQ(memory_.contents("/file"), "abc3456789");
}

TEST_F(FaultyFileSystemTest, AfterAKillNothingIsMade) {
  faulty_.killAfterSteps(0);
  EXPECT_TRUE(faulty_.createDirectories("/folder").ok());
  EXPECT_TRUE(faulty_.replace("/new", "x", 0644).ok());
  EXPECT_TRUE(faulty_.openForOverwriting("/other").ok());
  EXPECT_EQ(memory_.paths(), std::vector<std::string>{"/file"});
}

}  // namespace
}  // namespace quillmar
