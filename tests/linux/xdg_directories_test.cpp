#include "platform/linux/files/xdg_directories.h"

#include <gtest/gtest.h>

namespace quillmar {
namespace {

XdgDirectories directoriesWith(std::map<std::string, std::string> variables) {
  return {Environment{std::move(variables)}, PasswordDatabase()};
}

TEST(XdgDirectories, TheEnvironmentNamesHomeAndApplicationSupport) {
  const XdgDirectories directories =
      directoriesWith({{"HOME", "/home/me"}, {"XDG_CONFIG_HOME", "/elsewhere"}});
  EXPECT_EQ(directories.homeDirectory(), "/home/me");
  EXPECT_EQ(directories.applicationSupportDirectories(), std::vector<std::string>{"/elsewhere"});
}

TEST(XdgDirectories, ApplicationSupportIsInTheHomeDirectoryByDefault) {
  for (const char* unusable : {"", "relative/path", "~/.config"}) {
    const XdgDirectories directories =
        directoriesWith({{"HOME", "/home/me"}, {"XDG_CONFIG_HOME", unusable}});
    EXPECT_EQ(directories.applicationSupportDirectories(),
              std::vector<std::string>{"/home/me/.config"});
  }
}

TEST(XdgDirectories, WithoutAnAbsoluteHomeThePasswordEntryCounts) {
  const std::string home = PasswordDatabase().homeDirectory().value_or("/");
  EXPECT_EQ(directoriesWith({}).homeDirectory(), home);
  EXPECT_EQ(directoriesWith({{"HOME", ""}}).homeDirectory(), home);
  EXPECT_EQ(directoriesWith({{"HOME", "here"}}).homeDirectory(), home);
}

TEST(XdgDirectories, AHomeThatIsTheRootGivesNoDoubleSlash) {
  EXPECT_EQ(directoriesWith({{"HOME", "/"}}).applicationSupportDirectories(),
            std::vector<std::string>{"/.config"});
}

}  // namespace
}  // namespace quillmar
