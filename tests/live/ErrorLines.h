// The glog ERROR lines written while it lives.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include <glog/logging.h>

namespace zeda::test {

class ErrorLines : public google::LogSink {
 public:
  ErrorLines() { google::AddLogSink(this); }
  ~ErrorLines() override { google::RemoveLogSink(this); }
  ErrorLines(const ErrorLines&) = delete;
  ErrorLines& operator=(const ErrorLines&) = delete;

  void send(google::LogSeverity severity, const char*, const char*, int,
            const google::LogMessageTime&, const char* message, size_t length) override {
    if (severity != google::GLOG_ERROR) return;
    const std::lock_guard<std::mutex> lock(mutex_);
    lines_.emplace_back(message, length);
  }

  std::vector<std::string> Lines() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace zeda::test
