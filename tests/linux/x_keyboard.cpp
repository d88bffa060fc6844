#include "tests/linux/x_keyboard.h"

#include <gtest/gtest.h>
#include <xcb/record.h>
#include <xcb/xtest.h>

namespace quillmar {

namespace {

xcb_window_t rootOf(const XcbConnectionPointer& connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
}

XcbConnectionPointer connectTo(const std::string& display) {
  XcbConnectionPointer connection(xcb_connect(display.c_str(), nullptr));
  EXPECT_EQ(xcb_connection_has_error(connection.get()), 0);
  return connection;
}

/// Counts the presses of the keyboard, whichever program gets them. Repeated ones are presses, too.
class PressCounter {
 public:
  PressCounter(const std::string& display, xcb_connection_t* control)
      : connection_(connectTo(display)), control_(control), context_(xcb_generate_id(control)) {
    xcb_record_range_t presses{};
    presses.device_events = {XCB_KEY_PRESS, XCB_KEY_PRESS};
    const xcb_record_client_spec_t everybody = XCB_RECORD_CS_ALL_CLIENTS;
    xcb_record_create_context(control_, context_, 0, 1, 1, &everybody, &presses);
    // The context must exist when the other connection names it.
    const XcbPointer<xcb_get_input_focus_reply_t> created(
        xcb_get_input_focus_reply(control_, xcb_get_input_focus(control_), nullptr));
    cookie_ = xcb_record_enable_context(connection_.get(), context_);
    // The first reply says that the counter has started.
    next();
  }
  ~PressCounter() { xcb_record_disable_context(control_, context_); }
  PressCounter(const PressCounter&) = delete;
  PressCounter& operator=(const PressCounter&) = delete;

  void waitForPresses(int count) {
    while (count > 0 && next()) --count;
    EXPECT_EQ(count, 0);
  }

 private:
  /// Waits for a reply.
  bool next() {
    return XcbPointer<xcb_record_enable_context_reply_t>(
               xcb_record_enable_context_reply(connection_.get(), cookie_, nullptr)) != nullptr;
  }

  XcbConnectionPointer connection_;
  xcb_connection_t* control_;
  xcb_record_context_t context_;
  xcb_record_enable_context_cookie_t cookie_{};
};

}  // namespace

XKeyboard::XKeyboard(const std::string& display)
    : display_(display), connection_(connectTo(display)) {}

void XKeyboard::press(const std::vector<xcb_keycode_t>& keys) {
  send(XCB_KEY_PRESS, keys);
}

void XKeyboard::release(const std::vector<xcb_keycode_t>& keys) {
  send(XCB_KEY_RELEASE, {keys.rbegin(), keys.rend()});
}

void XKeyboard::type(const std::vector<xcb_keycode_t>& keys) {
  press(keys);
  release(keys);
}

void XKeyboard::hold(const std::vector<xcb_keycode_t>& keys) {
  PressCounter counter(display_, connection_.get());
  press(keys);
  counter.waitForPresses(static_cast<int>(keys.size()) + 3);
  release(keys);
}

std::uint16_t XKeyboard::state() {
  const auto cookie = xcb_query_pointer(connection_.get(), rootOf(connection_));
  const XcbPointer<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(connection_.get(), cookie, nullptr));
  EXPECT_TRUE(reply);
  return reply ? reply->mask : 0;
}

void XKeyboard::send(std::uint8_t event, const std::vector<xcb_keycode_t>& keys) {
  for (const xcb_keycode_t key : keys) {
    xcb_test_fake_input(connection_.get(), event, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  }
  // The reply says that the server has processed all of them.
  state();
}

OtherProgramWithGrabs::OtherProgramWithGrabs(const std::string& display)
    : connection_(connectTo(display)) {}

int OtherProgramWithGrabs::grab(xcb_keycode_t key, std::uint16_t modifiers) {
  const auto cookie = xcb_grab_key_checked(connection_.get(), false, rootOf(connection_), modifiers,
                                           key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection_.get(), cookie));
  return error ? error->error_code : 0;
}

}  // namespace quillmar
