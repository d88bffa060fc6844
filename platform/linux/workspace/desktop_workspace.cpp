#include "platform/linux/workspace/desktop_workspace.h"

#include <filesystem>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <gio/gunixfdlist.h>

#include "platform/error_text.h"
#include "platform/file_descriptor.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/workspace/terminal_emulators.h"

namespace quillmar {

namespace {

using Completion = std::function<void(const Result<void>& opened)>;

struct Opening {
  std::string url;
  Completion completion;
};

/// Launched programs must not inherit the activation token that this program was started with.
GObjectPtr<GAppLaunchContext> makeContext() {
  GObjectPtr<GAppLaunchContext> context(g_app_launch_context_new());
  for (const char* variable : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}) {
    g_app_launch_context_unsetenv(context.get(), variable);
  }
  return context;
}

Error describe(const GError& error, const std::string& url) {
  if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED)) {
    return {"No program is set up to open " + quotedPath(url) + "."};
  }
  return {quotedPath(url) + " could not be opened: " + busErrorMessage(error) + "."};
}

/// The file's URL; empty if the path is not absolute.
std::string urlOf(const std::string& path) {
  const GStringPtr url(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  return url ? url.get() : "";
}

void finish(GObject* /*source*/, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
  GError* raised = nullptr;
  g_app_info_launch_default_for_uri_finish(result, &raised);
  const GErrorPtr error(raised);
  opening->completion(error ? Result<void>(describe(*error, opening->url)) : Result<void>());
}

}  // namespace

DesktopWorkspace::DesktopWorkspace(const Environment& environment, const FileSystem& files,
                                   Processes& processes, GDBusConnection* bus)
    : environment_(environment), files_(files), processes_(processes) {
  if (bus) calls_.emplace(bus);
}

Result<void> DesktopWorkspace::openInTerminal(const std::string& path) {
  const Result<Process> terminal = terminalProcess(path, environment_, files_);
  if (!terminal) return terminal.error();
  return processes_.launchDetached(terminal.value());
}

void DesktopWorkspace::revealFile(const std::string& path, Completion completion) {
  const std::string url = urlOf(path);
  if (!calls_ || url.empty()) return openFolder(path, std::move(completion));
  const char* const urls[] = {url.c_str()};
  calls_->call({"org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                "org.freedesktop.FileManager1", "ShowItems"},
               g_variant_new("(@ass)", g_variant_new_strv(urls, 1), ""), "()",
               [this, path, completion = std::move(completion)](GVariant*, const GError* error) {
                 if (!error) return completion({});
                 openFolderInPortal(path, completion);
               });
}

void DesktopWorkspace::openFolderInPortal(const std::string& path, Completion completion) {
  const FileDescriptor file(open(path.c_str(), O_PATH | O_CLOEXEC));
  const GObjectPtr<GUnixFDList> descriptors(g_unix_fd_list_new());
  if (!file || g_unix_fd_list_append(descriptors.get(), file.number(), nullptr) < 0) {
    return openFolder(path, std::move(completion));
  }
  // The reply means that the portal has accepted the request.
  calls_->call(
      {"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
       "org.freedesktop.portal.OpenURI", "OpenDirectory"},
      g_variant_new("(sha{sv})", "", 0, nullptr), "(o)",
      [this, path, completion = std::move(completion)](GVariant*, const GError* error) {
        if (!error) return completion({});
        openFolder(path, completion);
      },
      descriptors.get());
}

void DesktopWorkspace::openFolder(const std::string& path, Completion completion) {
  openURL(urlOf(std::filesystem::path(path).parent_path().string()), std::move(completion));
}

void DesktopWorkspace::openURL(const std::string& url, Completion completion) {
  auto opening = std::make_unique<Opening>(Opening{url, std::move(completion)});
  g_app_info_launch_default_for_uri_async(url.c_str(), makeContext().get(), nullptr, finish,
                                          opening.release());
}

}  // namespace quillmar
