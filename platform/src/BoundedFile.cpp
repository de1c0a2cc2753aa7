#include "BoundedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/FileDescriptor.h"

namespace zeda::pelka::platform {

namespace {

BoundedRead Failed(BoundedRead::Outcome outcome, std::string problem) {
  BoundedRead read;
  read.outcome = outcome;
  read.problem = std::move(problem);
  return read;
}

BoundedRead FromErrno(int error) {
  return Failed(error == ENOENT ? BoundedRead::Outcome::Missing : BoundedRead::Outcome::Unreadable,
                std::strerror(error));
}

}  // namespace

BoundedRead ReadBounded(const std::string& path, std::size_t limit) {
  // O_NONBLOCK: a FIFO where a file belongs must not hold the reader.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (file.get() < 0) return FromErrno(errno);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) return FromErrno(errno);
  if (S_ISDIR(status.st_mode)) return FromErrno(EISDIR);
  if (!S_ISREG(status.st_mode)) {
    return Failed(BoundedRead::Outcome::Unreadable, "not a regular file");
  }
  BoundedRead read;
  read.outcome = BoundedRead::Outcome::Read;
  // sysfs reports a size of 4096 for every attribute, so read to the end
  // rather than trust st_size.
  char buffer[4096];
  while (true) {
    const ssize_t got = ::read(file.get(), buffer, sizeof buffer);
    if (got < 0) {
      if (errno == EINTR) continue;
      return FromErrno(errno);
    }
    if (got == 0) break;
    if (read.text.size() + static_cast<std::size_t>(got) > limit) {
      return Failed(BoundedRead::Outcome::TooLarge,
                    "larger than " + std::to_string(limit) + " bytes");
    }
    read.text.append(buffer, static_cast<std::size_t>(got));
  }
  return read;
}

}  // namespace zeda::pelka::platform
