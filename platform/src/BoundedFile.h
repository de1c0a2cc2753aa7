// Reading the small files of sysfs and the udev database without trusting
// them: at most a bounded number of bytes, never blocking on a FIFO, and with
// the reason when a file exists but cannot be read.
#pragma once

#include <cstddef>
#include <string>

namespace zeda::pelka::platform {

struct BoundedRead {
  enum class Outcome {
    Read,        // `text` holds the whole file
    Missing,     // no such file
    Unreadable,  // it exists but cannot be read (`problem` says why)
    TooLarge,    // it holds more than the limit; `text` is empty
  };
  Outcome outcome = Outcome::Missing;
  std::string text;
  std::string problem;  // e.g. "Permission denied", "Is a directory"
};

// Reads `path` when it is a regular file of at most `limit` bytes.
BoundedRead ReadBounded(const std::string& path, std::size_t limit);

}  // namespace zeda::pelka::platform
