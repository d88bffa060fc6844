#include "platform/linux/workspace/desktop_workspace.h"

#include <memory>
#include <utility>

#include "platform/error_text.h"
#include "platform/linux/bus/bus_calls.h"
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

void finish(GObject* /*source*/, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
  GError* raised = nullptr;
  g_app_info_launch_default_for_uri_finish(result, &raised);
  const GErrorPtr error(raised);
  opening->completion(error ? Result<void>(describe(*error, opening->url)) : Result<void>());
}

}  // namespace

DesktopWorkspace::DesktopWorkspace(const Environment& environment, const FileSystem& files,
                                   Processes& processes)
    : environment_(environment), files_(files), processes_(processes) {}

Result<void> DesktopWorkspace::openInTerminal(const std::string& path) {
  const Result<Process> terminal = terminalProcess(path, environment_, files_);
  if (!terminal) return terminal.error();
  return processes_.launchDetached(terminal.value());
}

void DesktopWorkspace::openURL(const std::string& url, Completion completion) {
  auto opening = std::make_unique<Opening>(Opening{url, std::move(completion)});
  g_app_info_launch_default_for_uri_async(url.c_str(), makeContext().get(), nullptr, finish,
                                          opening.release());
}

}  // namespace quillmar
