// Captures the glog lines written while it lives, with glog's own fields.
#ifndef ZEDA_TESTS_PELKAPROVIDER_LOGCAPTURE_H
#define ZEDA_TESTS_PELKAPROVIDER_LOGCAPTURE_H

#include <mutex>
#include <string>
#include <vector>

#include <glog/logging.h>

namespace zeda::test {

struct LoggedLine {
  google::LogSeverity severity;
  std::string file;  // the base file name glog attributes the line to
  int line;
  std::string text;      // the message without glog's prefix
  std::string rendered;  // the whole line as glog writes it to a log file
};

class LogCapture : public google::LogSink {
 public:
  LogCapture();
  ~LogCapture() override;
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  void send(google::LogSeverity severity, const char* fullFilename, const char* baseFilename,
            int line, const google::LogMessageTime& time, const char* message,
            size_t length) override;

  std::vector<LoggedLine> lines() const;

 private:
  mutable std::mutex mutex_;
  std::vector<LoggedLine> lines_;
};

// The captured lines the framework wrote (attributed to pelka_provider).
std::vector<LoggedLine> FrameworkLines(const LogCapture& capture);

}  // namespace zeda::test

#endif
