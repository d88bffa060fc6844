// Owners of libxkbcommon's objects.

#pragma once

#include <memory>

#include <xkbcommon/xkbcommon.h>

namespace quillmar {

struct UnrefXkb {
  void operator()(xkb_context* context) const { xkb_context_unref(context); }
  void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
  void operator()(xkb_state* state) const { xkb_state_unref(state); }
};

using XkbContextPointer = std::unique_ptr<xkb_context, UnrefXkb>;
using XkbKeymapPointer = std::unique_ptr<xkb_keymap, UnrefXkb>;
using XkbStatePointer = std::unique_ptr<xkb_state, UnrefXkb>;

}  // namespace quillmar
