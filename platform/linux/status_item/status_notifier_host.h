#pragma once

namespace quillmar {

/// Whether something on the session bus shows status icons.
enum class StatusNotifierHost {
  /// Not known yet: the watcher was not asked, or has not replied.
  unknown,
  missing,
  present,
};

}  // namespace quillmar
