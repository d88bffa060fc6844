#include "platform/linux/status_item/dbus_menu.h"

#include <limits>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/conformance/status_item_conformance.h"
#include "tests/linux/bus_client.h"
#include "tests/linux/panel_client.h"
#include "tests/linux/private_bus.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr const char* invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr int unknownId = 4711;

class DbusMenuTest : public testing::Test {
 protected:
  PanelEntry onlyEntry(const Menu& shown) {
    menu.setMenu(shown);
    const PanelEntry root = panel.layout();
    EXPECT_EQ(root.children.size(), 1u);
    return root.children.at(0);
  }

  std::string reply(const char* method, GVariant* arguments) {
    const BusReply answer = panel.callMenu(method, arguments);
    return answer.value ? printed(answer.value.get()) : answer.errorName;
  }

  PrivateBus bus;
  GObjectPtr<GDBusConnection> connection = bus.connect();
  std::vector<std::string> clicked;
  std::vector<std::uint32_t> timestamps;
  DbusMenu menu{connection.get(),
                {.iconThemePath = "/opt/icons", .style = {}},
                [this](const ActionEntry& entry, std::uint32_t timestamp) {
                  clicked.push_back(entry.title);
                  timestamps.push_back(timestamp);
                }};
  PanelClient panel{bus, connection.get()};
};

ActionEntry withKey(const std::string& character, std::uint64_t mask) {
  ActionEntry entry = itemEntry("Title", "1");
  entry.keyEquivalent = KeyEquivalent{.character = character, .modifierMask = mask};
  return entry;
}

Menu menuWithFolder() {
  SubmenuEntry inner;
  inner.title = "Inner folder";
  inner.submenu = menuWith({itemEntry("Deep", "3")});
  SubmenuEntry outer;
  outer.title = "Folder";
  outer.submenu = menuWith({itemEntry("First", "2"), inner});
  return menuWith({itemEntry("Top", "1"), outer});
}

TEST_F(DbusMenuTest, SpeaksVersion3OfTheProtocol) {
  EXPECT_EQ(panel.menuPropertyText("Version"), "3");
  EXPECT_EQ(panel.menuPropertyText("Status"), "'normal'");
  EXPECT_EQ(panel.menuPropertyText("TextDirection"), "'ltr'");
  EXPECT_EQ(panel.menuPropertyText("IconThemePath"), "['/opt/icons']");
}

TEST_F(DbusMenuTest, IsASubmenuWithNothingInItAtFirst) {
  const PanelEntry root = panel.layout();
  EXPECT_EQ(root.id, 0);
  EXPECT_THAT(root.properties, ElementsAre(Pair("children-display", "'submenu'")));
  EXPECT_THAT(root.children, IsEmpty());
}

TEST_F(DbusMenuTest, SendsOneLayoutUpdatedForEachMenu) {
  menu.setMenu(menuWithFolder());
  menu.setMenu(menuWith({itemEntry("Top", "1")}));
  panel.settleSignals();
  ASSERT_EQ(panel.layoutUpdates().size(), 2u);
  EXPECT_LT(panel.layoutUpdates()[0], panel.layoutUpdates()[1]);

  const BusReply layout = panel.callMenu("GetLayout", g_variant_new("(iias)", 0, 0, nullptr));
  const GVariantPtr revision(g_variant_get_child_value(layout.value.get(), 0));
  EXPECT_EQ(g_variant_get_uint32(revision.get()), panel.layoutUpdates()[1]);
}

TEST_F(DbusMenuTest, SendsNoLayoutUpdatedForAnEqualMenu) {
  menu.setMenu(menuWithFolder());
  menu.setMenu(menuWithFolder());
  panel.settleSignals();
  EXPECT_EQ(panel.layoutUpdates().size(), 1u);
}

TEST_F(DbusMenuTest, SendsLayoutUpdatedForEveryDifference) {
  ActionEntry entry = itemEntry("Title", "1");
  std::size_t updates = 0;
  const auto expectUpdate = [&](const char* difference) {
    menu.setMenu(menuWith({entry}));
    panel.settleSignals();
    EXPECT_EQ(panel.layoutUpdates().size(), ++updates) << difference;
  };
  expectUpdate("the first entry");
  entry.title = "Other";
  expectUpdate("title");
  entry.id = "2";
  expectUpdate("id");
  entry.enabled = false;
  expectUpdate("enabled");
  entry.state = ControlState::off;
  expectUpdate("a state");
  entry.state = ControlState::on;
  expectUpdate("another state");
  entry.image = Image{.name = "terminal", .isTemplate = true, .pointSize = {}, .weight = {}};
  expectUpdate("image");
  entry.keyEquivalent = KeyEquivalent{"q"};
  expectUpdate("key equivalent");
}

TEST_F(DbusMenuTest, DescribesWhatIsDisabledAndTheStateOfToggles) {
  const auto properties = [this](std::optional<ControlState> state) {
    ActionEntry entry = itemEntry("Title", "1");
    entry.enabled = false;
    entry.state = state;
    return onlyEntry(menuWith({entry})).properties;
  };
  EXPECT_THAT(properties({}),
              UnorderedElementsAre(Pair("label", "'Title'"), Pair("enabled", "false")));
  EXPECT_THAT(properties(ControlState::off),
              UnorderedElementsAre(Pair("label", "'Title'"), Pair("enabled", "false"),
                                   Pair("toggle-type", "'checkmark'"), Pair("toggle-state", "0")));
  EXPECT_THAT(
      properties(ControlState::on),
      testing::IsSupersetOf({Pair("toggle-type", "'checkmark'"), Pair("toggle-state", "1")}));
  EXPECT_THAT(properties(ControlState::mixed),
              UnorderedElementsAre(Pair("label", "'Title'"), Pair("enabled", "false"),
                                   Pair("toggle-type", "'checkmark'")));
  EXPECT_EQ(
      reply("GetProperty", g_variant_new("(is)", panel.layout().children.at(0).id, "toggle-state")),
      "(<-1>,)");
}

TEST_F(DbusMenuTest, IgnoresAClickOnADisabledEntry) {
  ActionEntry entry = itemEntry("Title", "1");
  entry.enabled = false;
  EXPECT_TRUE(panel.event(onlyEntry(menuWith({entry})).id, "clicked").value);
  EXPECT_THAT(clicked, IsEmpty());
}

TEST_F(DbusMenuTest, DoublesUnderscoresAndLeavesAmpersands) {
  EXPECT_THAT(onlyEntry(menuWith({itemEntry("_my_command__name & <b>", "1")})).properties,
              ElementsAre(Pair("label", "'__my__command____name & <b>'")));
}

TEST_F(DbusMenuTest, ReplacesCharactersThatTheBusRejects) {
  EXPECT_THAT(onlyEntry(menuWith({itemEntry(std::string("a\0b\xFFz", 5), "1")})).properties,
              ElementsAre(Pair("label", "'a\uFFFDb\uFFFDz'")));
}

TEST_F(DbusMenuTest, LabelsWhatHasNoTitleWithASpace) {
  SubmenuEntry folder;
  folder.submenu = menuWith({itemEntry("Inner", "2")});
  menu.setMenu(menuWith({itemEntry("", "1"), folder}));
  const PanelEntry root = panel.layout();
  ASSERT_EQ(root.children.size(), 2u);
  EXPECT_THAT(root.children[0].properties, ElementsAre(Pair("label", "' '")));
  EXPECT_THAT(root.children[1].properties,
              UnorderedElementsAre(Pair("label", "' '"), Pair("children-display", "'submenu'")));
}

TEST_F(DbusMenuTest, DescribesEveryKindOfEntry) {
  ActionEntry action = withKey(",", modifiers::command);
  action.image = Image{.name = "terminal", .isTemplate = true, .pointSize = 13, .weight = {}};
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.image = Image{.name = "folder", .isTemplate = true, .pointSize = 13, .weight = {}};
  menu.setMenu(menuWith({action, SeparatorEntry{}, folder}));
  const PanelEntry root = panel.layout();
  ASSERT_EQ(root.children.size(), 3u);
  EXPECT_THAT(root.children[0].properties,
              UnorderedElementsAre(Pair("label", "'Title'"), Pair("icon-name", "'terminal'"),
                                   Pair("shortcut", "[['Super', 'comma']]")));
  EXPECT_THAT(root.children[1].properties, ElementsAre(Pair("type", "'separator'")));
  EXPECT_THAT(root.children[2].properties,
              UnorderedElementsAre(Pair("label", "'Folder'"), Pair("icon-name", "'folder'"),
                                   Pair("children-display", "'submenu'")));
}

TEST_F(DbusMenuTest, SendsNoShortcutForAKeyWithoutAName) {
  EXPECT_THAT(onlyEntry(menuWith({withKey("", modifiers::command)})).properties,
              ElementsAre(Pair("label", "'Title'")));
}

TEST_F(DbusMenuTest, LimitsTheLayoutToTheDepthAndTheNamesThatWereAskedFor) {
  menu.setMenu(menuWithFolder());
  const auto layoutOf = [&](int parent, int depth, const char* name) {
    const char* names[] = {name, nullptr};
    const BusReply layout =
        panel.callMenu("GetLayout", g_variant_new("(ii^as)", parent, depth, names));
    const GVariantPtr root(g_variant_get_child_value(layout.value.get(), 1));
    return panelEntry(root.get());
  };
  EXPECT_EQ(layoutOf(0, std::numeric_limits<int>::min(), "label").children.size(), 2u);
  const PanelEntry flat = layoutOf(0, 1, "children-display");
  ASSERT_EQ(flat.children.size(), 2u);
  EXPECT_THAT(flat.children[0].properties, IsEmpty());
  EXPECT_THAT(flat.children[1].properties, ElementsAre(Pair("children-display", "'submenu'")));
  EXPECT_THAT(flat.children[1].children, IsEmpty());

  const PanelEntry folder = layoutOf(flat.children[1].id, -1, "label");
  EXPECT_THAT(folder.properties, ElementsAre(Pair("label", "'Folder'")));
  ASSERT_EQ(folder.children.size(), 2u);
  ASSERT_EQ(folder.children[1].children.size(), 1u);
  EXPECT_THAT(folder.children[1].children[0].properties, ElementsAre(Pair("label", "'Deep'")));

  EXPECT_THAT(layoutOf(0, 0, "label").children, IsEmpty());
}

TEST_F(DbusMenuTest, GivesThePropertiesOfSeveralEntries) {
  menu.setMenu(menuWith({itemEntry("First", "1"), itemEntry("Second", "2")}));
  const PanelEntry root = panel.layout();
  const auto properties = [&](const std::vector<int>& ids) {
    GVariant* array =
        g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(int));
    return reply("GetGroupProperties", g_variant_new("(@aias)", array, nullptr));
  };
  const std::string first = std::to_string(root.children[0].id);
  const std::string second = std::to_string(root.children[1].id);
  EXPECT_EQ(properties({root.children[1].id, unknownId}),
            "([(" + second + ", {'label': <'Second'>})],)");
  EXPECT_EQ(properties({}), "([(0, {'children-display': <'submenu'>}), (" + first +
                                ", {'label': <'First'>}), (" + second +
                                ", {'label': <'Second'>})],)");
}

TEST_F(DbusMenuTest, AnswersTheSameIdOnce) {
  const int id = onlyEntry(menuWith({itemEntry("Title", "1")})).id;
  const std::vector<int> ids(400'000, id);
  GVariant* array =
      g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(int));
  EXPECT_EQ(reply("GetGroupProperties", g_variant_new("(@aias)", array, nullptr)),
            "([(" + std::to_string(id) + ", {'label': <'Title'>})],)");
}

TEST_F(DbusMenuTest, LabelsAreOneLineOfVisibleCharacters) {
  EXPECT_THAT(onlyEntry(menuWith({itemEntry("One\ntwo\tthree \u202Efour", "1")})).properties,
              ElementsAre(Pair("label", "'One two three ‹U+202E›four'")));
}

TEST_F(DbusMenuTest, ALayoutOfHugeTitlesFitsIntoAMessage) {
  constexpr std::size_t megabyte = std::size_t{1024} * 1024;
  std::string marks = "a";
  while (marks.size() < megabyte) marks += "\u0301";
  Menu large;
  for (int i = 0; i < 70; ++i) large.entries.emplace_back(itemEntry(marks, std::to_string(i)));
  menu.setMenu(large);
  EXPECT_EQ(panel.layout().children.size(), 70u);
}

TEST_F(DbusMenuTest, ALayoutOfManyLongTitlesFitsIntoAMessage) {
  constexpr std::size_t longTitle = 450;
  Menu large;
  for (std::size_t i = 0; i <= DbusMenuTree::maximumEntries; ++i) {
    ActionEntry entry = itemEntry(std::string(longTitle, '_'), "id");
    entry.image =
        Image{.name = std::string(255, 'i'), .isTemplate = true, .pointSize = {}, .weight = {}};
    large.entries.emplace_back(std::move(entry));
  }
  menu.setMenu(large);
  EXPECT_EQ(panel.layout().children.size(), DbusMenuTree::maximumEntries);
}

TEST_F(DbusMenuTest, GivesSinglePropertiesAndTheirDefaults) {
  const int id = onlyEntry(menuWith({itemEntry("a_b", "1")})).id;
  const auto property = [&](const char* name) {
    return reply("GetProperty", g_variant_new("(is)", id, name));
  };
  EXPECT_EQ(property("label"), "(<'a__b'>,)");
  EXPECT_EQ(property("enabled"), "(<true>,)");
  EXPECT_EQ(property("visible"), "(<true>,)");
  EXPECT_EQ(property("type"), "(<'standard'>,)");
  EXPECT_EQ(property("icon-name"), "(<''>,)");
  EXPECT_EQ(property("shortcut"), "(<@aas []>,)");
  EXPECT_EQ(property("colour"), invalidArguments);
}

TEST_F(DbusMenuTest, HasNothingUpdatedBeforeAnEntryIsShown) {
  const int id = onlyEntry(menuWith({itemEntry("Title", "1")})).id;
  EXPECT_EQ(reply("AboutToShow", g_variant_new("(i)", id)), "(false,)");
  const int ids[] = {0, unknownId};
  GVariant* array = g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids, 2, sizeof(int));
  EXPECT_EQ(reply("AboutToShowGroup", g_variant_new("(@ai)", array)), "([], [4711])");
}

TEST_F(DbusMenuTest, RefusesUnknownIds) {
  menu.setMenu(menuWithFolder());
  const BusReply answer = panel.event(unknownId, "clicked");
  EXPECT_EQ(answer.errorName, invalidArguments);
  EXPECT_EQ(answer.errorMessage, "The menu has no entry with the id 4711.");
  EXPECT_EQ(reply("AboutToShow", g_variant_new("(i)", unknownId)), invalidArguments);
  EXPECT_EQ(reply("GetLayout", g_variant_new("(iias)", unknownId, -1, nullptr)), invalidArguments);
  EXPECT_EQ(reply("GetProperty", g_variant_new("(is)", unknownId, "label")), invalidArguments);
  EXPECT_EQ(reply("GetProperty", g_variant_new("(is)", -1, "label")), invalidArguments);
}

TEST_F(DbusMenuTest, TakesTheFirstClickOfAGroupAndNamesTheUnknownIds) {
  menu.setMenu(menuWith({itemEntry("First", "1"), itemEntry("Second", "2")}));
  const PanelEntry root = panel.layout();
  const auto group = [&](const std::vector<int>& ids) {
    GVariantBuilder events;
    g_variant_builder_init(&events, G_VARIANT_TYPE("a(isvu)"));
    guint32 timestamp = 0;
    for (const int id : ids) {
      g_variant_builder_add(&events, "(isvu)", id, "clicked", g_variant_new_string(""),
                            timestamp += 10);
    }
    return reply("EventGroup", g_variant_new("(a(isvu))", &events));
  };
  EXPECT_EQ(group({unknownId, root.children[1].id, root.children[0].id}), "([4711],)");
  EXPECT_THAT(clicked, ElementsAre("Second"));
  EXPECT_THAT(timestamps, ElementsAre(20));
  EXPECT_EQ(group({unknownId}), invalidArguments);
  EXPECT_EQ(group({}), "([],)");
}

TEST_F(DbusMenuTest, TakesOnlyClicksOnActionsForClicks) {
  menu.setMenu(menuWithFolder());
  const PanelEntry root = panel.layout();
  EXPECT_TRUE(panel.event(root.children[0].id, "hovered").value);
  EXPECT_TRUE(panel.event(root.children[1].id, "opened").value);
  EXPECT_TRUE(panel.event(root.children[1].id, "clicked").value);
  EXPECT_TRUE(panel.event(0, "closed").value);
  EXPECT_THAT(clicked, IsEmpty());
  EXPECT_TRUE(panel.event(root.children[1].children[1].children[0].id, "clicked").value);
  EXPECT_THAT(clicked, ElementsAre("Deep"));
}

TEST_F(DbusMenuTest, ShowsTenThousandEntriesEachUnderAnIdOfItsOwn) {
  constexpr int folders = 100;
  constexpr int itemsPerFolder = 99;
  Menu large;
  for (int i = 0; i < folders; ++i) {
    SubmenuEntry folder;
    folder.title = "Folder " + std::to_string(i);
    for (int j = 0; j < itemsPerFolder; ++j) {
      folder.submenu.entries.emplace_back(itemEntry("Item " + std::to_string(j), "id"));
    }
    large.entries.emplace_back(folder);
  }
  menu.setMenu(large);
  std::set<int> ids;
  for (const PanelEntry& folder : panel.layout().children) {
    ids.insert(folder.id);
    for (const PanelEntry& item : folder.children) ids.insert(item.id);
  }
  EXPECT_EQ(ids.size(), 10000u);
}

}  // namespace
}  // namespace quillmar
