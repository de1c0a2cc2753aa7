#include "InventoryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <tuple>

#include "platform/FileDescriptor.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

namespace {

std::string Reason(int error) { return std::strerror(error); }

}  // namespace

bool FileStamp::operator==(const FileStamp& other) const {
  const auto fields = [](const FileStamp& s) {
    return std::tie(s.path, s.exists, s.device, s.inode, s.size, s.modifiedSeconds,
                    s.modifiedNanoseconds, s.changedSeconds, s.changedNanoseconds);
  };
  return fields(*this) == fields(other);
}

namespace {

// The stamp of an open file; false with errno set when fstat fails.
bool StampOpenFile(int fd, FileStamp& stamp, struct stat& status) {
  if (::fstat(fd, &status) != 0) return false;
  stamp.exists = true;
  stamp.device = status.st_dev;
  stamp.inode = status.st_ino;
  stamp.size = status.st_size;
  stamp.modifiedSeconds = status.st_mtim.tv_sec;
  stamp.modifiedNanoseconds = status.st_mtim.tv_nsec;
  stamp.changedSeconds = status.st_ctim.tv_sec;
  stamp.changedNanoseconds = status.st_ctim.tv_nsec;
  return true;
}

}  // namespace

FileStamp StampOf(const std::string& path) {
  FileStamp stamp;
  stamp.path = path;
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (file.get() >= 0 && !StampOpenFile(file.get(), stamp, status)) stamp = FileStamp{path};
  return stamp;
}

FileRead ReadFileIfChanged(const std::string& path, const std::optional<FileStamp>& unlessStamp) {
  FileRead read;
  read.stamp.path = path;
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) {
    read.error = Reason(errno);
    return read;
  }
  struct stat status {};
  if (!StampOpenFile(file.get(), read.stamp, status)) {
    read.error = Reason(errno);
    read.stamp = FileStamp{path};
    return read;
  }
  if (S_ISDIR(status.st_mode)) {
    read.error = Reason(EISDIR);
    return read;
  }
  if (unlessStamp && *unlessStamp == read.stamp) {
    return read;
  }
  // The whole file in one allocation, unless it grows while being read.
  if (status.st_size > 0) read.text.reserve(static_cast<std::size_t>(status.st_size) + kTextSlack);
  char buffer[65536];
  for (;;) {
    const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
    if (count == 0) break;
    if (count < 0) {
      if (errno == EINTR) continue;
      read.error = Reason(errno);
      read.text.clear();
      return read;
    }
    read.text.append(buffer, static_cast<std::size_t>(count));
  }
  if (read.text.capacity() - read.text.size() < kTextSlack) {
    read.text.reserve(read.text.size() + kTextSlack);
  }
  return read;
}

Inventory LoadInventoryFile(const std::string& path) {
  const FileRead read = ReadFileIfChanged(path, std::nullopt);
  if (!read.error.empty()) {
    throw std::runtime_error("Cannot read inventory file " + path + ": " + read.error);
  }
  return ParseInventory(read.text, path);
}

}  // namespace zeda::pelka::platform
