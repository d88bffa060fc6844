// The shortcuts that KDE stores for this program, read and removed through KDE's own service.
//
// KDE stores the keys of a portal session under an identity that depends on how the program was
// started, and keeps them after the session. Stored keys block the same keys elsewhere, and the
// portal reports keys as granted that belong to another program. Main thread.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/linux/bus/bus_calls.h"

namespace quillmar {

struct KdeShortcut {
  /// The identity under which it is stored.
  std::string component;
  /// The portal's id of the shortcut.
  std::string id;
  /// False if another program has the key, or the user has removed it.
  bool hasKey = false;
};

class KdeGlobalAccel {
 public:
  /// `calls` must outlive the object. Shortcuts whose identity ends with `token` are this
  /// program's.
  KdeGlobalAccel(BusCalls& calls, std::string token);

  /// Tells whether the session has the service. Starts nothing.
  void find(std::function<void(bool isKde)> found);

  /// Lists the stored shortcuts of all identities; empty if the service does not reply.
  void list(std::function<void(std::vector<KdeShortcut> stored)> listed);

  /// Removes a stored shortcut and frees its key.
  void remove(const KdeShortcut& shortcut);

 private:
  using Listed = std::function<void(std::vector<KdeShortcut>)>;

  void listComponents(std::vector<std::string> paths, std::vector<KdeShortcut> stored,
                      Listed listed);

  BusCalls& calls_;
  std::string token_;
};

}  // namespace quillmar
