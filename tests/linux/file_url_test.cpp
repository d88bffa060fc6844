#include "platform/linux/files/file_url.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

TEST(FileUrl, EscapesEverythingThatAUrlMayNotContain) {
  EXPECT_EQ(fileUrl("/a b/é%2F?#\xFF.json").value(), "file:///a%20b/%C3%A9%252F%3F%23%FF.json");
}

TEST(FileUrl, ARelativePathStartsAtTheCurrentFolder) {
  const std::string folder = std::filesystem::current_path().string();
  EXPECT_EQ(fileUrl("a.json").value(), "file://" + folder + "/a.json");
  EXPECT_EQ(fileUrl("../a.json").value(), "file://" + folder + "/../a.json");
}

TEST(FileUrl, ARelativePathInAFolderThatIsGoneIsAnError) {
  const auto before = std::filesystem::current_path();
  {
    const TemporaryFolder folder;
    std::filesystem::current_path(folder.path());
  }
  EXPECT_EQ(fileUrl("a.json").error().description,
            "The file “a.json” could not be found: No such file or directory.");
  EXPECT_EQ(fileUrl("/a.json").value(), "file:///a.json");
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace quillmar
