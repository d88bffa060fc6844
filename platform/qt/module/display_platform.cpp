#include "platform/qt/module/display_platform.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/qt/module/display_probe.h"
#include "platform/qt/module/platform_plugin.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* wayland = "wayland";
constexpr const char* x11 = "xcb";

/// What can be looked at before the toolkit starts, or needs no display. Others, for screens
/// without a desktop, may end the program.
constexpr std::array<std::string_view, 6> safePlugins = {wayland,     "wayland-egl", x11,
                                                         "offscreen", "minimal",     "vnc"};

std::string valueOf(const Environment& environment, const std::string& name) {
  return environment.value(name).value_or("");
}

bool isGnome(const Environment& environment) {
  const std::vector<std::string> names =
      text::split(valueOf(environment, "XDG_CURRENT_DESKTOP"), ':');
  return std::find(names.begin(), names.end(), "GNOME") != names.end();
}

/// The platform, or why it cannot be used, as the end of a sentence.
Result<UsablePlatform> usable(const std::string& platform, const Environment& environment) {
  const std::string plugin = platform.substr(0, platform.find(':'));
  if (std::find(safePlugins.begin(), safePlugins.end(), plugin) == safePlugins.end()) {
    return Error{"it does not run on “" + plugin + "”, which QT_QPA_PLATFORM names"};
  }
  if (auto problem = problemWithPlugin(plugin)) return Error{*std::move(problem)};
  if (plugin == x11) {
    auto probe = probeX11(valueOf(environment, "DISPLAY"));
    if (!probe) return probe.error();
    return UsablePlatform{platform, std::move(probe).value()};
  }
  if (plugin.starts_with(wayland)) {
    if (auto problem = problemWithWayland(environment)) return Error{*std::move(problem)};
  }
  return UsablePlatform{platform, nullptr};
}

}  // namespace

std::vector<std::string> wantedPlatforms(const Environment& environment) {
  std::vector<std::string> wanted = text::split(valueOf(environment, "QT_QPA_PLATFORM"), ';');
  if (!wanted.empty()) return wanted;
  if (!valueOf(environment, "WAYLAND_DISPLAY").empty()) wanted.emplace_back(wayland);
  if (!valueOf(environment, "DISPLAY").empty()) wanted.emplace_back(x11);
  // There the toolkit prefers X11, whose windows look like the others.
  const bool prefersX11 = isGnome(environment) || valueOf(environment, "XDG_SESSION_TYPE") == "x11";
  if (prefersX11) std::reverse(wanted.begin(), wanted.end());
  return wanted;
}

Result<UsablePlatform> usablePlatform(const Environment& environment) {
  std::string reason = "there is no display: neither WAYLAND_DISPLAY nor DISPLAY is set";
  bool isFirst = true;
  for (const std::string& platform : wantedPlatforms(environment)) {
    auto found = usable(platform, environment);
    if (found) return found;
    if (isFirst) reason = found.error().description;
    isFirst = false;
  }
  return Error{"Quillmar cannot show windows, because " + reason + "."};
}

}  // namespace quillmar
