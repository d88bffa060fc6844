// The clipboard of an X server: this program owns the selection CLIPBOARD and sends its text to
// every program that asks. Main thread; requests are answered while the main loop runs.
//
// Connects on the first text. If the server goes away, the text is lost; the next text connects
// again.

#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "platform/linux/pasteboard/selection_contents.h"
#include "platform/linux/pasteboard/selection_transfer.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/log.h"
#include "platform/pasteboard.h"
#include "platform/result.h"

namespace quillmar {

class X11Pasteboard final : public Pasteboard {
 public:
  /// `display` is named as in the variable DISPLAY. `log` receives a line when a text could not be
  /// copied to the clipboard.
  X11Pasteboard(std::string display, LogLine log);

  /// Gives up the selection.
  ~X11Pasteboard() override;

  /// Waits for the server, so that the text is on the clipboard on return. If the server is too
  /// busy, the text follows later.
  void setString(std::string text) override;

  /// Hands the text to the clipboard manager, so that it outlives this program. Blocks until the
  /// manager has it, for at most `timeout`. Returns at once if there is no manager or another
  /// program owns the clipboard.
  void saveForQuit(std::chrono::milliseconds timeout);

 private:
  /// State that lives as long as one connection.
  struct Session;

  /// Connects unless connected. The error is a sentence without its full stop.
  Result<void> connect();
  void serverGone();

  void handle(const xcb_generic_event_t& event);
  void handleProperty(const xcb_property_notify_event_t& event, std::uint32_t sequence);
  void handleRequest(const xcb_selection_request_event_t& request);
  void windowGone(xcb_window_t window, std::uint32_t sequence);

  /// Requests the server's time; handleTime() receives it.
  void askForTime();
  void handleTime(xcb_timestamp_t time);
  void takeOwnership(xcb_timestamp_t time);
  bool ownsSelection() const;

  bool mayAnswer(const xcb_selection_request_event_t& request) const;
  bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);

  std::string display_;
  LogLine log_;
  std::unique_ptr<Session> session_;
};

}  // namespace quillmar
