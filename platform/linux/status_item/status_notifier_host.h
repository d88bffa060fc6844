#pragma once

namespace quillmar {

/// Whether something on the session bus shows status icons.
enum class StatusNotifierHost {
  /// Not known yet: nobody was asked, or who collects icons has not answered.
  unknown,
  missing,
  present,
};

}  // namespace quillmar
