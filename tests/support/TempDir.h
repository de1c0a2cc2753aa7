// Scratch files of the tests: a temporary directory, environment settings
// that undo themselves, whole-file reads and writes.
#ifndef ZEDA_TESTS_SUPPORT_TEMPDIR_H
#define ZEDA_TESTS_SUPPORT_TEMPDIR_H

#include <optional>
#include <string>
#include <vector>

namespace zeda::test {

// A fresh directory under the temporary directory, removed with everything
// in it on destruction.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // The path of `name` inside the directory.
  std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Sets an environment variable for its lifetime, restoring the old value (or
// its absence) afterwards.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  std::optional<std::string> old_;
};

// The bytes of a file; empty when it cannot be read.
std::string ReadFile(const std::string& path);
// The lines of a file without their line ends; empty when it cannot be read.
std::vector<std::string> ReadLines(const std::string& path);
// Writes `text` over the file in place; throws when it cannot.
void WriteFile(const std::string& path, const std::string& text);
// Replaces the file as a whole: writes a sibling file and renames it over,
// the way an editor or a deployment tool replaces a file.
void ReplaceFile(const std::string& path, const std::string& text);

}  // namespace zeda::test

#endif
