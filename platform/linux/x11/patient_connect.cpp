#include "platform/linux/x11/patient_connect.h"

#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace quillmar {

namespace {

XcbConnected connect(const std::string& display) {
  XcbConnected connected;
  connected.connection = xcb_connect(display.c_str(), &connected.screenNumber);
  if (xcb_connection_has_error(connected.connection)) {
    xcb_disconnect(connected.connection);
    connected.connection = nullptr;
  }
  return connected;
}

/// A server that lets itself be waited for.
struct Pending {
  std::string display;
  std::future<XcbConnected> answer;
};

}  // namespace

XcbConnected connectPatiently(const std::string& display, std::chrono::milliseconds patience) {
  static std::optional<Pending> pending;
  if (!pending || pending->display != display) {
    auto answer = std::make_shared<std::promise<XcbConnected>>();
    pending = Pending{display, answer->get_future()};
    std::thread([answer, display] { answer->set_value(connect(display)); }).detach();
  } else {
    patience = std::chrono::milliseconds(0);
  }
  if (pending->answer.wait_for(patience) != std::future_status::ready) return {};
  const XcbConnected connected = pending->answer.get();
  pending.reset();
  return connected;
}

}  // namespace quillmar
