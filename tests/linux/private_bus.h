// A message bus of the test's own.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"
#include "tests/linux/child_programs.h"

namespace quillmar {

class PrivateBus {
 public:
  /// `activatable` are names of services that the bus would start on demand (it would fail: there
  /// is no program behind them).
  explicit PrivateBus(const std::vector<std::string>& activatable = {});
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return server_->readyLine(); }
  GObjectPtr<GDBusConnection> connect() const;
  void kill() { server_->kill(); }
  void signal(int number) { server_->signal(number); }

 private:
  std::string folder_;
  std::unique_ptr<ServerProgram> server_;
};

/// Takes the name on the connection; false when somebody else has it.
bool takeName(GDBusConnection* connection, const char* name);

/// Gives it back.
void releaseName(GDBusConnection* connection, const char* name);

}  // namespace quillmar
