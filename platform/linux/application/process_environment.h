// The snapshot of this process's environment.

#pragma once

#include "platform/environment.h"

namespace quillmar {

/// Copies the current environment. Call it first in main(): toolkits change it later. An entry
/// without "=" is skipped. If a name occurs twice, the first entry counts, as for getenv.
Environment snapshotProcessEnvironment();

}  // namespace quillmar
