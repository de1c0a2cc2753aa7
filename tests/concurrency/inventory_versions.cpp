#include "inventory_versions.hpp"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace zeda::concurrency_test {

std::string inventoryVersion(const nlohmann::json& base, long v) {
  nlohmann::json doc = base;
  const auto n = static_cast<std::uint64_t>(v);
  for (auto& nas : doc.at("nas")) {
    if (!nas.contains("disks")) continue;  // a NAS without disks
    for (auto& disk : nas.at("disks")) {
      disk["rpm"] = kBaseRpm + n;
      disk["firmwareVersion"] = kFirmwarePrefix + std::to_string(v);
      disk["identity"]["model"] = kModelPrefix + std::to_string(v);
    }
  }
  return doc.dump(1);
}

namespace {
void writeFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path);
}
}  // namespace

void replaceAtomically(const std::string& path, const std::string& text) {
  const std::string temporary = path + ".next";
  writeFile(temporary, text);
  if (std::rename(temporary.c_str(), path.c_str()) != 0)
    throw std::runtime_error("cannot rename to " + path);
}

void rewriteInPlace(const std::string& path, const std::string& text) { writeFile(path, text); }

VersionWriter::VersionWriter(nlohmann::json base, std::string path, long periodMicros)
    : base_(std::move(base)),
      path_(std::move(path)),
      periodMicros_(periodMicros),
      thread_([this] { run(); }) {}

VersionWriter::~VersionWriter() { stop(); }

void VersionWriter::stop() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
}

std::string VersionWriter::error() const {
  std::lock_guard<std::mutex> lock(errorMutex_);
  return error_;
}

void VersionWriter::run() {
  try {
    for (long v = 1; !stop_; ++v) {
      const std::string text = inventoryVersion(base_, v);
      if (v % 2 == 0) {
        replaceAtomically(path_, text);
      } else {
        rewriteInPlace(path_, text);
      }
      written_ = v;
      std::this_thread::sleep_for(std::chrono::microseconds(periodMicros_));
    }
  } catch (const std::exception& e) {
    std::lock_guard<std::mutex> lock(errorMutex_);
    error_ = e.what();
  }
}

}  // namespace zeda::concurrency_test
