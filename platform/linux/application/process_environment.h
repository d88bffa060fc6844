// The snapshot of this process's environment.

#pragma once

#include "platform/environment.h"

namespace quillmar {

/// Copies the environment as it stands. Called first thing in main(): toolkits change it later. An
/// entry without "=" is left out; of two entries with one name the first holds, as for getenv.
Environment snapshotProcessEnvironment();

}  // namespace quillmar
