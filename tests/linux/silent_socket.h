// A server that takes connections and never says a word.

#pragma once

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/file_descriptor.h"
#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class SilentSocket {
 public:
  /// A socket of that name in a folder of its own.
  explicit SilentSocket(const std::string& name) {
    const GStringPtr made(g_dir_make_tmp("quillmar-socket-XXXXXX", nullptr));
    folder_ = made.get();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder_ + "/" + name).c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
              0);
    EXPECT_EQ(fcntl(socket_.number(), F_SETFL, O_NONBLOCK), 0);
    EXPECT_EQ(listen(socket_.number(), SOMAXCONN), 0);
  }
  ~SilentSocket() { std::filesystem::remove_all(folder_); }
  SilentSocket(const SilentSocket&) = delete;
  SilentSocket& operator=(const SilentSocket&) = delete;

  const std::string& folder() const { return folder_; }

  /// How many have connected so far.
  std::size_t connectionCount() {
    while (true) {
      FileDescriptor connection(accept4(socket_.number(), nullptr, nullptr, SOCK_CLOEXEC));
      if (!connection) return connections_.size();
      connections_.push_back(std::move(connection));
    }
  }

 private:
  std::string folder_;
  /// Kept open: the end of one would be an answer.
  std::vector<FileDescriptor> connections_;
  FileDescriptor socket_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

}  // namespace quillmar
