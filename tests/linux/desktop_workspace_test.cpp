#include "platform/linux/workspace/desktop_workspace.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_file_system.h"
#include "platform/memory/memory_processes.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

using testing::IsEmpty;

/// A desktop whose programs write down what they are to open.
class DesktopWorkspaceTest : public testing::Test {
 protected:
  /// Makes a program the user's choice for the type; `start` is how its desktop file starts it.
  void addProgram(const std::string& name, const std::string& type,
                  const std::string& start) const {
    write("/data/applications/" + name + ".desktop",
          "[Desktop Entry]\nType=Application\nName=" + name + "\nMimeType=" + type + ";\n" + start +
              "\n");
    write("/config/mimeapps.list", "[Default Applications]\n" + type + "=" + name + ".desktop\n");
  }

  /// The same with a program that records its argument and the activation token that it received.
  void addNotingProgram(const std::string& name, const std::string& type) const {
    const std::string program = path("/" + name + ".sh");
    write("/" + name + ".sh",
          "#!/bin/sh\n"
          "printf '%s %s' \"$1\" \"${DESKTOP_STARTUP_ID-}${XDG_ACTIVATION_TOKEN-}\" >'" +
              path("/new") + "'\nmv '" + path("/new") + "' '" + path("/noted") + "'\n");
    fs::permissions(program, fs::perms::owner_all);
    addProgram(name, type, "Exec=" + program + " %u");
  }

  /// Opens the URL in another process. Returns the outcome that this prints.
  CommandOutput open(const std::string& url) const { return run("openURL", url); }

  /// What the program wrote down; waits for it.
  std::string noted() const {
    runMainLoopUntil([this] { return fs::exists(path("/noted")); });
    std::ifstream file(path("/noted"));
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  std::string path(const std::string& inFolder) const { return folder_.path() + inFolder; }

 private:
  CommandOutput run(const std::string& task, const std::string& argument) const {
    return runCommand({QUILLMAR_TEST_PROGRAM, task, argument},
                      {"XDG_DATA_HOME=" + path("/data"), "XDG_DATA_DIRS=" + path("/none"),
                       "XDG_CONFIG_HOME=" + path("/config"), "XDG_CONFIG_DIRS=" + path("/none"),
                       "DBUS_SESSION_BUS_ADDRESS=" + bus_.address(), "DESKTOP_STARTUP_ID=old",
                       "XDG_ACTIVATION_TOKEN=old"});
  }

  void write(const std::string& inFolder, const std::string& text) const {
    fs::create_directories(fs::path(path(inFolder)).parent_path());
    std::ofstream(path(inFolder)) << text;
  }

  TemporaryFolder folder_;
  PrivateBus bus_;
};

TEST_F(DesktopWorkspaceTest, AnAddressOpensWithTheUsersProgramForItsScheme) {
  addNotingProgram("browser", "x-scheme-handler/https");
  EXPECT_EQ(open("https://quillmar.example/packs?a=1&b=%20"), "opened");
  EXPECT_EQ(noted(), "https://quillmar.example/packs?a=1&b=%20 ");
}

TEST_F(DesktopWorkspaceTest, AMailAddressOpensWithTheMailProgram) {
  addNotingProgram("mailer", "x-scheme-handler/mailto");
  EXPECT_EQ(open("mailto:support@quillmar.example"), "opened");
  EXPECT_EQ(noted(), "mailto:support@quillmar.example ");
}

TEST_F(DesktopWorkspaceTest, WithoutAProgramForTheSchemeItSaysSo) {
  addProgram("browser", "x-scheme-handler/https", "Exec=/bin/true %u");
  EXPECT_EQ(open("mailto:support@quillmar.example"),
            "No program is set up to open “mailto:support@quillmar.example”.");
}

TEST_F(DesktopWorkspaceTest, AProgramThatIsNotInstalledIsIgnored) {
  addProgram("browser", "x-scheme-handler/https", "Exec=/nowhere/browser %u");
  EXPECT_EQ(open("https://quillmar.example/"),
            "No program is set up to open “https://quillmar.example/”.");
}

TEST_F(DesktopWorkspaceTest, AProgramThatCannotBeStartedIsReported) {
  addProgram("org.example.Browser", "x-scheme-handler/https", "DBusActivatable=true");
  EXPECT_EQ(open("https://quillmar.example/"),
            "“https://quillmar.example/” could not be opened: The name org.example.Browser was not "
            "provided by any .service files.");
}

TEST(DesktopWorkspaceTerminalTest, TheTerminalOutlivesThisProgramAndNobodyWaitsForIt) {
  MemoryFileSystem files;
  files.addFile("/usr/bin/xterm", "", 0755);
  const Environment environment{{{"PATH", "/usr/bin"}}};
  MemoryProcesses processes;
  DesktopWorkspace workspace(environment, files, processes);
  EXPECT_TRUE(workspace.openInTerminal("/t/a.command").ok());
  EXPECT_THAT(processes.launched(), IsEmpty());
  ASSERT_THAT(processes.launchedDetached(), testing::SizeIs(1));
  EXPECT_EQ(processes.launchedDetached().front().executable, "/usr/bin/xterm");
  EXPECT_EQ(processes.launchedDetached().front().arguments.back(), "/t/a.command");
}

TEST(DesktopWorkspaceTerminalTest, ATerminalThatCannotBeStartedIsAnError) {
  MemoryFileSystem files;
  const Environment environment{{{"PATH", "/usr/bin"}}};
  MemoryProcesses processes([](const Process&) {
    return ScriptedRun{.launchError = Error{"There are no more processes."}};
  });
  DesktopWorkspace workspace(environment, files, processes);
  EXPECT_THAT(workspace.openInTerminal("/t/a.command").error().description,
              testing::StartsWith("No terminal is installed. "));
  files.addFile("/usr/bin/xterm", "", 0755);
  EXPECT_EQ(workspace.openInTerminal("/t/a.command").error().description,
            "There are no more processes.");
}

}  // namespace
}  // namespace quillmar
