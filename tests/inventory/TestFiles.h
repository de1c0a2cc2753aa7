// Scratch files and environment settings for the inventory tests.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace zeda::pelka::testing {

// A fresh directory under the temporary directory, removed with its content.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pelka-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// Replaces `path` as a whole: writes a sibling file and renames it over, the
// way an administrator's editor or a deployment tool replaces a file.
inline void ReplaceFile(const std::string& path, const std::string& text) {
  const std::string next = path + ".next";
  {
    std::ofstream out(next, std::ios::binary | std::ios::trunc);
    out << text;
  }
  std::filesystem::rename(next, path);
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Sets an environment variable for its lifetime and restores it afterwards.
class EnvironmentSetting {
 public:
  EnvironmentSetting(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) previous_ = old;
    ::setenv(name, value.c_str(), 1);
  }
  ~EnvironmentSetting() {
    if (previous_) {
      ::setenv(name_, previous_->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }
  EnvironmentSetting(const EnvironmentSetting&) = delete;
  EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

 private:
  const char* name_;
  std::optional<std::string> previous_;
};

}  // namespace zeda::pelka::testing
