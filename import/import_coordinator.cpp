#include "import/import_coordinator.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "config/document_decoder.h"
#include "config/document_file.h"
#include "import/import_sheet_controller.h"
#include "import/url.h"
#include "platform/single_line_text.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr std::string_view linkScheme = "quillmar";
constexpr std::string_view importHost = "import";
constexpr std::string_view packUrlItem = "url";
constexpr std::string_view packUrlScheme = "https";

/// Maximum number of failures that are shown or waiting.
constexpr std::size_t maximumFailures = 5;

// In characters. Texts of alerts contain links and file names.
constexpr std::size_t maximumMessageLength = 300;
constexpr std::size_t maximumDetailLength = 500;

constexpr std::size_t replaceButton = 0;

bool isSuccess(int status) {
  return status >= 200 && status <= 299;
}

/// The address of the pack; absent if the link has no usable one.
std::optional<Url> packUrl(const Url& link) {
  const auto item = std::ranges::find(link.queryItems, packUrlItem, &Url::QueryItem::name);
  if (item == link.queryItems.end() || !item->value) return std::nullopt;
  std::optional<Url> url = parseUrl(*item->value);
  if (url && url->scheme != packUrlScheme) return std::nullopt;
  return url;
}

/// True if the text begins like a link of this program, whether or not it is a URL.
bool hasLinkScheme(std::string_view text) {
  return text::lowercased(text.substr(0, linkScheme.size() + 1)) == std::string(linkScheme) + ":";
}

/// The host in lower case; empty if there is none. The rest of the link need not be valid.
std::string hostOf(std::string_view link) {
  constexpr std::string_view slashes = "//";
  const std::size_t start = linkScheme.size() + 1;
  if (!link.substr(start).starts_with(slashes)) return {};
  const std::size_t end = link.find_first_of("/?#", start + slashes.size());
  const std::optional<Url> url = parseUrl(link.substr(0, end));
  return url ? text::lowercased(url->host.value_or("")) : "";
}

/// The last component of the path.
std::string fileName(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  const std::size_t slash = path.rfind('/');
  return std::string(slash == std::string_view::npos || path == "/" ? path
                                                                    : path.substr(slash + 1));
}

std::string couldNotRead(std::string_view path) {
  return "Could not read “" + fileName(path) + "”.";
}

}  // namespace

ImportCoordinator::ImportCoordinator(Collaborators collaborators)
    : collaborators_(std::move(collaborators)) {}

ImportCoordinator::~ImportCoordinator() = default;

ImportCoordinator& ImportCoordinator::shared() {
  static auto* coordinator = new ImportCoordinator({});
  return *coordinator;
}

Window* ImportCoordinator::settingsWindow() const {
  return settingsWindowProvider ? settingsWindowProvider() : nullptr;
}

void ImportCoordinator::handle(const std::string& link) {
  if (!hasLinkScheme(link)) return;
  if (hostOf(link) != importHost) {
    fail("Unsupported Quillmar link.", link);
    return;
  }
  const std::optional<Url> url = parseUrl(link);
  if (const std::optional<Url> pack = url ? packUrl(*url) : std::nullopt) {
    download(*pack);
  } else {
    fail("Quillmar links must point at an https URL.", link);
  }
}

void ImportCoordinator::download(const Url& url) {
  // Another user action may come before the reply.
  const Activation activation = collaborators_.application.takeActivation();
  collaborators_.downloader.get(
      url.absoluteString, maximumPackSize,
      [self = std::weak_ptr(self_), url, activation](const Result<HttpResponse>& response) {
        const auto coordinator = self.lock();
        if (!coordinator) return;
        (*coordinator)->collaborators_.application.setActivation(activation);
        (*coordinator)->downloaded(url, response);
      });
}

void ImportCoordinator::downloaded(const Url& url, const Result<HttpResponse>& response) {
  constexpr auto message = "Could not download the pack.";
  if (!response) return fail(message, response.error().description);
  const auto& [status, body] = response.value();
  if (!isSuccess(status) || body.empty()) {
    return fail(message, "The server responded with HTTP " + std::to_string(status) + ".");
  }
  if (body.size() > maximumPackSize) {
    return fail("The pack is too large to import.", url.absoluteString);
  }
  Result<QuillmarConfig> config = decodeDocument(body);
  if (!config) {
    return fail("That link does not point at a Quillmar pack.", config.error().description);
  }
  review(std::move(config).value(), url.host.value_or(url.absoluteString));
}

void ImportCoordinator::open(const std::string& file) {
  const std::optional<std::string> path = localFilePath(file);
  if (!path) {
    const std::optional<Url> url = parseUrl(file);
    return fail(couldNotRead(url ? url->path : file),
                "“" + file + "” is not the address of a file on this computer.");
  }
  Result<QuillmarConfig> config = readDocument(collaborators_.files, *path);
  if (!config) return fail(couldNotRead(*path), config.error().description);
  review(std::move(config).value(), fileName(*path));
}

void ImportCoordinator::review(QuillmarConfig config, std::string source) {
  Window* const window = settingsWindow();
  if (window == nullptr) return;
  // Closing the sheet may show what waits behind it.
  if (const auto previous = std::move(activeSheet_)) previous->discard();
  Review latest{.config = std::move(config), .source = std::move(source)};
  if (const std::shared_ptr<Review> waiting = waitingReview_.lock()) {
    *waiting = std::move(latest);
    return;
  }
  const auto waiting = std::make_shared<Review>(std::move(latest));
  waitingReview_ = waiting;
  window->whenFree([self = std::weak_ptr(self_), waiting, window] {
    const auto coordinator = self.lock();
    if (coordinator) (*coordinator)->presentReview(std::move(*waiting), *window);
  });
}

void ImportCoordinator::presentReview(Review review, Window& window) {
  activeSheet_ =
      std::make_unique<ImportSheetController>(collaborators_.windows, collaborators_.settings,
                                              std::move(review.config), std::move(review.source));
  activeSheet_->buildUI();
  const Result<void> shown = activeSheet_->present(
      window, [self = std::weak_ptr(self_), &window](std::optional<ImportMode> mode) {
        if (const auto coordinator = self.lock()) (*coordinator)->reviewed(mode, window);
      });
  if (shown) return;
  collaborators_.log("Could not show the pack: " + shown.error().description);
  activeSheet_.reset();
}

void ImportCoordinator::reviewed(std::optional<ImportMode> mode, Window& window) {
  const std::unique_ptr<ImportSheetController> sheet = std::move(activeSheet_);
  if (mode == ImportMode::merge) {
    store(collaborators_.settings.config.merging(sheet->incoming()));
  } else if (mode == ImportMode::replace) {
    confirmReplace(sheet->incoming(), window);
  }
}

void ImportCoordinator::confirmReplace(QuillmarConfig config, Window& window) {
  const Result<void> shown = window.beginAlert(
      {.style = AlertStyle::warning,
       .message = "Replace everything?",
       .informativeText = "All of your current folders and items will be removed and replaced with "
                          "the imported ones. Your preferences are kept.",
       .buttons = {"Replace", "Cancel"}},
      {}, [self = std::weak_ptr(self_), config = std::move(config)](std::size_t button) {
        const auto coordinator = self.lock();
        if (!coordinator || button != replaceButton) return;
        const QuillmarConfig& current = (*coordinator)->collaborators_.settings.config;
        (*coordinator)->store(current.replacingFolders(config));
      });
  if (!shown) collaborators_.log("Could not ask before replacing: " + shown.error().description);
}

void ImportCoordinator::store(QuillmarConfig config) {
  collaborators_.settings.config = std::move(config);
  collaborators_.settings.save();
}

void ImportCoordinator::fail(const std::string& message, const std::string& detail) {
  Window* const window = settingsWindow();
  if (window == nullptr) return;
  const auto failure = std::make_shared<const Failure>(Failure{
      singleLineText(message, maximumMessageLength), singleLineText(detail, maximumDetailLength)});
  std::erase_if(failures_, [](const auto& other) { return other.expired(); });
  for (const auto& other : failures_) {
    if (*other.lock() == *failure) return;
  }
  if (failures_.size() >= maximumFailures) {
    collaborators_.log(failure->message + " " + failure->detail);
    return;
  }
  failures_.push_back(failure);
  window->whenFree([self = std::weak_ptr(self_), failure, window] {
    if (const auto coordinator = self.lock()) (*coordinator)->showFailure(failure, *window);
  });
}

void ImportCoordinator::showFailure(const std::shared_ptr<const Failure>& failure, Window& window) {
  // The alert owns the failure while it is shown.
  const Result<void> shown = window.beginAlert({.style = AlertStyle::warning,
                                                .message = failure->message,
                                                .informativeText = failure->detail,
                                                .buttons = {}},
                                               {}, [failure](std::size_t /*button*/) {});
  if (!shown) collaborators_.log("Could not show an alert: " + shown.error().description);
}

}  // namespace quillmar
