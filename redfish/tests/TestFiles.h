// A temporary folder for one test, removed with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zeda::test {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "redfish-test.XXXXXX").string();
    if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string File(const std::string& name) const { return path_ + "/" + name; }
  std::string Write(const std::string& name, const std::string& text) const {
    std::ofstream(File(name), std::ios::binary) << text;
    return File(name);
  }

 private:
  std::string path_;
};

}  // namespace zeda::test
