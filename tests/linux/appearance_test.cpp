#include "platform/linux/appearance/appearance.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/appearance/appearance_watch.h"
#include "platform/linux/bus/dbus_object.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"

namespace quillmar {

/// How tests print one.
void PrintTo(Appearance appearance, std::ostream* out) {
  constexpr std::array names = {"unknown", "light", "dark"};
  *out << names.at(static_cast<std::size_t>(appearance));
}

namespace {

namespace fs = std::filesystem;

constexpr const char* darkGtk = "[Settings]\ngtk-theme-name=Adwaita-dark\n";
constexpr const char* lightGtk = "[Settings]\ngtk-theme-name=Adwaita\n";
constexpr const char* darkKde =
    "[Colors:Button]\nBackgroundNormal=255,255,255\n\n[Colors:Header][Inactive]\n"
    "BackgroundNormal=255,255,255\n\n[Colors:Window]\nBackgroundNormal=42,46,50\n";
constexpr const char* lightLxqt = "[General]\ntheme=frost\n[Palette]\nwindow_color=#efefef\n";

TEST(AppearanceSettings, KnowsTheFilesOfThreeToolkits) {
  EXPECT_EQ(AppearanceSettings::ofText(darkKde), Appearance::dark);
  EXPECT_EQ(AppearanceSettings::ofText("[Colors:Window]\nBackgroundNormal = 239,240,241\r\n"),
            Appearance::light);
  // Eyes see green as brighter than red, and red as brighter than blue.
  EXPECT_EQ(AppearanceSettings::ofText("[Palette]\nwindow_color=#00ff00"), Appearance::light);
  EXPECT_EQ(AppearanceSettings::ofText("[Palette]\nwindow_color=#ff0000"), Appearance::dark);
  EXPECT_EQ(AppearanceSettings::ofText(lightLxqt), Appearance::light);
  EXPECT_EQ(AppearanceSettings::ofText("[Palette]\nwindow_color=#31363B"), Appearance::dark);
  EXPECT_EQ(AppearanceSettings::ofText(darkGtk), Appearance::dark);
  EXPECT_EQ(AppearanceSettings::ofText(lightGtk), Appearance::light);
  EXPECT_EQ(AppearanceSettings::ofText(
                "[Settings]\ngtk-theme-name=Arc\ngtk-application-prefer-dark-theme=1\n"),
            Appearance::dark);
}

TEST(AppearanceSettings, ATextThatSaysNothingDecidesNothing) {
  for (const char* const text :
       {"", "[Settings]\n", "gtk-theme-name=Adwaita-dark\n", "[Palette]\nwindow_color=#31363\n",
        "[Palette]\nwindow_color=#zzzzzz\n", "[Colors:Window]\nBackgroundNormal=1,2\n",
        "[Colors:Window]\nBackgroundNormal=1,2,x\n", "[Other]\nwindow_color=#000000\n"}) {
    EXPECT_EQ(AppearanceSettings::ofText(text), Appearance::unknown) << text;
  }
}

class AppearanceTest : public testing::Test {
 protected:
  AppearanceTest() { home_ = mkdtemp(home_.data()); }
  ~AppearanceTest() override { fs::remove_all(home_); }

  void write(const std::string& file, const std::string& text) const {
    const fs::path path = home_ + "/.config/" + file;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
  }

  AppearanceSettings settings(std::map<std::string, std::string> variables = {}) const {
    return {Environment{.variables = std::move(variables)}, home_};
  }

 private:
  std::string home_ = (fs::temp_directory_path() / "quillmar-XXXXXX").string();
};

TEST_F(AppearanceTest, TheDesktopsOwnFileComesBeforeThatOfGtk) {
  write("kdeglobals", darkKde);
  write("lxqt/lxqt.conf", lightLxqt);
  EXPECT_EQ(settings({{"XDG_CURRENT_DESKTOP", "KDE"}}).read(), Appearance::dark);
  EXPECT_EQ(settings({{"XDG_CURRENT_DESKTOP", "sway"}}).read(), Appearance::unknown);
  write("gtk-3.0/settings.ini", darkGtk);
  EXPECT_EQ(settings({{"XDG_CURRENT_DESKTOP", "LXQt"}}).read(), Appearance::light);
  EXPECT_EQ(settings().read(), Appearance::dark);
  EXPECT_EQ(settings({{"GTK_THEME", "Adwaita"}}).read(), Appearance::light);
}

/// A desktop portal on a bus of its own.
class Portal {
 public:
  Portal(const PrivateBus& bus, guint32 colorScheme)
      : connection_(bus.connect()), colorScheme_(colorScheme) {
    object_ = std::make_unique<DbusObject>(
        connection_.get(), "/org/freedesktop/portal/desktop", introspection,
        DbusObject::Handlers{
            .call =
                [this](const char*, GVariant*, GDBusMethodInvocation* invocation) {
                  g_dbus_method_invocation_return_value(
                      invocation, g_variant_new("(v)", g_variant_new_variant(
                                                           g_variant_new_uint32(colorScheme_))));
                },
            .property = [](const char*) { return nullptr; }});
    EXPECT_TRUE(takeName(connection_.get(), "org.freedesktop.portal.Desktop"));
  }

  void change(const char* key, guint32 value) {
    object_->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance", key,
                                                  g_variant_new_uint32(value)));
  }

 private:
  static constexpr const char* introspection = R"xml(<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="Read">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>)xml";

  GObjectPtr<GDBusConnection> connection_;
  guint32 colorScheme_;
  std::unique_ptr<DbusObject> object_;
};

TEST_F(AppearanceTest, FollowsThePortalWhichComesBeforeTheFiles) {
  write("gtk-3.0/settings.ini", lightGtk);
  const PrivateBus bus;
  const GObjectPtr<GDBusConnection> connection = bus.connect();
  std::vector<Appearance> seen;
  const AppearanceWatch watch(connection.get(), settings(),
                              [&](Appearance appearance) { seen.push_back(appearance); });
  EXPECT_EQ(watch.current(), Appearance::light);
  {
    Portal portal(bus, 1);
    runMainLoopUntil([&] { return watch.current() == Appearance::dark; });
    portal.change("contrast", 2);
    portal.change("color-scheme", 2);
    runMainLoopUntil([&] { return watch.current() == Appearance::light; });
    portal.change("color-scheme", 1);
    runMainLoopUntil([&] { return watch.current() == Appearance::dark; });
  }
  runMainLoopUntil([&] { return watch.current() == Appearance::light; });
  EXPECT_THAT(seen, testing::ElementsAre(Appearance::dark, Appearance::light, Appearance::dark,
                                         Appearance::light));
}

TEST_F(AppearanceTest, FollowsTheFiles) {
  write("gtk-3.0/settings.ini", lightGtk);
  const PrivateBus bus;
  const GObjectPtr<GDBusConnection> connection = bus.connect();
  const AppearanceWatch watch(connection.get(), settings(), [](Appearance) {});
  EXPECT_EQ(watch.current(), Appearance::light);
  write("gtk-3.0/settings.ini", darkGtk);
  runMainLoopUntil([&] { return watch.current() == Appearance::dark; });
}

}  // namespace
}  // namespace quillmar
