// Reading the inventory file together with the identity of what was read.
#pragma once

#include <sys/types.h>
#include <cstddef>
#include <optional>
#include <string>

namespace zeda::pelka::platform {

// What tells one version of the file from another. Timestamps alone are too
// coarse for two writes in quick succession, so inode and size take part; a
// replacement by rename always brings a new inode.
struct FileStamp {
  std::string path;
  bool exists = false;
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  long long modifiedSeconds = 0;
  long modifiedNanoseconds = 0;
  long long changedSeconds = 0;
  long changedNanoseconds = 0;

  bool operator==(const FileStamp& other) const;
  bool operator!=(const FileStamp& other) const { return !(*this == other); }
};

// Bytes of spare capacity a read text has after its end: the JSON reader
// parses a text in place only when at least its padding follows it, and
// copies the whole text otherwise.
inline constexpr std::size_t kTextSlack = 64;

struct FileRead {
  FileStamp stamp;
  std::string error;  // set when the file could not be read
  std::string text;   // followed by at least kTextSlack bytes of spare capacity
};

// The stamp of `path` as open() and fstat() see it, without reading it: what
// ReadFileIfChanged would give as its stamp.
FileStamp StampOf(const std::string& path);

// The stamp of `path` as open() and fstat() see it, and, unless the stamp
// equals `unlessStamp`, the text read from the same open file, so that stamp
// and text always belong together.
FileRead ReadFileIfChanged(const std::string& path, const std::optional<FileStamp>& unlessStamp);

}  // namespace zeda::pelka::platform
