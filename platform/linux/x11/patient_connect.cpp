#include "platform/linux/x11/patient_connect.h"

#include "platform/patient_question.h"

namespace quillmar {

namespace {

XcbConnected connect(const std::string& display) {
  XcbConnected connected;
  connected.connection.reset(xcb_connect(display.c_str(), &connected.screenNumber));
  if (xcb_connection_has_error(connected.connection.get())) connected.connection.reset();
  return connected;
}

}  // namespace

XcbConnected connectPatiently(const std::string& display, std::chrono::milliseconds patience) {
  static PatientQuestion<XcbConnected> server;
  return server
      .ask(
          display, [display] { return connect(display); }, patience)
      .value_or(XcbConnected());
}

}  // namespace quillmar
