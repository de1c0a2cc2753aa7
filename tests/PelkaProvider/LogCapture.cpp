#include "LogCapture.h"

namespace zeda::test {

LogCapture::LogCapture() { google::AddLogSink(this); }

LogCapture::~LogCapture() { google::RemoveLogSink(this); }

void LogCapture::send(google::LogSeverity severity, const char*, const char* baseFilename, int line,
                      const google::LogMessageTime& time, const char* message, size_t length) {
  const std::lock_guard<std::mutex> lock(mutex_);
  lines_.push_back(
      LoggedLine{severity, baseFilename, line, std::string(message, length),
                 google::LogSink::ToString(severity, baseFilename, line, time, message, length)});
}

std::vector<LoggedLine> LogCapture::lines() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return lines_;
}

std::vector<LoggedLine> FrameworkLines(const LogCapture& capture) {
  std::vector<LoggedLine> lines;
  for (const LoggedLine& line : capture.lines()) {
    if (line.file == "pelka_provider") lines.push_back(line);
  }
  return lines;
}

}  // namespace zeda::test
