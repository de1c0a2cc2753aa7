// Logging start-up of the NAS API client library: glog with the given program
// name, its files in the given directory.
#include "inventory/Logging.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>

#include <glog/logging.h>

#include "Basics.h"

namespace zeda::Logging {

namespace {

// What the first call decided. glog keeps a pointer to the program name it
// was started with, so the name lives here for the life of the process.
struct Started {
  std::mutex mutex;
  bool done = false;
  std::string programName;
};

Started& State() {
  static Started started;
  return started;
}

std::string UserName() {
  const char* user = std::getenv("USER");
  return (user != nullptr && *user != '\0') ? user : "invalid-user";
}

// The host process started glog itself and may have written files already,
// so the log directory can no longer be chosen. Send ERROR lines to the
// directory anyway, under glog's usual file name
// <program>.<host>.<user>.log.ERROR.<date>-<time>.<pid>, with the
// <program>.ERROR link to the newest file.
void RedirectErrors(const std::string& programName, const std::string& directory) {
  const std::string base = directory + "/" + programName + "." +
                           pelka::platform::HostName("(unknown)") + "." + UserName() +
                           ".log.ERROR.";
  google::SetLogDestination(google::GLOG_ERROR, base.c_str());
  google::SetLogSymlink(google::GLOG_ERROR, programName.c_str());
}

}  // namespace

void Initialize(const char* programName, const char* logDirectory) {
  try {
    const std::string program = programName != nullptr ? programName : "";
    const std::string directory = logDirectory != nullptr ? logDirectory : "";
    Started& state = State();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (!directory.empty()) {
      std::error_code ignored;  // glog reports a directory it cannot write to
      std::filesystem::create_directories(directory, ignored);
    }
    if (state.done) {
      return;  // the first call's name and directory stay in effect
    }
    state.done = true;
    state.programName = program;
    if (google::IsGoogleLoggingInitialized()) {
      if (!directory.empty()) RedirectErrors(program, directory);
      return;
    }
    if (!directory.empty()) FLAGS_log_dir = directory;
    // The files are the log. The object manager's stderr is its own (and a
    // command such as zeda-cim reports the failure itself), so ERROR lines
    // are not echoed there unless GLOG_stderrthreshold asks for it.
    if (std::getenv("GLOG_stderrthreshold") == nullptr) {
      FLAGS_stderrthreshold = google::NUM_SEVERITIES;
    }
    google::InitGoogleLogging(state.programName.c_str());
  } catch (...) {
    // Logging must never take the host down; without it the host runs on.
  }
}

}  // namespace zeda::Logging
