// Imports packs: reads or downloads them, shows them for review, then merges them into the document
// or replaces the user's folders. Nothing changes before the user has chosen.
// Sheets and alerts are attached to the settings window. They wait while it shows another sheet or
// a panel, for example an editor. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "platform/application.h"
#include "platform/downloader.h"
#include "platform/file_system.h"
#include "platform/log.h"
#include "platform/platform.h"
#include "platform/widgets/window.h"

namespace quillmar {

class ImportSheetController;
struct Url;

/// Maximum size in bytes of a downloaded pack.
inline constexpr std::size_t maximumPackSize = 2'097'152;

class ImportCoordinator {
 public:
  /// Not owned; all must outlive the coordinator.
  struct Collaborators {
    SettingsManager& settings = SettingsManager::shared();
    const FileSystem& files = Platform::shared().files;
    Downloader& downloader = Platform::shared().downloader;
    Application& application = Platform::shared().application;
    WindowSystem& windows = Platform::shared().windows;
    LogLine log = logToStandardOutput;
  };

  explicit ImportCoordinator(Collaborators collaborators);
  ~ImportCoordinator();

  ImportCoordinator(const ImportCoordinator&) = delete;
  ImportCoordinator& operator=(const ImportCoordinator&) = delete;

  /// The process-wide coordinator, created on first use from the installed platform.
  static ImportCoordinator& shared();

  /// Opens the settings window and returns it; null if there is none. Without a window that is
  /// visible, imports and failures are dropped.
  std::function<Window*()> settingsWindowProvider;

  /// Downloads the pack that the link "quillmar://import?url=…" points at, and reviews it. Ignores
  /// links of other schemes.
  void handle(const std::string& link);

  /// Reads the pack and reviews it. `file` is an absolute path or a URL with the scheme "file".
  void open(const std::string& file);

  /// Shows the pack to the user, who decides about it. A review that is shown or waits is replaced.
  /// `source` names where the pack came from: a file name or a host name.
  void review(QuillmarConfig config, std::string source);

  /// Shows an alert. Does nothing if an equal one is shown or waits. At most five failures are
  /// shown or waiting; further ones are only logged.
  void fail(const std::string& message, const std::string& detail);

  /// The review on the screen; null if there is none.
  ImportSheetController* activeSheet() const { return activeSheet_.get(); }

 private:
  /// A pack that waits for its review.
  struct Review {
    QuillmarConfig config;
    std::string source;
  };
  /// An alert that waits or is shown.
  struct Failure {
    std::string message;
    std::string detail;

    bool operator==(const Failure&) const = default;
  };

  void download(const Url& url);
  void downloaded(const Url& url, const Result<HttpResponse>& response);
  void presentReview(Review review, Window& window);
  void reviewed(std::optional<ImportMode> mode, Window& window);
  void confirmReplace(QuillmarConfig config, Window& window);
  void store(QuillmarConfig config);
  void showFailure(const std::shared_ptr<const Failure>& failure, Window& window);
  Window* settingsWindow() const;

  Collaborators collaborators_;
  std::unique_ptr<ImportSheetController> activeSheet_;
  /// Owned by the task that presents it. Expires if the settings window is closed before.
  std::weak_ptr<Review> waitingReview_;
  /// Owned by the tasks and alerts that show them.
  std::vector<std::weak_ptr<const Failure>> failures_;
  /// Expires when the coordinator is destroyed.
  std::shared_ptr<ImportCoordinator*> self_ = std::make_shared<ImportCoordinator*>(this);
};

}  // namespace quillmar
