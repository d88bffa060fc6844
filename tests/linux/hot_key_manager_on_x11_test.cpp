// The global shortcuts of a document on a real X server.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include "config/settings_manager.h"
#include "platform/key_equivalent.h"
#include "platform/linux/hot_keys/x11_hot_keys.h"
#include "platform/memory/memory_platform.h"
#include "platform/virtual_key_codes.h"
#include "shortcuts/hot_key_manager.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/open_sockets.h"
#include "tests/linux/x_keyboard.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Set QUILLMAR_RELOADS to run the test as a load test.
std::uint32_t reloadCount() {
  const char* const wanted = std::getenv("QUILLMAR_RELOADS");
  return wanted ? static_cast<std::uint32_t>(std::stoul(wanted)) : 300;
}

class HotKeyManagerOnX11Test : public testing::Test {
 protected:
  HotKeyManagerOnX11Test() {
    settings.config.categories.emplace_back().id = "F";
    manager.handler = [this](const std::string& itemId) { fired.push_back(itemId); };
  }

  MenuItem& addItem(const std::string& id, std::uint16_t keyCode) {
    MenuItem& item = settings.config.categories[0].items.emplace_back();
    item.id = id;
    item.shortcut =
        KeyboardShortcut{.keyCode = keyCode, .character = "", .modifiers = modifiers::command};
    return item;
  }

  void type(xcb_keycode_t key) { keyboard.type({keys::super, key}); }

  void waitForFired(std::size_t count) {
    runMainLoopUntil([&] {
      memory.queues.runAll();
      return fired.size() >= count;
    });
  }

  /// True if no program has any combination of the key.
  bool isFree(xcb_keycode_t key) {
    return OtherProgramWithGrabs(server.display()).grab(key, XCB_MOD_MASK_ANY) == 0;
  }

  XServer server;
  XKeyboard keyboard{server.display()};
  MemoryPlatform memory;
  X11HotKeys hotKeys{server.display()};
  NotificationCenter center;
  std::vector<std::string> log;
  LogLine logLine = [this](std::string_view line) { log.emplace_back(line); };
  SettingsManager settings{
      {memory.environment, memory.userDirectories, memory.files, center, logLine}};
  HotKeyManager manager{{.settings = settings,
                         .hotKeys = hotKeys,
                         .application = memory.application,
                         .mainQueue = memory.queues.mainQueue(),
                         .log = logLine}};
  NotificationCenter::Observation reloading =
      center.addObserver(menuItemSettingsChanged, [this] { manager.reloadFromSettings(); });
  std::vector<std::string> fired;
};

TEST_F(HotKeyManagerOnX11Test, AfterAnEditTheOldKeyIsFreeAndTheNewOneWorks) {
  MenuItem item = addItem("edited", keyK);
  manager.reloadFromSettings();
  type(keys::k);
  waitForFired(1);
  item.shortcut->keyCode = keyL;
  settings.updateItem(item, "F");
  runMainLoopWhileReady();
  EXPECT_TRUE(isFree(keys::k));
  type(keys::k);
  type(keys::l);
  waitForFired(2);
  EXPECT_THAT(fired, ElementsAre("edited", "edited"));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(HotKeyManagerOnX11Test, ReloadsLeaveNothingBehind) {
  constexpr std::size_t hotKeyCount = 50;
  const std::uint32_t reloads = reloadCount();
  std::vector<xcb_keycode_t> grabbed;
  for (const VirtualKey& key : virtualKeys()) {
    if (grabbed.size() == hotKeyCount) break;
    addItem("item " + std::to_string(grabbed.size()), key.code);
    grabbed.push_back(static_cast<xcb_keycode_t>(key.evdevCode + 8));
  }
  manager.reloadFromSettings();
  const std::size_t sockets = openSockets();
  const std::size_t memoryInUse = mallinfo2().uordblks;
  for (std::uint32_t i = 0; i < reloads; ++i) manager.reloadFromSettings();
  EXPECT_EQ(manager.nextId(), 1 + (reloads + 1) * hotKeyCount);
  EXPECT_THAT(manager.registrations(), SizeIs(hotKeyCount));
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(openSockets(), sockets);
  EXPECT_LE(mallinfo2().uordblks, memoryInUse + 4096);

  type(grabbed.back());
  waitForFired(1);
  EXPECT_THAT(fired, ElementsAre("item 49"));
  manager.unregisterAll();
  runMainLoopWhileReady();
  for (const xcb_keycode_t key : grabbed) EXPECT_TRUE(isFree(key)) << static_cast<int>(key);
}

}  // namespace
}  // namespace quillmar
