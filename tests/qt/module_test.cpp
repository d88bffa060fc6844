#include <QApplication>
#include <QStyle>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/qt/module/default_palettes.h"
#include "platform/qt/module/display_platform.h"
#include "platform/qt/module/qt_window_module.h"
#include "platform/qt/module/unexpected_exit.h"
#include "platform/qt/module/x11_settings.h"
#include "tests/qt/settings_portal.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A server that takes connections and never says a word.
class SilentServer {
 public:
  explicit SilentServer(std::string path) : path_(std::move(path)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(socket_, SOMAXCONN), 0);
  }
  ~SilentServer() {
    close(socket_);
    std::filesystem::remove(path_);
  }
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;

 private:
  std::string path_;
  int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

class QtWindowModuleTest : public testing::Test {
 protected:
  // The test program's own end is no accident.
  void TearDown() override { expectExit(); }

  Result<QtWindowModule*> start(std::map<std::string, std::string> variables) {
    environment_.variables = std::move(variables);
    return QtWindowModule::start(
        {.mainQueue = queues_.mainQueue(),
         .environment = environment_,
         .applicationId = "com.tovenworks.quillmar",
         .applicationName = "Quillmar",
         .applicationVersion = "1.0",
         .iconThemePath = "",
         .log = [](std::string_view line) { std::cerr << line << std::endl; }});
  }

  std::string refusal(std::map<std::string, std::string> variables) {
    const auto started = start(std::move(variables));
    EXPECT_FALSE(started.ok());
    EXPECT_EQ(qApp, nullptr);
    return started ? "" : started.error().description;
  }

 private:
  MemoryTaskQueues queues_;
  Environment environment_;
};

TEST_F(QtWindowModuleTest, WithoutAnyDisplayThereIsAnErrorAndNoEndOfTheProgram) {
  EXPECT_EQ(refusal({}),
            "Quillmar cannot show windows, because there is no display: neither WAYLAND_DISPLAY "
            "nor DISPLAY is set.");
}

TEST_F(QtWindowModuleTest, AnXServerThatIsGoneIsNamed) {
  EXPECT_EQ(refusal({{"DISPLAY", ":7777"}}),
            "Quillmar cannot show windows, because the X server “:7777” cannot be reached.");
}

TEST_F(QtWindowModuleTest, AWaylandServerThatIsGoneIsNamed) {
  EXPECT_EQ(refusal({{"WAYLAND_DISPLAY", "wayland-9"}, {"XDG_RUNTIME_DIR", "/nowhere"}}),
            "Quillmar cannot show windows, because the Wayland server at “/nowhere/wayland-9” "
            "cannot be reached.");
}

TEST_F(QtWindowModuleTest, AWaylandServerOfAnUnknownFolderIsAnError) {
  EXPECT_THAT(refusal({{"WAYLAND_DISPLAY", "wayland-9"}}), HasSubstr("XDG_RUNTIME_DIR is not set"));
}

TEST_F(QtWindowModuleTest, AnXServerThatTakesConnectionsAndIsSilentIsNamedEachTime) {
  const std::string number = std::to_string(10'000 + getpid());
  std::filesystem::create_directories("/tmp/.X11-unix");
  const SilentServer server("/tmp/.X11-unix/X" + number);
  const std::string silent =
      "Quillmar cannot show windows, because the X server “:" + number + "” does not answer.";
  EXPECT_EQ(refusal({{"DISPLAY", ":" + number}}), silent);
  EXPECT_EQ(refusal({{"DISPLAY", ":" + number}}), silent);
}

TEST_F(QtWindowModuleTest, AWaylandServerThatTakesConnectionsAndIsSilentIsNamedEachTime) {
  const std::string path = testing::TempDir() + "wayland-" + std::to_string(getpid());
  const SilentServer server(path);
  const std::string silent =
      "Quillmar cannot show windows, because the Wayland server at “" + path + "” does not answer.";
  EXPECT_EQ(refusal({{"WAYLAND_DISPLAY", path}}), silent);
  EXPECT_EQ(refusal({{"WAYLAND_DISPLAY", path}}), silent);
}

TEST_F(QtWindowModuleTest, ASocketPathThatIsTooLongIsAnError) {
  EXPECT_THAT(refusal({{"WAYLAND_DISPLAY", "/" + std::string(4000, 'x')}}),
              HasSubstr("cannot be reached"));
}

TEST_F(QtWindowModuleTest, APlatformWithoutADesktopIsNamed) {
  for (const char* platform : {"papyrus", "eglfs", "linuxfb:fb=/nonexistent"}) {
    const std::string name = std::string(platform).substr(0, std::string_view(platform).find(':'));
    EXPECT_EQ(refusal({{"QT_QPA_PLATFORM", platform}}),
              "Quillmar cannot show windows, because it does not run on “" + name +
                  "”, which QT_QPA_PLATFORM names.");
  }
}

TEST_F(QtWindowModuleTest, AFailedStartCanBeFollowedByOneThatSucceeds) {
  refusal({{"DISPLAY", ":7777"}});
  const auto started = start({{"QT_QPA_PLATFORM", "offscreen"}});
  ASSERT_TRUE(started.ok()) << started.error().description;
  EXPECT_EQ(QGuiApplication::platformName(), "offscreen");
}

TEST_F(QtWindowModuleTest, StartingKeepsTheLocaleAndTheSignalHandlers) {
  ASSERT_TRUE(start({{"QT_QPA_PLATFORM", "offscreen"}}).ok());
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
  EXPECT_STREQ(std::setlocale(LC_MESSAGES, nullptr), "C");
  struct sigaction action {};
  ASSERT_EQ(sigaction(SIGCHLD, nullptr, &action), 0);
  EXPECT_EQ(action.sa_handler, SIG_DFL);
}

TEST_F(QtWindowModuleTest, WindowsAreDarkWhereTheThemeInTheEnvironmentIs) {
  ASSERT_TRUE(start({{"QT_QPA_PLATFORM", "offscreen"}, {"GTK_THEME", "Adwaita:dark"}}).ok());
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), darkPalette().color(QPalette::Window));
}

TEST_F(QtWindowModuleTest, WindowsStayLightWhereTheThemeInTheEnvironmentIs) {
  ASSERT_TRUE(start({{"QT_QPA_PLATFORM", "offscreen"}, {"GTK_THEME", "Adwaita"}}).ok());
  EXPECT_NE(QApplication::palette().color(QPalette::Window), darkPalette().color(QPalette::Window));
}

TEST_F(QtWindowModuleTest, TheFirstWindowIsDarkWhereThePortalSaysSo) {
  const SettingsPortal portal;
  setenv("DBUS_SESSION_BUS_ADDRESS", portal.busAddress().c_str(), 1);
  ASSERT_TRUE(start({{"QT_QPA_PLATFORM", "offscreen"}}).ok());
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), darkPalette().color(QPalette::Window));
}

TEST_F(QtWindowModuleTest, WhenTheToolkitEndsTheProgramALineSaysWhy) {
  EXPECT_EXIT(
      {
        if (start({{"QT_QPA_PLATFORM", "offscreen"}})) std::exit(EXIT_SUCCESS);
      },
      testing::ExitedWithCode(EXIT_FAILURE), "the connection to the display was lost");
}

TEST(DisplayPlatformTest, AWaylandSessionsOwnDisplayComesBeforeTheXServerInIt) {
  EXPECT_THAT(wantedPlatforms({{{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}}}),
              ElementsAre("wayland", "xcb"));
}

TEST(DisplayPlatformTest, AnX11SessionsOwnDisplayComesBeforeACompositorInIt) {
  EXPECT_THAT(
      wantedPlatforms(
          {{{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}, {"XDG_SESSION_TYPE", "x11"}}}),
      ElementsAre("xcb", "wayland"));
}

TEST(DisplayPlatformTest, TheUsersOwnChoiceIsTaken) {
  EXPECT_THAT(wantedPlatforms({{{"QT_QPA_PLATFORM", "xcb;wayland"}, {"DISPLAY", ":0"}}}),
              ElementsAre("xcb", "wayland"));
}

/// Bytes as a settings daemon on this machine's byte order publishes them: two settings, a number
/// and a text.
constexpr std::string_view publishedSettings(
    "\0\0\0\0\7\0\0\0\2\0\0\0"             // little-endian, serial, two settings
    "\0\0\7\0Xft/DPI\0\0\0\0\0\0\x80\1\0"  // a number
    "\1\0\15\0Net/ThemeName\0\0\0\0\0\0\0\14\0\0\0Adwaita-dark",  // a text
    12 + 20 + 40);

TEST(X11SettingsTest, ATextIsFoundBehindOtherSettings) {
  EXPECT_EQ(stringSetting(publishedSettings, "Net/ThemeName"), "Adwaita-dark");
}

TEST(X11SettingsTest, SettingsCutAnywhereAreReadWithoutHarm) {
  for (std::size_t length = 0; length < publishedSettings.size(); ++length) {
    const std::string value = stringSetting(publishedSettings.substr(0, length), "Net/ThemeName");
    EXPECT_EQ(std::string("Adwaita-dark").substr(0, value.size()), value);
  }
}

TEST(X11SettingsTest, ANumberIsNoText) {
  EXPECT_THAT(stringSetting(publishedSettings, "Xft/DPI"), IsEmpty());
}

}  // namespace
}  // namespace quillmar
