// Logging start-up of the NAS API client library: glog with the given program
// name, its ERROR file in the given directory, the old files removed.
#include "inventory/Logging.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>

#include <glog/logging.h>

#include "Basics.h"
#include "LogRetention.h"

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

// glog writes each line into the file of its severity and into those of every
// lower severity, so one ERROR line would land in an INFO, a WARNING and an
// ERROR file. Only the ERROR file is kept: INFO, WARNING and FATAL get none
// (a FATAL line still reaches the ERROR file). glog opens a file at its first
// line, so a process that logs nothing leaves no file.
void KeepOnlyTheErrorFile() {
  for (const google::LogSeverity severity :
       {google::GLOG_INFO, google::GLOG_WARNING, google::GLOG_FATAL}) {
    google::SetLogDestination(severity, "");
  }
}

// Removes the files that earlier processes left in `directory` once they are
// older than the configuration keeps them; one ERROR line per file that stays.
void RemoveOldFiles(const std::string& programName, const std::string& directory) {
  std::error_code ignored;  // glog reports a directory it cannot write to
  if (directory.empty() || !std::filesystem::is_directory(directory, ignored)) return;
  const auto keep = std::chrono::hours(24) * pelka::platform::ConfiguredKeepDays();
  const auto cutoff = std::filesystem::file_time_type::clock::now() - keep;
  for (const std::string& problem :
       pelka::platform::RemoveOldLogFiles(directory, programName, cutoff)) {
    LOG(ERROR) << problem;
  }
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
      // The host's own files stay as the host chose them.
      if (!directory.empty()) RedirectErrors(program, directory);
      RemoveOldFiles(program, directory);
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
    KeepOnlyTheErrorFile();
    RemoveOldFiles(program, directory);
  } catch (...) {
    // Logging must never take the host down; without it the host runs on.
  }
}

}  // namespace zeda::Logging
