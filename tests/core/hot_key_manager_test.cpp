#include "shortcuts/hot_key_manager.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/checked_arithmetic.h"
#include "config/settings_manager.h"
#include "platform/key_equivalent.h"
#include "platform/memory/memory_platform.h"
#include "tests/collaborators.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using hot_key_modifiers::command;

class HotKeyManagerTest : public testing::Test {
 protected:
  HotKeyManagerTest() {
    MenuCategory& folder = settings.config.categories.emplace_back();
    folder.id = "F";
    handleWith(manager);
  }

  void handleWith(HotKeyManager& handling) {
    handling.handler = [this](const std::string& itemId) {
      fired.push_back(itemId);
      activations.push_back(memory.application.takeActivation());
    };
  }

  /// Appends an item with a global shortcut to the folder.
  MenuItem& addItem(const std::string& id, std::uint16_t keyCode,
                    std::uint64_t mask = modifiers::command) {
    MenuItem& item = settings.config.categories[0].items.emplace_back();
    item.id = id;
    item.title = "Title of " + id;
    item.shortcut = KeyboardShortcut{.keyCode = keyCode, .character = "", .modifiers = mask};
    return item;
  }

  std::vector<std::uint32_t> registeredIds() const {
    std::vector<std::uint32_t> ids;
    for (const auto& [id, registration] : manager.registrations()) ids.push_back(id);
    return ids;
  }

  /// Key code, modifiers and id of each registered hot key.
  std::vector<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>> registered() const {
    std::vector<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>> keys;
    for (const HotKeyRequest& request : memory.hotKeys.registered()) {
      keys.emplace_back(request.keyCode, request.modifiers, request.id.id);
    }
    return keys;
  }

  void press(std::uint32_t keyCode, Activation activation = {}) {
    memory.hotKeys.press(keyCode, command, std::move(activation));
    memory.queues.runPending();
  }

  MemoryPlatform memory;
  NotificationCenter center;
  std::vector<std::string> log;
  SettingsManager settings{{memory.environment, memory.userDirectories, memory.files, center}};
  HotKeyManager manager{hotKeyCollaborators(
      memory.platform, settings, [this](std::string_view line) { log.emplace_back(line); })};
  std::vector<std::string> fired;
  std::vector<Activation> activations;
};

TEST_F(HotKeyManagerTest, CommandAndShiftAreRegisteredAsModifiers0x0300) {
  addItem("1", keyA, modifiers::command | modifiers::shift);
  manager.reloadFromSettings();
  EXPECT_THAT(registered(), ElementsAre(std::tuple(keyA, 0x0300, 1)));
}

TEST_F(HotKeyManagerTest, AShortcutWithoutModifiersIsRegisteredWithModifiers0) {
  addItem("1", keyF5, 0);
  manager.reloadFromSettings();
  EXPECT_THAT(registered(), ElementsAre(std::tuple(keyF5, 0, 1)));
}

TEST_F(HotKeyManagerTest, EachModifierHasItsHotKeyBitAndOtherBitsAreIgnored) {
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0x20000), 0x0200U);
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0x40000), 0x1000U);
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0x80000), 0x0800U);
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0x100000), 0x0100U);
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0xFFFF'FFFF'FFFF'FFFF), 0x1B00U);
  EXPECT_EQ(HotKeyManager::hotKeyModifiersFor(0xFFFF'FFFF'FFE1'FFFF), 0U);
}

TEST_F(HotKeyManagerTest, TheSignatureHasItsFirstCharacterInTheMostSignificantByte) {
  EXPECT_EQ(HotKeyManager::signature, 0x516D526BU);
  addItem("1", keyA);
  manager.reloadFromSettings();
  EXPECT_EQ(memory.hotKeys.registered().at(0).id.signature, 0x516D526BU);
}

TEST_F(HotKeyManagerTest, TheTitleOfTheItemDescribesItsHotKey) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  EXPECT_EQ(memory.hotKeys.registered().at(0).description, "Title of 1");
}

TEST_F(HotKeyManagerTest, NothingIsRegisteredBeforeTheFirstReload) {
  addItem("1", keyA);
  EXPECT_THAT(registered(), IsEmpty());
  EXPECT_THAT(manager.registrations(), IsEmpty());
  EXPECT_EQ(manager.nextId(), 1U);
}

TEST_F(HotKeyManagerTest, TwoReloadsWithOneItemGiveTheIds1And2) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  EXPECT_THAT(registeredIds(), ElementsAre(1));
  manager.reloadFromSettings();
  EXPECT_THAT(registeredIds(), ElementsAre(2));
  EXPECT_THAT(registered(), ElementsAre(std::tuple(keyA, command, 2)));
}

TEST_F(HotKeyManagerTest, ItemsAreRegisteredInDisplayOrder) {
  addItem("1", keyA);
  MenuCategory& first = settings.config.categories.emplace_back();
  first.sortOrder = -1;
  MenuItem& item = first.items.emplace_back();
  item.id = "2";
  item.shortcut = KeyboardShortcut{.keyCode = keyB, .character = "b", .modifiers = 0};
  manager.reloadFromSettings();
  EXPECT_THAT(registered(), ElementsAre(std::tuple(keyB, 0, 1), std::tuple(keyA, command, 2)));
}

TEST_F(HotKeyManagerTest, ItemsThatAreDisabledNotGlobalOrSeparatorsRegisterNothing) {
  addItem("disabled", keyA).isEnabled = false;
  addItem("not global", keyA).shortcut->isGlobal = false;
  addItem("separator", keyA).isSeparator = true;
  addItem("without", keyA).shortcut.reset();
  manager.reloadFromSettings();
  EXPECT_THAT(registered(), IsEmpty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(HotKeyManagerTest, AFailedRegistrationIsLoggedAndLeavesRegistrationsAndNextIdUnchanged) {
  ASSERT_TRUE(memory.hotKeys.takeByOtherProgram(keyA, command));
  addItem("taken", keyA);
  manager.reloadFromSettings();
  EXPECT_THAT(log, ElementsAre("Could not register hotkey for item taken: 10"));
  EXPECT_THAT(manager.registrations(), IsEmpty());
  EXPECT_EQ(manager.nextId(), 1U);
  EXPECT_THAT(manager.unregisteredHotKeys(),
              ElementsAre(UnregisteredHotKey{"taken", "Title of taken", HotKeyStatus::keyTaken}));
}

TEST_F(HotKeyManagerTest, AfterAFailedRegistrationTheOtherHotKeysWork) {
  ASSERT_TRUE(memory.hotKeys.takeByOtherProgram(keyA, command));
  addItem("taken", keyA);
  addItem("free", keyB);
  manager.reloadFromSettings();
  EXPECT_THAT(registered(), ElementsAre(std::tuple(keyB, command, 1)));
  press(keyB);
  EXPECT_THAT(fired, ElementsAre("free"));
}

TEST_F(HotKeyManagerTest, WithoutAServiceEachItemIsLogged) {
  memory.hotKeys.setError(HotKeyStatus::noService);
  addItem("1", keyA);
  addItem("2", keyB);
  manager.reloadFromSettings();
  EXPECT_THAT(log, ElementsAre("Could not register hotkey for item 1: -2",
                               "Could not register hotkey for item 2: -2"));
}

TEST_F(HotKeyManagerTest, OfTwoItemsWithTheSameShortcutTheFirstKeepsIt) {
  addItem("first", keyA);
  addItem("second", keyA);
  manager.reloadFromSettings();
  EXPECT_THAT(log, ElementsAre("Could not register hotkey for item second: 10"));
  press(keyA);
  EXPECT_THAT(fired, ElementsAre("first"));
}

TEST_F(HotKeyManagerTest, ARefusalThatArrivesLaterRemovesTheRegistrationAndIsLogged) {
  memory.hotKeys.setRefusesLater(true);
  ASSERT_TRUE(memory.hotKeys.takeByOtherProgram(keyA, command));
  addItem("taken", keyA);
  addItem("free", keyB);
  manager.reloadFromSettings();
  EXPECT_THAT(log, IsEmpty());
  memory.queues.runPending();
  EXPECT_THAT(log, ElementsAre("Could not register hotkey for item taken: 10"));
  EXPECT_THAT(registeredIds(), ElementsAre(2));
  EXPECT_THAT(manager.unregisteredHotKeys(),
              ElementsAre(UnregisteredHotKey{"taken", "Title of taken", HotKeyStatus::keyTaken}));
}

TEST_F(HotKeyManagerTest, AHotKeyThatTheDesktopGrantsAgainWorksAndIsNoFailureAnyMore) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  memory.hotKeys.refuse(keyA, command, HotKeyStatus::notGranted);
  memory.queues.runPending();
  ASSERT_THAT(manager.unregisteredHotKeys(), SizeIs(1));
  memory.hotKeys.withdrawRefusal();
  memory.queues.runPending();
  EXPECT_THAT(manager.unregisteredHotKeys(), IsEmpty());
  press(keyA);
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, TheEventHandlersAreInstalledByTheFirstReloadOnly) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  bool isOursCalled = false;
  memory.hotKeys.installEventHandlers(
      {.pressed = [&](HotKeyID, const Activation&) { isOursCalled = true; }});
  manager.reloadFromSettings();
  press(keyA);
  EXPECT_TRUE(isOursCalled);
  EXPECT_THAT(fired, IsEmpty());
}

TEST_F(HotKeyManagerTest, AReloadForgetsEarlierFailures) {
  ASSERT_TRUE(memory.hotKeys.takeByOtherProgram(keyA, command));
  addItem("1", keyA);
  manager.reloadFromSettings();
  memory.hotKeys.releaseByOtherPrograms();
  manager.reloadFromSettings();
  EXPECT_THAT(manager.unregisteredHotKeys(), IsEmpty());
  press(keyA);
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, AnEventWithAnIdThatIsNoLongerRegisteredDoesNothing) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  manager.reloadFromSettings();
  memory.hotKeys.sendPressed({HotKeyManager::signature, 1});
  memory.queues.runPending();
  EXPECT_THAT(fired, IsEmpty());
}

TEST_F(HotKeyManagerTest, TheSignatureOfAnEventIsNotCompared) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  memory.hotKeys.sendPressed({0, 1});
  memory.queues.runPending();
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, TheHandlerRunsInALaterTaskThanTheEvent) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  memory.hotKeys.press(keyA, command);
  bool hadFiredAfterTheEvent = true;
  // Runs after the event and before the tasks that the event appends.
  memory.queues.mainQueue().async([&] { hadFiredAfterTheEvent = !fired.empty(); });
  memory.queues.runPending();
  EXPECT_FALSE(hadFiredAfterTheEvent);
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, APressBeforeAReloadStillRunsItsItem) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  memory.hotKeys.press(keyA, command);
  memory.queues.mainQueue().async([&] { manager.reloadFromSettings(); });
  memory.queues.runPending();
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, WithoutAHandlerAPressDoesNothing) {
  manager.handler = nullptr;
  addItem("1", keyA);
  manager.reloadFromSettings();
  press(keyA, {5, "token"});
  EXPECT_EQ(memory.application.takeActivation(), Activation{});
}

TEST_F(HotKeyManagerTest, TheHandlerRunsWithTheActivationOfItsPress) {
  addItem("1", keyA);
  addItem("2", keyB);
  manager.reloadFromSettings();
  memory.hotKeys.press(keyA, command, {70, "first"});
  memory.hotKeys.press(keyB, command, {71, "second"});
  memory.queues.runPending();
  EXPECT_THAT(fired, ElementsAre("1", "2"));
  EXPECT_THAT(activations, ElementsAre(Activation{70, "first"}, Activation{71, "second"}));
}

TEST_F(HotKeyManagerTest, AReloadFreesTheOldCombinationAndRegistersTheNewOne) {
  addItem("1", keyA);
  manager.reloadFromSettings();
  settings.config.categories[0].items[0].shortcut->keyCode = keyB;
  manager.reloadFromSettings();
  EXPECT_TRUE(memory.hotKeys.takeByOtherProgram(keyA, command));
  press(keyA);
  press(keyB);
  EXPECT_THAT(fired, ElementsAre("1"));
}

TEST_F(HotKeyManagerTest, UnregisterAllFreesEveryCombination) {
  addItem("1", keyA);
  addItem("2", keyB);
  manager.reloadFromSettings();
  manager.unregisterAll();
  EXPECT_THAT(registered(), IsEmpty());
  EXPECT_THAT(manager.registrations(), IsEmpty());
}

TEST_F(HotKeyManagerTest, AManagerThatIsDestroyedFreesItsCombinationsAndGetsNoEvents) {
  addItem("1", keyA);
  {
    HotKeyManager other(hotKeyCollaborators(memory.platform, settings, {}));
    handleWith(other);
    other.reloadFromSettings();
    EXPECT_THAT(registered(), SizeIs(1));
  }
  EXPECT_THAT(registered(), IsEmpty());
  memory.hotKeys.sendPressed({HotKeyManager::signature, 1});
  memory.queues.runPending();
  EXPECT_THAT(fired, IsEmpty());
}

TEST_F(HotKeyManagerTest, InTenThousandReloadsOf50HotKeysIdsKeepRisingAndNothingIsLeftBehind) {
  constexpr std::uint32_t reloads = 10'000;
  constexpr std::uint16_t count = 50;
  for (std::uint16_t key = 0; key < count; ++key) addItem("item " + std::to_string(key), key);
  std::uint32_t highest = 0;
  for (std::uint32_t i = 0; i < reloads; ++i) {
    manager.reloadFromSettings();
    ASSERT_THAT(manager.registrations(), SizeIs(count));
    ASSERT_GT(manager.registrations().begin()->first, highest);
    highest = manager.registrations().rbegin()->first;
  }
  EXPECT_EQ(manager.nextId(), reloads * count + 1);
  EXPECT_THAT(memory.hotKeys.registered(), SizeIs(count));
  EXPECT_EQ(memory.queues.mainQueue().pendingCount(), 0U);
  EXPECT_THAT(log, IsEmpty());
  press(count - 1);
  EXPECT_THAT(fired, ElementsAre("item 49"));
}

TEST(CheckedNextId, AbortsAfterTheLastId) {
  EXPECT_EQ(checkedNextId(41), 42U);
  EXPECT_DEATH(checkedNextId(std::numeric_limits<std::uint32_t>::max()), "all ids have been used");
}

}  // namespace
}  // namespace quillmar
