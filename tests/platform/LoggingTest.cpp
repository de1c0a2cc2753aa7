// Logging start-up. glog can be started once per process, so every scenario
// runs in a child process of its own (gtest's exit tests).
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <glog/logging.h>

#include "TempDir.h"
#include "inventory/Logging.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;

// Checks that `directory` holds the link <program>.ERROR to a file with
// glog's usual name that contains `marker`. Returns what is wrong, or "".
std::string ErrorLogProblem(const fs::path& directory, const std::string& program,
                            const std::string& marker) {
  const fs::path link = directory / (program + ".ERROR");
  if (!fs::is_symlink(link)) return "no link " + link.string();
  const fs::path target = fs::read_symlink(link);
  const std::string name = target.filename().string();
  if (name.rfind(program + ".", 0) != 0 || name.find(".log.ERROR.") == std::string::npos) {
    return "unexpected log file name " + name;
  }
  const std::string text = ReadFile((directory / target).string());
  if (text.find(marker) == std::string::npos) return "marker missing from " + name;
  if (text.find("\nE") == std::string::npos && text.rfind("E", 0) != 0) {
    return "no ERROR line in " + name;
  }
  return "";
}

void ExitWith(const std::string& problem) {
  if (!problem.empty()) std::fprintf(stderr, "PROBLEM: %s\n", problem.c_str());
  std::exit(problem.empty() ? 0 : 1);
}

std::string RepeatedStartCreatesDirectory() {
  const TempDir scratch;
  // The module appends "\logs" to the program data path: one directory name
  // here, backslash included.
  const fs::path logs = fs::path(scratch.path()) / "data\\logs";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  if (!fs::is_directory(logs)) return "log directory not created";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  if (!google::IsGoogleLoggingInitialized()) return "glog not started";
  LOG(ERROR) << "marker-repeated-start";
  google::FlushLogFiles(google::GLOG_INFO);
  return ErrorLogProblem(logs, "PELKA", "marker-repeated-start");
}

std::string NestedDirectoryIsCreated() {
  const TempDir scratch;
  const fs::path logs = fs::path(scratch.path()) / "a" / "b" / "logs";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  if (!fs::is_directory(logs)) return "nested log directory not created";
  LOG(ERROR) << "marker-nested";
  return ErrorLogProblem(logs, "PELKA", "marker-nested");
}

std::string HostStartedGlogFirst() {
  const TempDir scratch;
  const fs::path hostLogs = fs::path(scratch.path()) / "host";
  fs::create_directories(hostLogs);
  FLAGS_log_dir = hostLogs.string();
  google::InitGoogleLogging("hostd");
  LOG(ERROR) << "host line before the module";
  const fs::path logs = fs::path(scratch.path()) / "logs";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  if (!fs::is_directory(logs)) return "log directory not created";
  LOG(ERROR) << "marker-after-host";
  google::FlushLogFiles(google::GLOG_INFO);
  return ErrorLogProblem(logs, "PELKA", "marker-after-host");
}

std::string LaterCallsCreateTheirDirectoryToo() {
  const TempDir scratch;
  zeda::Logging::Initialize("PELKA", (fs::path(scratch.path()) / "first").string().c_str());
  zeda::Logging::Initialize("PELKA", (fs::path(scratch.path()) / "second").string().c_str());
  if (!fs::is_directory(fs::path(scratch.path()) / "second")) return "second directory not created";
  LOG(ERROR) << "marker-first-wins";
  return ErrorLogProblem(fs::path(scratch.path()) / "first", "PELKA", "marker-first-wins");
}

std::string UnusableDirectoryIsSurvived() {
  const TempDir scratch;
  const fs::path blocker = fs::path(scratch.path()) / "file";
  ReplaceFile(blocker.string(), "not a directory");
  zeda::Logging::Initialize("PELKA", (blocker / "logs").string().c_str());
  zeda::Logging::Initialize("PELKA", nullptr);
  LOG(ERROR) << "still running";
  return "";
}

class LoggingStart : public ::testing::Test {
 protected:
  LoggingStart() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(LoggingStart, RepeatedCallsAreHarmlessAndCreateTheDirectory) {
  EXPECT_EXIT(ExitWith(RepeatedStartCreatesDirectory()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, NestedDirectoryIsCreated) {
  EXPECT_EXIT(ExitWith(NestedDirectoryIsCreated()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, HostThatStartedGlogKeepsRunningAndErrorsReachTheDirectory) {
  EXPECT_EXIT(ExitWith(HostStartedGlogFirst()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, FirstDirectoryStaysInEffect) {
  EXPECT_EXIT(ExitWith(LaterCallsCreateTheirDirectoryToo()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, UnusableDirectoryDoesNotStopTheProcess) {
  EXPECT_EXIT(ExitWith(UnusableDirectoryIsSurvived()), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zeda::test
