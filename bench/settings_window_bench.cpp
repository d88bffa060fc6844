// Measures the settings window with a document of 10,000 items on an X display: the opening as the
// first window of a process, and as a later one, each compared with a bare tree view with as many
// rows; an edit, from the change of the document until the file, the menu, the hot keys and the
// window have it; the change of one row; the memory after the first and after 100 openings; and the
// review and the merge of a large pack. Prints medians. Needs a session bus and a display.
//
// With the argument "first-settings" or "first-tree" it only opens that window, and prints the time
// in milliseconds. It starts itself in these two ways.

#include <QApplication>
#include <QStandardItemModel>
#include <QTreeView>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <malloc.h>
#include <stdlib.h>
#include <unistd.h>

#include "about/updater_manager.h"
#include "app/status_menu_builder.h"
#include "bench/sample_document.h"
#include "bench/statistics.h"
#include "config/settings_manager.h"
#include "import/import_coordinator.h"
#include "import/import_sheet_controller.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/hot_keys/x11_hot_keys.h"
#include "platform/linux/icons/icon_theme_images.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/status_item/status_notifier_item.h"
#include "platform/memory/memory_platform.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/qt/windows/qt_window_system.h"
#include "settings_ui/settings_window_controller.h"
#include "shortcuts/hot_key_manager.h"

namespace quillmar {
namespace {

using Clock = BenchClock;

constexpr int rounds = 15;
constexpr int processes = 7;
constexpr int openings = 100;
constexpr int packRounds = 5;
constexpr double openLimit = 300;
constexpr double editLimit = 60;
constexpr double rowLimit = 10;
constexpr double reviewLimit = 1000;
constexpr double mergeLimit = 2000;
constexpr int packFolders = 20;
constexpr int itemsPerPackFolder = 1000;

/// Notes when a widget is painted.
class PaintWatch final : public QObject {
 public:
  explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

  void waitForPaint() {
    painted_ = false;
    while (!painted_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }

 private:
  bool painted_ = false;
};

/// In kB, without what the allocator only keeps.
long proportionalMemory() {
  malloc_trim(0);
  std::ifstream rollup("/proc/self/smaps_rollup");
  std::string word;
  while (rollup >> word) {
    long kilobytes = 0;
    if (word == "Pss:" && rollup >> kilobytes) return kilobytes;
  }
  return 0;
}

/// A tree view with as many rows, from nothing until it is painted.
double openBareTree(const QuillmarConfig& config) {
  const auto start = Clock::now();
  QStandardItemModel model;
  for (const MenuCategory& category : config.categories) {
    auto* const folder = new QStandardItem(QString::fromStdString(category.name));
    for (const MenuItem& item : category.items) {
      folder->appendRow(new QStandardItem(QString::fromStdString(item.title)));
    }
    model.appendRow(folder);
  }
  QTreeView tree;
  tree.setUniformRowHeights(true);
  tree.setHeaderHidden(true);
  tree.setModel(&model);
  tree.expandAll();
  tree.resize(600, 520);
  PaintWatch watch(*tree.viewport());
  tree.show();
  watch.waitForPaint();
  return milliseconds(Clock::now() - start);
}

/// A pack of 1.98 MB with 20,000 items. All ids begin with `prefix`, a single character.
std::string largePack(char prefix) {
  const std::string command = R"("printf '%s\\n' alpha beta gamma delta )";
  std::string json = R"({"version":2,"name":"Large","categories":[)";
  for (int folder = 0; folder < packFolders; ++folder) {
    const std::string folderId = prefix + std::to_string(folder);
    json += (folder == 0 ? "" : ",") + (R"({"id":")" + folderId) + R"(","name":"Folder","items":[)";
    for (int item = 0; item < itemsPerPackFolder; ++item) {
      const std::string number = std::to_string(item);
      json += (item == 0 ? "" : ",") + (R"({"id":")" + folderId) + "-" + number +
              R"(","title":"Item )" + number + R"(","command":{"value":)" + command + number +
              R"("}})";
    }
    json += "]}";
  }
  return json + "]}";
}

class Bench {
 public:
  Bench(GDBusConnection* bus, const std::string& folder)
      : bundle_(BundleDirectory::ofThisProgram()),
        images_(bundle_.iconThemePath(), IconThemes({}, {})),
        item_(bus, mainQueue_, {"quillmar-bench", "Quillmar", bundle_.iconThemePath(), ""}),
        x11HotKeys_(getenv("DISPLAY")) {
    environment_.variables["QUILLMAR_SETTINGS_DIR"] = folder;
    settings_.emplace(
        SettingsManager::Collaborators{environment_, memory_.userDirectories, files_, center_});
    settings_->config = makeSampleDocument();
    hotKeys_.emplace(HotKeyManager::Collaborators{.settings = *settings_,
                                                  .hotKeys = x11HotKeys_,
                                                  .application = memory_.application,
                                                  .mainQueue = mainQueue_,
                                                  .log = [](std::string_view) {}});
    updater_.emplace(memory_.bundle, memory_.updaters);
    importCoordinator_.emplace(ImportCoordinator::Collaborators{.settings = *settings_,
                                                                .files = files_,
                                                                .downloader = memory_.downloader,
                                                                .application = memory_.application,
                                                                .windows = windows_,
                                                                .log = [](std::string_view) {}});
    observation_ = center_.addObserver(menuItemSettingsChanged, [this] {
      item_.setMenu(buildStatusMenu(settings_->config, images_, false));
      hotKeys_->reloadFromSettings();
    });
    importCoordinator_->settingsWindowProvider = [this] {
      (void)controller_->window().show({});
      return &controller_->window();
    };
    settings_->save();
  }

  const QuillmarConfig& config() const { return settings_->config; }

  /// Creates the window and returns the time until it is painted.
  double open() {
    const auto start = Clock::now();
    controller_.emplace(
        SettingsWindowController::Collaborators{.settings = *settings_,
                                                .updaterManager = *updater_,
                                                .importCoordinator = *importCoordinator_,
                                                .files = files_,
                                                .mainQueue = mainQueue_,
                                                .windows = windows_,
                                                .images = images_,
                                                .loginItem = memory_.loginItem,
                                                .workspace = memory_.workspace,
                                                .notificationCenter = center_,
                                                .log = [](std::string_view) {}});
    (void)controller_->window().show({});
    waitForPaint();
    return milliseconds(Clock::now() - start);
  }

  void openAgain() {
    (void)controller_->window().show({});
    waitForPaint();
  }

  void close() {
    controller_->window().close();
    QCoreApplication::processEvents();
  }

  void forget() { controller_.reset(); }

  double edit(int round) {
    MenuItem changed = settings_->config.categories[0].items[1];
    changed.title = "Round " + std::to_string(round);
    const auto start = Clock::now();
    settings_->updateItem(changed, settings_->config.categories[0].id);
    waitForPaint();
    return milliseconds(Clock::now() - start);
  }

  /// Reads the pack and returns the time until its review is painted.
  double review(const std::string& path) {
    const auto start = Clock::now();
    importCoordinator_->open(path);
    Window& sheet = importCoordinator_->activeSheet()->window();
    PaintWatch(widgetPeer(*sheet.contentView()).widget()).waitForPaint();
    return milliseconds(Clock::now() - start);
  }

  double merge() {
    const auto start = Clock::now();
    importCoordinator_->activeSheet()->mergePressed();
    waitForPaint();
    return milliseconds(Clock::now() - start);
  }

  double changeRow(int round) {
    settings_->config.categories[0].items[1].title = "Row " + std::to_string(round);
    const auto start = Clock::now();
    controller_->outlineView().reload();
    waitForPaint();
    return milliseconds(Clock::now() - start);
  }

 private:
  void waitForPaint() {
    auto& tree = static_cast<QTreeView&>(widgetPeer(controller_->outlineView()).widget());
    PaintWatch(*tree.viewport()).waitForPaint();
  }

  MemoryPlatform memory_;
  Environment environment_;
  PosixFileSystem files_;
  NotificationCenter center_;
  MainLoopTaskQueue mainQueue_;
  BundleDirectory bundle_;
  IconThemeImages images_;
  StatusNotifierItem item_;
  X11HotKeys x11HotKeys_;
  std::optional<SettingsManager> settings_;
  std::optional<HotKeyManager> hotKeys_;
  std::optional<UpdaterManager> updater_;
  std::optional<ImportCoordinator> importCoordinator_;
  NotificationCenter::Observation observation_;
  QtWindowSystem windows_{mainQueue_};
  std::optional<SettingsWindowController> controller_;
};

/// The time that another process of this program takes to open its first window.
double firstWindowOfAProcess(const std::string& window) {
  const std::unique_ptr<FILE, int (*)(FILE*)> output(
      popen(("/proc/" + std::to_string(getpid()) + "/exe " + window).c_str(), "r"), pclose);
  double time = 0;
  return output && std::fscanf(output.get(), "%lf", &time) == 1 ? time : 0;
}

int measure(int argc, char** argv) {
  const QApplication application(argc, argv);
  const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  char folder[] = "/tmp/quillmar-bench-XXXXXX";
  if (!bus || !mkdtemp(folder)) return EXIT_FAILURE;
  Bench bench(bus.get(), folder);
  const std::string window = argc > 1 ? argv[1] : "";
  if (!window.empty()) {
    std::printf("%f\n", window == "first-tree" ? openBareTree(bench.config()) : bench.open());
    std::filesystem::remove_all(folder);
    return EXIT_SUCCESS;
  }

  std::vector<double> firstWindows;
  std::vector<double> firstTrees;
  for (int round = 0; round < processes; ++round) {
    firstWindows.push_back(firstWindowOfAProcess("first-settings"));
    firstTrees.push_back(firstWindowOfAProcess("first-tree"));
  }

  // The first window of a process also loads fonts and styles.
  QWidget first;
  PaintWatch firstPainted(first);
  first.show();
  firstPainted.waitForPaint();
  first.hide();

  std::vector<double> opened;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    bench.forget();
    opened.push_back(bench.open());
    bench.close();
    ratios.push_back(opened.back() / openBareTree(bench.config()));
  }
  // The bare tree views have left gaps in the heap, so only the openings that follow are compared.
  bench.openAgain();
  bench.close();
  const long memoryAtFirst = proportionalMemory();
  for (int i = 0; i < openings; ++i) {
    bench.openAgain();
    bench.close();
  }
  const long memoryAtLast = proportionalMemory();

  bench.openAgain();
  std::vector<double> edits;
  std::vector<double> rows;
  for (int round = 0; round < rounds; ++round) {
    edits.push_back(bench.edit(round));
    rows.push_back(bench.changeRow(round));
  }
  // Each merge adds 20,000 items, so the document grows.
  std::vector<double> reviews;
  std::vector<double> merges;
  for (int round = 0; round < packRounds; ++round) {
    const std::string path = std::string(folder) + "/large.quillmarpack";
    std::ofstream(path) << largePack(static_cast<char>('a' + round));
    reviews.push_back(bench.review(path));
    merges.push_back(bench.merge());
  }
  bench.forget();
  std::filesystem::remove_all(folder);

  std::printf("settings window, 10,000 items, median of %d:\n", rounds);
  std::printf("  first window of a process: %.1f ms, %.2f times a bare tree view\n",
              median(firstWindows), median(firstWindows) / median(firstTrees));
  std::printf("  opened and painted:  %6.1f ms (limit %.0f), %.2f times a bare tree view\n",
              median(opened), openLimit, median(ratios));
  std::printf("  an edit:             %6.1f ms (limit %.0f)\n", median(edits), editLimit);
  std::printf("  one changed row:     %6.1f ms (limit %.0f)\n", median(rows), rowLimit);
  std::printf("  PSS after the first and after %d more openings: %ld kB, %ld kB\n", openings,
              memoryAtFirst, memoryAtLast);
  std::printf("a pack of %d items, median of %d:\n", packFolders * itemsPerPackFolder, packRounds);
  std::printf("  reviewed and painted: %6.1f ms (limit %.0f)\n", median(reviews), reviewLimit);
  std::printf("  merged:               %6.1f ms (limit %.0f)\n", median(merges), mergeLimit);
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quillmar

int main(int argc, char** argv) {
  return quillmar::measure(argc, argv);
}
