#include "platform/qt/module/display_probe.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include "platform/patient_question.h"

namespace quillmar {

namespace {

constexpr std::chrono::milliseconds patience(3000);
constexpr std::chrono::milliseconds secondPatience(100);

std::string quoted(const std::string& name) {
  return "“" + name + "”";
}

bool xServerAnswers(const std::string& display) {
  xcb_connection_t* const connection = xcb_connect(display.c_str(), nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

class Socket {
 public:
  Socket() : number_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  ~Socket() {
    if (number_ >= 0) close(number_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

/// Empty when the environment leaves the folder open.
std::string waylandSocket(const Environment& environment) {
  std::string name = environment.value("WAYLAND_DISPLAY").value_or("");
  if (name.empty()) name = "wayland-0";
  if (name.front() == '/') return name;
  const std::string folder = environment.value("XDG_RUNTIME_DIR").value_or("");
  return folder.empty() ? "" : folder + "/" + name;
}

/// Asks for a sign of life, wl_display.sync: object 1, request 0, 12 bytes, a new object 2. A
/// server that gave none is waited for no second time.
bool waylandServerAnswers(int socket) {
  static std::chrono::milliseconds timeout = patience;
  const std::array<std::uint32_t, 3> sync = {1, 12U << 16U, 2};
  if (send(socket, sync.data(), sizeof sync, MSG_NOSIGNAL) != sizeof sync) return false;
  pollfd answer{.fd = socket, .events = POLLIN, .revents = 0};
  const bool answers =
      poll(&answer, 1, static_cast<int>(timeout.count())) == 1 && (answer.revents & POLLIN) != 0;
  timeout = answers ? patience : secondPatience;
  return answers;
}

}  // namespace

std::optional<std::string> problemWithX11(const std::string& display) {
  if (display.empty()) return "DISPLAY is not set";
  static PatientQuestion<bool> server;
  const std::optional<bool> answers = server.ask(
      display, [display] { return xServerAnswers(display); }, patience);
  if (!answers) return "the X server " + quoted(display) + " does not answer";
  if (!*answers) return "the X server " + quoted(display) + " cannot be reached";
  return std::nullopt;
}

std::optional<std::string> problemWithWayland(const Environment& environment) {
  const std::string path = waylandSocket(environment);
  if (path.empty()) return "XDG_RUNTIME_DIR is not set";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const Socket socket;
  const bool fits = path.size() < sizeof address.sun_path;
  if (fits) std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  if (!fits ||
      connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return "the Wayland server at " + quoted(path) + " cannot be reached";
  }
  if (!waylandServerAnswers(socket.number())) {
    return "the Wayland server at " + quoted(path) + " does not answer";
  }
  return std::nullopt;
}

}  // namespace quillmar
