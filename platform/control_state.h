#pragma once

namespace quillmar {

/// State of a toggle. `mixed` means that it is on for a part of what it covers.
enum class ControlState { off, on, mixed };

}  // namespace quillmar
