// Writing to a peer that has gone must fail like any other write instead of ending the program.

#pragma once

namespace quillmar {

/// Ignores SIGPIPE in this process from now on. Children started through GSubprocess or with
/// default dispositions are not affected.
void ignoreBrokenPipes();

}  // namespace quillmar
