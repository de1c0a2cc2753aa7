#include "TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <unistd.h>

namespace fs = std::filesystem;

namespace zeda::test {
namespace {

std::string MakeTempDir() {
  std::string pattern = (fs::temp_directory_path() / "zeda-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot create a temporary directory from " + pattern);
  }
  return pattern;
}

}  // namespace

TempDir::TempDir() : path_(MakeTempDir()) {}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

ScopedEnv::ScopedEnv(const char* name, const std::string& value) : name_(name) {
  if (const char* old = std::getenv(name)) {
    old_ = old;
  }
  ::setenv(name, value.c_str(), 1);
}

ScopedEnv::~ScopedEnv() {
  if (old_) {
    ::setenv(name_.c_str(), old_->c_str(), 1);
  } else {
    ::unsetenv(name_.c_str());
  }
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> ReadLines(const std::string& path) {
  std::vector<std::string> lines;
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  if (!out) {
    throw std::runtime_error("cannot write " + path);
  }
}

void ReplaceFile(const std::string& path, const std::string& text) {
  const std::string next = path + ".next";
  WriteFile(next, text);
  fs::rename(next, path);
}

}  // namespace zeda::test
