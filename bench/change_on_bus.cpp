// Measures how long a changed title in a document of 10,000 items takes to reach a panel: saving
// the document and its copy, rebuilding the menu, sending the change, and answering the panel's
// request for the whole menu. Prints medians in milliseconds. Needs a session bus.

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gio/gio.h>
#include <stdlib.h>

#include "app/status_menu_builder.h"
#include "bench/sample_document.h"
#include "bench/statistics.h"
#include "config/settings_manager.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/icons/icon_theme_images.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/status_item/status_notifier_item.h"
#include "platform/memory/memory_user_directories.h"

namespace quillmar {
namespace {

using Clock = BenchClock;

constexpr int rounds = 15;

GObjectPtr<GDBusConnection> connectToBus() {
  const GStringPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  constexpr auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return GObjectPtr<GDBusConnection>(address ? g_dbus_connection_new_for_address_sync(
                                                   address.get(), flags, nullptr, nullptr, nullptr)
                                             : nullptr);
}

/// Reads the menu after each change signal, as a panel does, on a separate thread.
class Panel {
 public:
  /// `menuRead` is called on the panel's thread.
  Panel(std::string busName, std::function<void(Clock::time_point told)> menuRead)
      : thread_([this, name = std::move(busName), menuRead = std::move(menuRead)] {
          g_main_context_push_thread_default(context_.get());
          const auto connection = connectToBus();
          struct State {
            Panel* panel;
            const std::string* name;
            const std::function<void(Clock::time_point)>* menuRead;
          } state{this, &name, &menuRead};
          g_dbus_connection_signal_subscribe(
              connection.get(), name.c_str(), "com.canonical.dbusmenu", "LayoutUpdated", "/MenuBar",
              nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
              [](GDBusConnection* bus, const char*, const char*, const char*, const char*,
                 GVariant*, gpointer data) {
                const auto told = Clock::now();
                auto& self = *static_cast<State*>(data);
                const GVariantPtr layout(g_dbus_connection_call_sync(
                    bus, self.name->c_str(), "/MenuBar", "com.canonical.dbusmenu", "GetLayout",
                    g_variant_new("(iias)", 0, -1, nullptr), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                    nullptr, nullptr));
                if (layout) (*self.menuRead)(told);
              },
              &state, nullptr);
          // Once the bus has answered this later call, it has processed the subscription.
          GVariantPtr(g_dbus_connection_call_sync(
              connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
              "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
              nullptr, nullptr));
          ready_ = true;
          g_main_loop_run(loop_.get());
          g_main_context_pop_thread_default(context_.get());
        }) {
    while (!ready_) std::this_thread::yield();
  }
  ~Panel() {
    g_main_loop_quit(loop_.get());
    thread_.join();
  }

 private:
  std::atomic<bool> ready_ = false;
  GMainContextPtr context_{g_main_context_new()};
  GMainLoopPtr loop_{g_main_loop_new(context_.get(), false)};
  std::thread thread_;
};

int measure() {
  const auto connection = connectToBus();
  if (!connection) {
    std::fputs("There is no session bus.\n", stderr);
    return EXIT_FAILURE;
  }
  char folder[] = "/tmp/quillmar-bench-XXXXXX";
  if (!mkdtemp(folder)) return EXIT_FAILURE;
  Environment environment;
  environment.variables["QUILLMAR_SETTINGS_DIR"] = folder;
  PosixFileSystem files;
  SettingsManager settings({environment, MemoryUserDirectories(), files});
  settings.config = makeSampleDocument();

  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  IconThemeImages images(bundle.iconThemePath(), IconThemes({}, {}));
  MainLoopTaskQueue mainQueue;
  StatusNotifierItem item(connection.get(), mainQueue,
                          {"quillmar-bench", "Quillmar", bundle.iconThemePath(), ""});
  const auto observation = NotificationCenter::defaultCenter().addObserver(
      menuItemSettingsChanged,
      [&] { item.setMenu(buildStatusMenu(settings.config, images, false)); });
  settings.save();

  std::atomic<bool> read = false;
  Clock::time_point told;
  Clock::time_point answered;
  const Panel panel(g_dbus_connection_get_unique_name(connection.get()),
                    [&](Clock::time_point time) {
                      told = time;
                      answered = Clock::now();
                      read = true;
                      g_main_context_wakeup(nullptr);
                    });

  std::vector<double> toSave;
  std::vector<double> toSignal;
  std::vector<double> toAnswer;
  for (int round = 0; round < rounds; ++round) {
    MenuItem changed = settings.config.categories[50].items[50];
    changed.title = "Round " + std::to_string(round);
    read = false;
    const auto start = Clock::now();
    settings.updateItem(changed, settings.config.categories[50].id);
    toSave.push_back(milliseconds(Clock::now() - start));
    while (!read) g_main_context_iteration(nullptr, true);
    toSignal.push_back(milliseconds(told - start));
    toAnswer.push_back(milliseconds(answered - start));
  }
  std::filesystem::remove_all(folder);
  std::printf("a changed title among 10,000 items, median of %d:\n", rounds);
  std::printf("  saved, copied, menu rebuilt: %6.1f ms\n", median(toSave));
  std::printf("  the panel has been told:     %6.1f ms  (limit 40)\n", median(toSignal));
  std::printf("  the panel has read it all:   %6.1f ms\n", median(toAnswer));
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quillmar

int main() {
  return quillmar::measure();
}
