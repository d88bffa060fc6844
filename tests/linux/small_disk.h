// A disk that is soon full.

#pragma once

#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace quillmar {

/// A disk of one megabyte at the path, seen by this process and its children alone. Needs root or
/// the right to make user namespaces.
inline void mountSmallDisk(const std::string& path) {
  const int asRoot = unshare(CLONE_NEWNS);
  if (asRoot < 0) {
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    ASSERT_EQ(unshare(CLONE_NEWUSER | CLONE_NEWNS), 0) << "No namespaces here.";
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
  }
  ASSERT_EQ(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
  ASSERT_EQ(mount("disk", path.c_str(), "tmpfs", 0, "size=1m"), 0);
}

}  // namespace quillmar

/// Runs the body with a small disk at the path, in a child of this process. For use in a death
/// test.
#define EXPECT_ON_SMALL_DISK(path, body) \
  EXPECT_EXIT(                           \
      {                                  \
        quillmar::mountSmallDisk(path);  \
        if (!HasFatalFailure()) body();  \
        _exit(HasFailure() ? 1 : 0);     \
      },                                 \
      testing::ExitedWithCode(0), "")
