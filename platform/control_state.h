#pragma once

namespace quillmar {

/// What a toggle shows: nothing, a check mark, or the mark for "some of them".
enum class ControlState { off, on, mixed };

}  // namespace quillmar
