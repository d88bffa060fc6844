#include "platform/linux/status_item/status_notifier_item.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/files/bundle_directory.h"
#include "platform/log.h"
#include "tests/conformance/status_item_conformance.h"
#include "tests/linux/bus_client.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/panel_client.h"
#include "tests/linux/private_bus.h"

namespace quillmar {
namespace {

constexpr const char* statusIcon = "com.tovenworks.quillmar-statusIcon-symbolic";

StatusNotifierItemOptions testOptions() {
  return {.id = "com.tovenworks.quillmar",
          .title = "Quillmar",
          .iconThemePath = "/usr/share/icons",
          .pixmapDirectory = BundleDirectory::ofThisProgram().pixmapDirectory(),
          .panel = {}};
}

/// A status item on a bus of its own, and a panel that reads it.
class BusHarness {
 public:
  using Opened = PanelEntry;

  StatusItem& item() { return item_; }
  PanelClient& panel() { return panel_; }
  Opened open() { return panel_.layout(); }

  std::vector<ShownEntry> shown(const PanelEntry& menu) const {
    std::vector<ShownEntry> shown;
    for (const PanelEntry& entry : menu.children) {
      shown.push_back({title(entry), text(entry, "icon-name"),
                       entry.properties.contains("shortcut"), this->shown(entry),
                       !entry.properties.contains("enabled"), state(entry)});
    }
    return shown;
  }

  std::optional<Activation> click(const Opened& opened, const std::vector<std::string>& path,
                                  const Activation& activation = {}) {
    const PanelEntry* entry = &opened;
    for (const std::string& wanted : path) {
      const auto found = std::ranges::find_if(
          entry->children, [&](const PanelEntry& child) { return title(child) == wanted; });
      if (found == entry->children.end()) return std::nullopt;
      entry = &*found;
    }
    if (!activation.token.empty()) panel_.provideActivationToken(activation.token);
    if (!panel_.event(entry->id, "clicked", activation.timestamp).value) return std::nullopt;
    return activation;
  }

  void runTasks() { queue_.run(); }

  std::string icon() {
    const GVariantPtr name = panel_.itemProperty("IconName");
    return name ? g_variant_get_string(name.get(), nullptr) : "no answer";
  }

 private:
  static std::string text(const PanelEntry& entry, const std::string& property) {
    const auto found = entry.properties.find(property);
    if (found == entry.properties.end()) return {};
    return found->second.substr(1, found->second.size() - 2);
  }

  static std::optional<ControlState> state(const PanelEntry& entry) {
    if (!entry.properties.contains("toggle-type")) return std::nullopt;
    return entry.properties.at("toggle-state") == "1" ? ControlState::on : ControlState::off;
  }

  /// As a panel shows the label: a doubled underscore is one.
  static std::string title(const PanelEntry& entry) {
    std::string label = text(entry, "label");
    for (std::size_t at = label.find("__"); at != std::string::npos;
         at = label.find("__", at + 1)) {
      label.erase(at, 1);
    }
    return label;
  }

  PrivateBus bus_;
  GObjectPtr<GDBusConnection> connection_ = bus_.connect();
  HeldTaskQueue queue_;
  StatusNotifierItem item_{connection_.get(), queue_, testOptions()};
  PanelClient panel_{bus_, connection_.get()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Bus, StatusItemConformance, BusHarness);

constexpr auto unknown = StatusNotifierHost::unknown;
constexpr auto missing = StatusNotifierHost::missing;
constexpr auto present = StatusNotifierHost::present;

bool hasHost(const StatusNotifierItem& item) {
  return item.host() == present;
}

class StatusNotifierItemTest : public testing::Test {
 protected:
  std::string uniqueName() const { return g_dbus_connection_get_unique_name(connection.get()); }

  PrivateBus bus;
  GObjectPtr<GDBusConnection> connection = bus.connect();
  HeldTaskQueue queue;
};

TEST_F(StatusNotifierItemTest, RegistersWithAWatcherThatIsThereAlready) {
  const FakeWatcher watcher(bus, true);
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  EXPECT_TRUE(runMainLoopUntil([&] { return hasHost(item); }));
  EXPECT_THAT(watcher.registrations(), testing::ElementsAre(uniqueName()));
}

TEST_F(StatusNotifierItemTest, RegistersWithAWatcherThatComesLate) {
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  settle(connection.get());
  EXPECT_FALSE(hasHost(item));

  const FakeWatcher watcher(bus, true);
  EXPECT_TRUE(runMainLoopUntil([&] { return hasHost(item); }));
  EXPECT_THAT(watcher.registrations(), testing::ElementsAre(uniqueName()));
}

TEST_F(StatusNotifierItemTest, RegistersAgainWithAWatcherThatRestarted) {
  auto first = std::make_unique<FakeWatcher>(bus, true);
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  ASSERT_TRUE(runMainLoopUntil([&] { return hasHost(item); }));
  first.reset();
  ASSERT_TRUE(runMainLoopUntil([&] { return !hasHost(item); }));

  const FakeWatcher second(bus, true);
  EXPECT_TRUE(runMainLoopUntil([&] { return hasHost(item); }));
  EXPECT_THAT(second.registrations(), testing::ElementsAre(uniqueName()));
}

TEST_F(StatusNotifierItemTest, RegistersAgainWhenTheWatcherGetsItsHost) {
  FakeWatcher watcher(bus, false);
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  ASSERT_TRUE(runMainLoopUntil([&] { return watcher.registrations().size() == 1; }));
  settle(connection.get());
  EXPECT_FALSE(hasHost(item));

  watcher.announceHost();
  EXPECT_TRUE(runMainLoopUntil([&] { return watcher.registrations().size() == 2; }));
  EXPECT_TRUE(hasHost(item));
}

TEST_F(StatusNotifierItemTest, TellsWhenThereIsAHostAndWhenThereIsNone) {
  StatusNotifierItem item(connection.get(), queue, testOptions());
  std::vector<StatusNotifierHost> told;
  item.setHostHandler([&](StatusNotifierHost host) {
    EXPECT_EQ(item.host(), host);
    told.push_back(host);
  });
  const auto hear = [&](const std::vector<StatusNotifierHost>& all) {
    ASSERT_TRUE(runMainLoopUntil([&] { return told.size() >= all.size(); }));
    settle(connection.get());
    EXPECT_EQ(told, all);
    told.clear();
  };
  hear({missing});
  auto watcher = std::make_unique<FakeWatcher>(bus, false);
  hear({unknown, missing});
  watcher->announceHost();
  hear({present});
  watcher->announceHost();
  hear({});
  watcher.reset();
  hear({missing});
  watcher = std::make_unique<FakeWatcher>(bus, true);
  hear({unknown, present});
}

TEST_F(StatusNotifierItemTest, WithoutAWatcherTheHostIsMissing) {
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  EXPECT_EQ(item.host(), unknown);
  EXPECT_TRUE(runMainLoopUntil([&] { return item.host() == missing; }));
}

TEST_F(StatusNotifierItemTest, AWatcherThatIsSilentMayStillHaveAHost) {
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  ASSERT_TRUE(runMainLoopUntil([&] { return item.host() == missing; }));
  constexpr bool isSilent = true;
  auto silent = std::make_unique<FakeWatcher>(bus, true, isSilent);
  ASSERT_TRUE(runMainLoopUntil([&] { return item.host() == unknown; }));
  settle(connection.get());
  EXPECT_EQ(item.host(), unknown);
  silent.reset();
  EXPECT_TRUE(runMainLoopUntil([&] { return item.host() == missing; }));
}

TEST_F(StatusNotifierItemTest, MayGoAwayWhileItsCallsAreUnderWay) {
  FakeWatcher watcher(bus, true);
  {
    const StatusNotifierItem item(connection.get(), queue, testOptions());
    ASSERT_TRUE(runMainLoopUntil([&] { return !watcher.registrations().empty(); }));
  }
  settle(connection.get());
  watcher.announceHost();
  settle(connection.get());
  EXPECT_EQ(watcher.registrations().size(), 1u);
}

TEST_F(StatusNotifierItemTest, DescribesItselfToPanels) {
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  PanelClient panel(bus, connection.get());
  EXPECT_EQ(panel.itemPropertyText("Category"), "'ApplicationStatus'");
  EXPECT_EQ(panel.itemPropertyText("Id"), "'com.tovenworks.quillmar'");
  EXPECT_EQ(panel.itemPropertyText("Title"), "'Quillmar'");
  EXPECT_EQ(panel.itemPropertyText("Status"), "'Active'");
  EXPECT_EQ(panel.itemPropertyText("ItemIsMenu"), "true");
  EXPECT_EQ(panel.itemPropertyText("Menu"), "'/MenuBar'");
  EXPECT_EQ(panel.itemPropertyText("IconThemePath"), "'/usr/share/icons'");
  EXPECT_EQ(panel.itemPropertyText("IconAccessibleDesc"), "'Quillmar'");
  EXPECT_EQ(panel.itemPropertyText("AttentionIconName"), "''");
  EXPECT_EQ(panel.itemPropertyText("OverlayIconPixmap"), "[]");
}

TEST_F(StatusNotifierItemTest, EscapesMarkupInWhatPanelsTakeForMarkup) {
  StatusNotifierItemOptions options = testOptions();
  options.title = "Ink & <Quill>";
  const StatusNotifierItem item(connection.get(), queue, options);
  PanelClient panel(bus, connection.get());
  EXPECT_EQ(panel.itemPropertyText("ToolTip"), "('', [], 'Ink &amp; &lt;Quill&gt;', '')");
  EXPECT_EQ(panel.itemPropertyText("Title"), "'Ink &amp; &lt;Quill&gt;'");
  EXPECT_EQ(panel.itemPropertyText("IconAccessibleDesc"), "'Ink & <Quill>'");
}

TEST_F(StatusNotifierItemTest, SendsItsIconAsPixelsOfSeveralSizes) {
  StatusNotifierItem item(connection.get(), queue, testOptions());
  PanelClient panel(bus, connection.get());
  EXPECT_EQ(panel.itemPropertyText("IconPixmap"), "[]");
  item.setImage(Image{.name = statusIcon, .isTemplate = true, .pointSize = {}, .weight = {}});

  const GVariantPtr pixmaps = panel.itemProperty("IconPixmap");
  std::vector<int> sizes;
  for (gsize i = 0; i < g_variant_n_children(pixmaps.get()); ++i) {
    const GVariantPtr pixmap(g_variant_get_child_value(pixmaps.get(), i));
    gint32 width = 0;
    gint32 height = 0;
    GVariant* bytes = nullptr;
    g_variant_get(pixmap.get(), "(ii@ay)", &width, &height, &bytes);
    const GVariantPtr owned(bytes);
    EXPECT_EQ(width, height);
    EXPECT_EQ(g_variant_get_size(bytes), static_cast<gsize>(width * height * 4));
    sizes.push_back(width);

    // Somewhere it is opaque, somewhere transparent, and the colour follows the alpha byte.
    const auto* data = static_cast<const unsigned char*>(g_variant_get_data(bytes));
    bool opaque = false;
    bool transparent = false;
    for (gsize at = 0; at < g_variant_get_size(bytes); at += 4) {
      opaque = opaque || data[at] == 0xFF;
      transparent = transparent || data[at] == 0;
      EXPECT_THAT(std::vector<int>({data[at + 1], data[at + 2], data[at + 3]}),
                  testing::Each(0x80));
    }
    EXPECT_TRUE(opaque);
    EXPECT_TRUE(transparent);
  }
  EXPECT_THAT(sizes, testing::ElementsAre(16, 22, 24, 32, 48));
}

/// The grey level of the first pixmap, whose pixels have it all.
int greyOfIcon(PanelClient& panel) {
  const GVariantPtr pixmaps = panel.itemProperty("IconPixmap");
  const GVariantPtr first(g_variant_get_child_value(pixmaps.get(), 0));
  const GVariantPtr bytes(g_variant_get_child_value(first.get(), 2));
  return static_cast<const unsigned char*>(g_variant_get_data(bytes.get()))[1];
}

double luminance(int grey) {
  const double part = grey / 255.0;
  return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double contrast(int grey, int otherGrey) {
  const auto [darker, lighter] = std::minmax({luminance(grey), luminance(otherGrey)});
  return (lighter + 0.05) / (darker + 0.05);
}

TEST_F(StatusNotifierItemTest, PixelsStandOutFromPanelsOfTheDesktopsAppearance) {
  constexpr int white = 0xff;
  constexpr int black = 0;
  constexpr int lightPanel = 0xcc;
  constexpr int darkPanel = 0x4d;
  StatusNotifierItem item(connection.get(), queue, testOptions());
  item.setImage(Image{.name = statusIcon, .isTemplate = true, .pointSize = {}, .weight = {}});
  PanelClient panel(bus, connection.get());
  for (const int background : {white, black, 0xe1, 0x36}) {
    EXPECT_GE(contrast(greyOfIcon(panel), background), 3) << background;
  }
  item.setAppearance(Appearance::dark);
  EXPECT_GE(contrast(greyOfIcon(panel), darkPanel), 7);
  item.setAppearance(Appearance::light);
  EXPECT_GE(contrast(greyOfIcon(panel), lightPanel), 7);
}

/// The properties of the menu's one entry, which has a symbol, on a panel.
std::map<std::string, std::string> entryOn(PanelClient& panel, StatusNotifierItem& item) {
  ActionEntry entry;
  entry.title = "Terminal";
  entry.image = Image{
      .name = "quillmar-terminal-symbolic", .isTemplate = true, .pointSize = {}, .weight = {}};
  item.setMenu(Menu{.title = "", .entries = {entry}});
  return panel.layout().children.front().properties;
}

TEST_F(StatusNotifierItemTest, SendsNamesOfIconsThatThePanelFindsAndRecolours) {
  StatusNotifierItemOptions options = testOptions();
  options.areIconsRegistered = false;
  StatusNotifierItem item(connection.get(), queue, options);
  PanelClient panel(bus, connection.get());
  const auto entry = entryOn(panel, item);
  EXPECT_EQ(entry.at("icon-name"), "'quillmar-terminal-symbolic'");
  EXPECT_FALSE(entry.contains("icon-data"));
}

TEST_F(StatusNotifierItemTest, SendsPicturesOfIconsThatThePanelDoesNotFind) {
  StatusNotifierItemOptions options = testOptions();
  options.panel.findsIconsInThemePath = false;
  for (const bool isRegistered : {false, true}) {
    options.areIconsRegistered = isRegistered;
    StatusNotifierItem item(connection.get(), queue, options);
    PanelClient panel(bus, connection.get());
    const auto entry = entryOn(panel, item);
    EXPECT_EQ(entry.contains("icon-data"), !isRegistered);
    EXPECT_EQ(entry.contains("icon-name"), isRegistered);
  }
}

TEST_F(StatusNotifierItemTest, PicturesFollowTheDesktopsAppearance) {
  StatusNotifierItemOptions options = testOptions();
  options.panel.recoloursIcons = false;
  StatusNotifierItem item(connection.get(), queue, options);
  PanelClient panel(bus, connection.get());
  const std::string light = entryOn(panel, item).at("icon-data");
  panel.settleSignals();
  const auto before = panel.layoutUpdates();
  item.setAppearance(Appearance::dark);
  panel.settleSignals();
  ASSERT_EQ(panel.layoutUpdates().size(), before.size() + 1);
  EXPECT_GT(panel.layoutUpdates().back(), before.back());
  EXPECT_NE(panel.layout().children.front().properties.at("icon-data"), light);
}

TEST_F(StatusNotifierItemTest, AChangeOfAppearanceAnnouncesANewIcon) {
  StatusNotifierItem item(connection.get(), queue, testOptions());
  PanelClient panel(bus, connection.get());
  item.setImage(Image{.name = statusIcon, .isTemplate = true, .pointSize = {}, .weight = {}});
  item.setAppearance(Appearance::dark);
  item.setAppearance(Appearance::dark);
  panel.settleSignals();
  EXPECT_EQ(panel.newIconCount(), 2);
}

TEST_F(StatusNotifierItemTest, AnnouncesAnIconOnlyIfItChanges) {
  StatusNotifierItem item(connection.get(), queue, testOptions());
  PanelClient panel(bus, connection.get());
  const Image image{.name = statusIcon, .isTemplate = true, .pointSize = {}, .weight = {}};
  item.setImage(image);
  item.setImage(image);
  panel.settleSignals();
  EXPECT_EQ(panel.newIconCount(), 1);
  item.setImage(std::nullopt);
  panel.settleSignals();
  EXPECT_EQ(panel.newIconCount(), 2);
}

TEST_F(StatusNotifierItemTest, AnActionThatWaitsWhenTheItemGoesAwayIsDropped) {
  int runs = 0;
  {
    StatusNotifierItem item(connection.get(), queue, testOptions());
    item.setActionHandler([&](const ActionEntry&, const Activation&) { ++runs; });
    item.setMenu(menuWith({itemEntry("Title", "1")}));
    PanelClient panel(bus, connection.get());
    EXPECT_TRUE(panel.event(panel.layout().children.at(0).id, "clicked").value);
  }
  queue.run();
  EXPECT_EQ(runs, 0);
}

class OpeningTest : public StatusNotifierItemTest {
 protected:
  struct Opened {
    std::optional<ScreenPoint> position;
    std::string token;

    bool operator==(const Opened&) const = default;
  };

  void show(const StatusNotifierItemOptions& options) {
    item.emplace(connection.get(), queue, options);
    item->setOpenHandler([this](std::optional<ScreenPoint> position, const Activation& activation) {
      opened.push_back({position, activation.token});
    });
  }

  BusReply call(const char* method, int x, int y) {
    return panel.callItem(method, g_variant_new("(ii)", x, y));
  }

  PanelClient panel{bus, connection.get()};
  std::optional<StatusNotifierItem> item;
  std::vector<Opened> opened;
};

TEST_F(OpeningTest, EveryClickOpensTheMenuAfterItsAnswer) {
  show(testOptions());
  panel.provideActivationToken("token");
  EXPECT_TRUE(call("Activate", 300, 200).value);
  EXPECT_TRUE(call("SecondaryActivate", 1, 0).value);
  EXPECT_TRUE(call("ContextMenu", -5, 7).value);
  EXPECT_THAT(opened, testing::IsEmpty());
  queue.run();
  EXPECT_EQ(opened, (std::vector<Opened>{{ScreenPoint{300, 200}, "token"},
                                         {ScreenPoint{1, 0}, ""},
                                         {ScreenPoint{-5, 7}, ""}}));
}

TEST_F(OpeningTest, ZerosAreNoPosition) {
  show(testOptions());
  call("Activate", 0, 0);
  queue.run();
  EXPECT_EQ(opened, (std::vector<Opened>{{std::nullopt, ""}}));
}

TEST_F(OpeningTest, APanelThatOpensTheMenuItselfIsRefused) {
  StatusNotifierItemOptions options = testOptions();
  options.panel.opensMenuItself = true;
  show(options);
  EXPECT_EQ(call("Activate", 300, 200).errorName, "org.freedesktop.DBus.Error.UnknownMethod");
  queue.run();
  EXPECT_THAT(opened, testing::IsEmpty());
}

TEST_F(OpeningTest, AClickThatWaitsWhenTheItemGoesAwayIsDropped) {
  show(testOptions());
  call("Activate", 300, 200);
  item.reset();
  queue.run();
  EXPECT_THAT(opened, testing::IsEmpty());
}

PanelTraits traitsOn(const std::string& desktop) {
  return panelTraitsOf({.variables = {{"XDG_CURRENT_DESKTOP", desktop}}});
}

TEST(PanelTraits, FollowTheDesktop) {
  constexpr auto qtKeys = ShortcutKeyNames::qtKeys;
  EXPECT_EQ(panelTraitsOf({}), PanelTraits());
  EXPECT_EQ(traitsOn("XFCE"), PanelTraits());
  EXPECT_EQ(traitsOn("KDE"), (PanelTraits{.shortcutKeyNames = qtKeys, .opensMenuItself = true}));
  EXPECT_EQ(traitsOn("LXQt"), (PanelTraits{.shortcutKeyNames = qtKeys,
                                           .recoloursIcons = false,
                                           .findsIconsInThemePath = false}));
  EXPECT_EQ(traitsOn("MATE"), (PanelTraits{.findsIconsInThemePath = false}));
  EXPECT_EQ(
      traitsOn("ubuntu:GNOME"),
      (PanelTraits{.opensMenuItself = true, .findsIconsInThemePath = false, .hasDarkMenus = true}));
}

TEST(StatusNotifierItem, APanelThatRefusesItIsToldInAFullSentence) {
  constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
  const PrivateBus bus;
  // It has the name, but no object behind it.
  const auto panel = bus.connect();
  ASSERT_TRUE(takeName(panel.get(), watcher));
  const auto connection = bus.connect();
  HeldTaskQueue queue;
  testing::internal::CaptureStdout();
  const StatusNotifierItem item(connection.get(), queue, testOptions());
  settle(connection.get());
  // Answered after the registration.
  callOnBus(connection.get(), {watcher, "/StatusNotifierWatcher", watcher}, "Unknown", nullptr);
  flushStandardOutputLog();
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              testing::MatchesRegex("The panel rejected the status icon "
                                    "\\([^:]*[^.]\\)\\.\n"));
}

}  // namespace
}  // namespace quillmar
