#include "platform/linux/workspace/desktop_workspace.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <gio/gunixfdlist.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/file_descriptor.h"
#include "platform/linux/bus/dbus_object.h"
#include "platform/memory/memory_file_system.h"
#include "platform/memory/memory_processes.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* fileManagerXml = R"(<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowItems"><arg direction="in" type="as"/><arg direction="in" type="s"/></method>
</interface></node>)";

constexpr const char* portalXml = R"(<node><interface name="org.freedesktop.portal.OpenURI">
  <method name="OpenDirectory">
    <arg direction="in" type="s"/><arg direction="in" type="h"/><arg direction="in" type="a{sv}"/>
    <arg direction="out" type="o"/>
  </method>
</interface></node>)";

/// A service that shows files, on a connection of its own. It notes what it is to show.
class RevealingService {
 public:
  RevealingService(const PrivateBus& bus, const char* name, const char* path, const char* xml,
                   decltype(DbusObject::Handlers::call) handler)
      : connection_(bus.connect()),
        name_(name),
        object_(connection_.get(), path, xml, {.call = std::move(handler), .property = nullptr}) {
    EXPECT_TRUE(takeName(connection_.get(), name_));
  }
  ~RevealingService() { releaseName(connection_.get(), name_); }
  RevealingService(const RevealingService&) = delete;
  RevealingService& operator=(const RevealingService&) = delete;

 private:
  GObjectPtr<GDBusConnection> connection_;
  const char* name_;
  DbusObject object_;
};

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
  CommandOutput reveal(const std::string& file) const { return run("revealFile", file); }

  /// What the program wrote down; waits for it.
  std::string noted() const {
    runMainLoopUntil([this] { return fs::exists(path("/noted")); });
    std::ifstream file(path("/noted"));
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  /// A file manager that answers with an error if `refusal` is not empty.
  void startFileManager(const std::string& refusal = {}) {
    services_.push_back(std::make_unique<RevealingService>(
        bus_, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", fileManagerXml,
        [this, refusal](const char*, GVariant* arguments, GDBusMethodInvocation* invocation) {
          if (!refusal.empty()) {
            return g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused",
                                                              refusal.c_str());
          }
          shown_.push_back(std::string("file manager: ") +
                           GStringPtr(g_variant_print(arguments, false)).get());
          g_dbus_method_invocation_return_value(invocation, nullptr);
        }));
  }

  /// Notes the path behind the descriptor that it receives.
  void startPortal() {
    services_.push_back(std::make_unique<RevealingService>(
        bus_, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", portalXml,
        [this](const char*, GVariant* arguments, GDBusMethodInvocation* invocation) {
          gint32 handle = -1;
          g_variant_get_child(arguments, 1, "h", &handle);
          GUnixFDList* const list =
              g_dbus_message_get_unix_fd_list(g_dbus_method_invocation_get_message(invocation));
          const FileDescriptor file(g_unix_fd_list_get(list, handle, nullptr));
          const fs::path link = "/proc/self/fd/" + std::to_string(file.number());
          shown_.push_back("portal: " + fs::read_symlink(link).string());
          g_dbus_method_invocation_return_value(
              invocation, g_variant_new("(o)", "/org/freedesktop/portal/desktop/request/1"));
        }));
  }

  std::string path(const std::string& inFolder) const { return folder_.path() + inFolder; }

  /// Every request to the services.
  std::vector<std::string> shown_;

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
  std::vector<std::unique_ptr<RevealingService>> services_;
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

TEST_F(DesktopWorkspaceTest, AFileIsSelectedInTheFileManager) {
  startFileManager();
  startPortal();
  EXPECT_EQ(reveal("/home/ada/a b/größe.json"), "revealed");
  EXPECT_THAT(shown_,
              ElementsAre("file manager: (['file:///home/ada/a%20b/gr%C3%B6%C3%9Fe.json'], '')"));
}

TEST_F(DesktopWorkspaceTest, WithoutAFileManagerOnTheBusThePortalShowsTheFile) {
  startPortal();
  const std::string file = path("/a b.json");
  std::ofstream{file};
  EXPECT_EQ(reveal(file), "revealed");
  EXPECT_THAT(shown_, ElementsAre("portal: " + file));
}

TEST_F(DesktopWorkspaceTest, AFileManagerThatFailsGivesWayToThePortal) {
  startFileManager("It is broken.");
  startPortal();
  EXPECT_EQ(reveal(path("")), "revealed");
  EXPECT_THAT(shown_, ElementsAre("portal: " + path("")));
}

TEST_F(DesktopWorkspaceTest, WithoutBothTheFolderOfTheFileOpens) {
  addNotingProgram("files", "inode/directory");
  fs::create_directory(path("/a b"));
  EXPECT_EQ(reveal(path("/a b/file.json")), "revealed");
  EXPECT_EQ(noted(), path("/a b") + " ");
}

TEST_F(DesktopWorkspaceTest, WithoutAnyFileManagerTheErrorSaysSo) {
  EXPECT_EQ(reveal(path("/file.json")), "No program is set up to open “file://" + path("") + "”.");
}

TEST(DesktopWorkspaceTerminalTest, TheTerminalOutlivesThisProgramAndNobodyWaitsForIt) {
  MemoryFileSystem files;
  files.addFile("/usr/bin/xterm", "", 0755);
  const Environment environment{{{"PATH", "/usr/bin"}}};
  MemoryProcesses processes;
  DesktopWorkspace workspace(environment, files, processes, nullptr);
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
  DesktopWorkspace workspace(environment, files, processes, nullptr);
  EXPECT_THAT(workspace.openInTerminal("/t/a.command").error().description,
              testing::StartsWith("No terminal is installed. "));
  files.addFile("/usr/bin/xterm", "", 0755);
  EXPECT_EQ(workspace.openInTerminal("/t/a.command").error().description,
            "There are no more processes.");
}

}  // namespace
}  // namespace quillmar
