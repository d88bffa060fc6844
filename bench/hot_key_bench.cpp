// Measures hot keys on an X display: the time from a key press until the item's process starts,
// compared with a round trip to the X server plus a plain spawn of the same program, and the time
// to register 100 hot keys again after a change of the document.
//
//   hot_key_bench QUILLMAR REPORT_START

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include "bench/bare_child.h"
#include "config/settings_manager.h"
#include "platform/key_equivalent.h"
#include "platform/linux/hot_keys/x11_hot_keys.h"
#include "platform/memory/memory_platform.h"
#include "platform/xcb/xcb_pointers.h"
#include "shortcuts/hot_key_manager.h"

namespace quillmar {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int presses = 1000;
constexpr int reloads = 100;
constexpr int hotKeyCount = 100;

// Super, Shift and K.
constexpr std::array<xcb_keycode_t, 2> modifierKeys = {133, 50};
constexpr xcb_keycode_t key = 45;
constexpr std::uint16_t virtualKeyK = 40;

/// A virtual key code that many keyboards lack.
constexpr std::uint16_t isoSection = 10;

[[noreturn]] void fail(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  std::_Exit(EXIT_FAILURE);
}

/// The pipe through which programs report when they started.
class StartReports {
 public:
  explicit StartReports(const std::string& path) {
    if (mkfifo(path.c_str(), 0600) != 0) fail("The pipe could not be created.");
    end_ = open(path.c_str(), O_RDWR | O_CLOEXEC);
    setenv("QUILLMAR_BENCH_PIPE", path.c_str(), 1);
  }

  /// Waits for a report. False if there is none within the timeout.
  bool wait(int timeoutMilliseconds) const {
    pollfd waiting{.fd = end_, .events = POLLIN, .revents = 0};
    return poll(&waiting, 1, timeoutMilliseconds) == 1;
  }

  Clock::time_point next() const {
    std::int64_t nanoseconds = 0;
    if (!wait(5000)) fail("No program started within five seconds.");
    if (read(end_, &nanoseconds, sizeof nanoseconds) != sizeof nanoseconds) {
      fail("A report is incomplete.");
    }
    return Clock::time_point(std::chrono::nanoseconds(nanoseconds));
  }

 private:
  int end_ = -1;
};

/// Reads the output until the child ends.
void waitFor(BareChild child) {
  while (readBare(child)) {
  }
}

/// A user's keyboard.
class Keyboard {
 public:
  Keyboard() : xcb_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(xcb_.get()) != 0) fail("There is no X display.");
    roundTrip();
  }

  /// Waits for the server, which takes time to send modifiers to all who watch the keyboard.
  void holdModifiers() {
    for (const xcb_keycode_t modifier : modifierKeys) fake(XCB_KEY_PRESS, modifier);
    roundTrip();
  }

  void pressKey() {
    fake(XCB_KEY_PRESS, key);
    xcb_flush(xcb_.get());
  }

  void releaseAll() {
    fake(XCB_KEY_RELEASE, key);
    for (const xcb_keycode_t modifier : modifierKeys) fake(XCB_KEY_RELEASE, modifier);
    roundTrip();
  }

  void roundTrip() {
    const XcbPointer<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb_.get(), xcb_get_input_focus(xcb_.get()), nullptr));
  }

 private:
  void fake(std::uint8_t kind, xcb_keycode_t keyCode) {
    xcb_test_fake_input(xcb_.get(), kind, keyCode, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  }

  XcbConnectionPointer xcb_;
};

double percentile(std::vector<double> values, double part) {
  std::ranges::sort(values);
  return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

void measurePresses(const std::string& quillmar, const std::string& reportStart) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("quillmar-hot-key-bench-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  const StartReports reports(folder / "starts");
  std::ofstream(folder / "settings.json")
      << R"({"categories": [{"items": [{"title": "Report", "command": {"type": "Script File", )"
      << R"("value": ")" << std::filesystem::absolute(reportStart).string() << R"("}, )"
      << R"("shortcut": {"keyCode": )" << virtualKeyK << R"(, "modifiers": )"
      << (modifiers::command | modifiers::shift) << "}}]}]}";
  setenv("QUILLMAR_SETTINGS_DIR", folder.c_str(), 1);
  const BareChild program = spawnBare(quillmar, environ);

  Keyboard keyboard;
  int attempts = 0;
  do {
    if (++attempts > 100) fail("The hot key does not start the command.");
    keyboard.holdModifiers();
    keyboard.pressKey();
    keyboard.releaseAll();
  } while (!reports.wait(100));
  // Attempts before the registration have no reports; one that took long may have a late one.
  while (reports.wait(500)) reports.next();

  std::vector<double> ours;
  std::vector<double> plain;
  const auto pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(5)); };
  for (int i = 0; i < presses; ++i) {
    keyboard.holdModifiers();
    pause();
    auto began = Clock::now();
    keyboard.pressKey();
    ours.push_back(Milliseconds(reports.next() - began).count());
    keyboard.releaseAll();

    pause();
    began = Clock::now();
    keyboard.roundTrip();
    const BareChild child = spawnBare(reportStart, environ);
    plain.push_back(Milliseconds(reports.next() - began).count());
    waitFor(child);
  }
  kill(program.id, SIGTERM);
  waitFor(program);
  std::filesystem::remove_all(folder);

  const double median = percentile(ours, 0.5);
  const double plainMedian = percentile(plain, 0.5);
  std::printf("key press to process start:  median %.2f ms / %.2f ms = %.2f  (limit 1.50)\n",
              median, plainMedian, median / plainMedian);
  std::printf("  99th percentile:           %.2f ms  (limit 5 ms; plain %.2f ms)\n",
              percentile(ours, 0.99), percentile(plain, 0.99));
}

void measureReloads(const std::string& display) {
  MemoryPlatform memory;
  NotificationCenter center;
  SettingsManager settings({memory.environment, memory.userDirectories, memory.files, center});
  MenuCategory& folder = settings.config.categories.emplace_back();
  // Letters, digits and punctuation, which every keyboard has.
  for (std::uint16_t keyCode = 0; folder.items.size() < hotKeyCount; ++keyCode) {
    if (keyCode == isoSection) continue;
    for (const std::uint64_t shift : {std::uint64_t{0}, modifiers::shift}) {
      MenuItem& item = folder.items.emplace_back();
      item.id = std::to_string(folder.items.size());
      item.shortcut = KeyboardShortcut{
          .keyCode = keyCode,
          .character = "",
          .modifiers = modifiers::command | modifiers::control | modifiers::option | shift};
    }
  }
  X11HotKeys hotKeys(display);
  HotKeyManager manager({.settings = settings,
                         .hotKeys = hotKeys,
                         .application = memory.application,
                         .mainQueue = memory.queues.mainQueue()});
  std::vector<double> times;
  for (int i = 0; i < reloads; ++i) {
    const auto began = Clock::now();
    manager.reloadFromSettings();
    times.push_back(Milliseconds(Clock::now() - began).count());
    if (manager.registrations().size() != hotKeyCount) fail("Some hot keys are not registered.");
  }
  std::printf("reload of %d hot keys:      median %.2f ms  (limit 20 ms)\n", hotKeyCount,
              percentile(times, 0.5));
}

}  // namespace
}  // namespace quillmar

int main(int argc, char** argv) {
  if (argc != 3) quillmar::fail("usage: hot_key_bench QUILLMAR REPORT_START");
  const char* const display = std::getenv("DISPLAY");
  if (!display) quillmar::fail("There is no X display.");
  quillmar::measurePresses(argv[1], argv[2]);
  quillmar::measureReloads(display);
}
