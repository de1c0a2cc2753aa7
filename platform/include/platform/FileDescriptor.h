// A file descriptor closed when its owner goes out of scope.
#pragma once

#include <unistd.h>
#include <utility>

namespace zeda::pelka::platform {

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) noexcept : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  // The descriptor, -1 when opening it failed.
  int get() const noexcept { return fd_; }
  // Gives the descriptor up without closing it.
  int release() noexcept { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

}  // namespace zeda::pelka::platform
