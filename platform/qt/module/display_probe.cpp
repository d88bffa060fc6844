#include "platform/qt/module/display_probe.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/file_descriptor.h"
#include "platform/xcb/connect_with_timeout.h"

namespace quillmar {

namespace {

constexpr std::chrono::milliseconds firstTimeout(3000);
/// For a server that did not reply the last time.
constexpr std::chrono::milliseconds secondTimeout(100);

std::string quoted(const std::string& name) {
  return "“" + name + "”";
}

/// The socket's path; empty if the environment does not name its folder.
std::string waylandSocket(const Environment& environment) {
  std::string name = environment.value("WAYLAND_DISPLAY").value_or("");
  if (name.empty()) name = "wayland-0";
  if (name.front() == '/') return name;
  const std::string folder = environment.value("XDG_RUNTIME_DIR").value_or("");
  return folder.empty() ? "" : folder + "/" + name;
}

/// Sends wl_display.sync (object 1, request 0, 12 bytes, new object 2) and waits for a reply.
bool waylandServerAnswers(int socket) {
  static std::chrono::milliseconds timeout = firstTimeout;
  const std::array<std::uint32_t, 3> sync = {1, 12U << 16U, 2};
  if (send(socket, sync.data(), sizeof sync, MSG_NOSIGNAL) != sizeof sync) return false;
  pollfd answer{.fd = socket, .events = POLLIN, .revents = 0};
  const bool answers =
      poll(&answer, 1, static_cast<int>(timeout.count())) == 1 && (answer.revents & POLLIN) != 0;
  timeout = answers ? firstTimeout : secondTimeout;
  return answers;
}

}  // namespace

Result<XcbConnectionPointer> probeX11(const std::string& display) {
  if (display.empty()) return Error{"DISPLAY is not set"};
  static XcbConnector connector;
  auto connected = connector.connect(display, firstTimeout);
  if (!connected) {
    return Error{"the X server " + quoted(display) + " " + connected.error().description};
  }
  return std::move(connected.value().connection);
}

std::optional<std::string> problemWithWayland(const Environment& environment) {
  const std::string path = waylandSocket(environment);
  if (path.empty()) return "XDG_RUNTIME_DIR is not set";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const FileDescriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const bool fits = path.size() < sizeof address.sun_path;
  if (fits) std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  if (!fits ||
      connect(server.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return "the Wayland server at " + quoted(path) + " cannot be reached";
  }
  if (!waylandServerAnswers(server.number())) {
    return "the Wayland server at " + quoted(path) + " does not answer";
  }
  return std::nullopt;
}

}  // namespace quillmar
