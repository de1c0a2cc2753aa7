// Logging start-up. glog can be started once per process, so every scenario
// runs in a child process of its own (gtest's exit tests).
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <glog/logging.h>

#include "Config.h"
#include "LogRetention.h"
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

// The names in `directory`, sorted.
std::set<std::string> Names(const fs::path& directory) {
  std::set<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

std::string Joined(const std::set<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

// A file in `directory` last written `age` ago.
void OldFile(const fs::path& directory, const std::string& name, std::chrono::hours age) {
  ReplaceFile((directory / name).string(), "an earlier process's line\n");
  fs::last_write_time(directory / name, fs::file_time_type::clock::now() - age);
}

constexpr std::chrono::hours kDay{24};

// The last ERROR line a sink saw, as glog words it for sinks.
class LastLine : public google::LogSink {
 public:
  LastLine() { google::AddLogSink(this); }
  ~LastLine() override { google::RemoveLogSink(this); }
  LastLine(const LastLine&) = delete;
  LastLine& operator=(const LastLine&) = delete;

  void send(google::LogSeverity severity, const char*, const char* baseFilename, int line,
            const google::LogMessageTime& time, const char* message, size_t length) override {
    text = ToString(severity, baseFilename, line, time, message, length);
  }

  std::string text;
};

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

std::string NothingLoggedLeavesNoFile() {
  const TempDir scratch;
  const fs::path logs = fs::path(scratch.path()) / "logs";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  google::FlushLogFiles(google::GLOG_INFO);
  if (!fs::is_directory(logs)) return "log directory not created";
  const std::set<std::string> names = Names(logs);
  return names.empty() ? "" : "files of a process that logged nothing: " + Joined(names);
}

std::string OneErrorLineMakesOneFile() {
  const TempDir scratch;
  const fs::path logs = fs::path(scratch.path()) / "logs";
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  LOG(INFO) << "an INFO line";
  LOG(WARNING) << "a WARNING line";
  LastLine sink;
  LOG(ERROR) << "marker-one-file";
  google::FlushLogFiles(google::GLOG_INFO);
  const std::set<std::string> names = Names(logs);
  if (names.size() != 2 || names.count("PELKA.ERROR") == 0) {
    return "expected one ERROR file and its link, found: " + Joined(names);
  }
  for (const std::string& name : names) {
    if (name != "PELKA.ERROR" && !zeda::pelka::platform::IsLogFileName(name, "PELKA")) {
      return "unexpected file " + name;
    }
  }
  const std::string problem = ErrorLogProblem(logs, "PELKA", "marker-one-file");
  if (!problem.empty()) return problem;
  // The file holds its header and exactly the line glog gives every sink.
  const std::vector<std::string> lines = ReadLines((logs / "PELKA.ERROR").string());
  if (lines.empty() || lines.back() != sink.text) {
    return "file line \"" + (lines.empty() ? "" : lines.back()) + "\" differs from \"" + sink.text +
           "\"";
  }
  for (const std::string& line : lines) {
    if (line.find("an INFO line") != std::string::npos ||
        line.find("a WARNING line") != std::string::npos) {
      return "INFO or WARNING line in the ERROR file: " + line;
    }
  }
  return "";
}

// The files an earlier version and earlier processes left, with their ages.
void EarlierFiles(const fs::path& logs) {
  fs::create_directories(logs);
  OldFile(logs, "PELKA.nas.root.log.INFO.20261101-101010.4711", 8 * kDay);
  OldFile(logs, "PELKA.nas.root.log.WARNING.20261101-101010.4711", 8 * kDay);
  OldFile(logs, "PELKA.nas.root.log.ERROR.20261101-101010.4711", 8 * kDay);
  OldFile(logs, "PELKA.nas.root.log.ERROR.20261119-101010.4712", 6 * kDay);
  OldFile(logs, "PELKA.nas.root.log.ERROR.20261124-101010.4713", 1 * kDay);
  OldFile(logs, "OTHER.nas.root.log.ERROR.20261101-101010.4711", 30 * kDay);
  OldFile(logs, "PELKA.nas.root.log.ERROR.20261101-101010.4711.saved", 30 * kDay);
  OldFile(logs, "notes.txt", 30 * kDay);
  fs::create_symlink("PELKA.nas.root.log.INFO.20261101-101010.4711", logs / "PELKA.INFO");
  fs::create_symlink("PELKA.nas.root.log.ERROR.20261124-101010.4713", logs / "PELKA.ERROR");
  fs::create_symlink("gone", logs / "OTHER.ERROR");
}

std::string Expect(const fs::path& logs, const std::set<std::string>& expected) {
  const std::set<std::string> names = Names(logs);
  return names == expected ? "" : "left: " + Joined(names) + "; expected: " + Joined(expected);
}

std::string DefaultWeekRemovesOlderFiles() {
  const TempDir scratch;
  const fs::path logs = fs::path(scratch.path()) / "logs";
  EarlierFiles(logs);
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  return Expect(logs, {"PELKA.nas.root.log.ERROR.20261119-101010.4712",
                       "PELKA.nas.root.log.ERROR.20261124-101010.4713",
                       "OTHER.nas.root.log.ERROR.20261101-101010.4711",
                       "PELKA.nas.root.log.ERROR.20261101-101010.4711.saved", "notes.txt",
                       "PELKA.ERROR", "OTHER.ERROR"});
}

std::string ConfiguredDaysRemoveOlderFiles() {
  const TempDir scratch;
  const fs::path logs = fs::path(scratch.path()) / "logs";
  EarlierFiles(logs);
  ReplaceFile(scratch.file("pelka.json"), "{\"sources\": [], \"logs\": {\"keepDays\": 2}}");
  const ScopedEnv config("PELKA_CONFIG", scratch.file("pelka.json"));
  const ScopedEnv noProgramData("PELKA_PROGRAM_DATA", "");
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  return Expect(logs, {"PELKA.nas.root.log.ERROR.20261124-101010.4713",
                       "OTHER.nas.root.log.ERROR.20261101-101010.4711",
                       "PELKA.nas.root.log.ERROR.20261101-101010.4711.saved", "notes.txt",
                       "PELKA.ERROR", "OTHER.ERROR"});
}

std::string HostStartedGlogFilesOfTheModuleAreCleaned() {
  const TempDir scratch;
  const fs::path hostLogs = fs::path(scratch.path()) / "host";
  EarlierFiles(hostLogs);
  FLAGS_log_dir = hostLogs.string();
  google::InitGoogleLogging("hostd");
  const fs::path logs = fs::path(scratch.path()) / "logs";
  EarlierFiles(logs);
  zeda::Logging::Initialize("PELKA", logs.string().c_str());
  if (Names(hostLogs).size() != 11) return "the host's directory was touched";
  return Expect(logs, {"PELKA.nas.root.log.ERROR.20261119-101010.4712",
                       "PELKA.nas.root.log.ERROR.20261124-101010.4713",
                       "OTHER.nas.root.log.ERROR.20261101-101010.4711",
                       "PELKA.nas.root.log.ERROR.20261101-101010.4711.saved", "notes.txt",
                       "PELKA.ERROR", "OTHER.ERROR"});
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

TEST_F(LoggingStart, ProcessThatLogsNothingLeavesNoFile) {
  EXPECT_EXIT(ExitWith(NothingLoggedLeavesNoFile()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, ErrorLinesGoToOneFileWithoutInfoOrWarningCopies) {
  EXPECT_EXIT(ExitWith(OneErrorLineMakesOneFile()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, FilesOlderThanAWeekAreRemovedByDefault) {
  EXPECT_EXIT(ExitWith(DefaultWeekRemovesOlderFiles()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, FilesOlderThanTheConfiguredDaysAreRemoved) {
  EXPECT_EXIT(ExitWith(ConfiguredDaysRemoveOlderFiles()), ::testing::ExitedWithCode(0), "");
}

TEST_F(LoggingStart, HostThatStartedGlogKeepsItsFilesAndTheModuleDirectoryIsCleaned) {
  EXPECT_EXIT(ExitWith(HostStartedGlogFilesOfTheModuleAreCleaned()), ::testing::ExitedWithCode(0),
              "");
}

TEST(LogRetention, LogFileNamesAreGlogsNamesOfTheProgram) {
  using zeda::pelka::platform::IsLogFileName;
  EXPECT_TRUE(IsLogFileName("PELKA.nas1.root.log.ERROR.20261125-172750.123", "PELKA"));
  EXPECT_TRUE(IsLogFileName("PELKA.a.b.c.log.INFO.20261125-172750.1", "PELKA"));
  EXPECT_TRUE(IsLogFileName("PELKA.nas1.root.log.WARNING.20261125-172750.99", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.ERROR", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKAX.nas1.root.log.ERROR.20261125-172750.123", "PELKA"));
  EXPECT_FALSE(IsLogFileName("OTHER.nas1.root.log.ERROR.20261125-172750.123", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.nas1.root.log.DEBUG.20261125-172750.123", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.nas1.root.log.ERROR.2026112-172750.123", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.nas1.root.log.ERROR.20261125-172750.", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.nas1.root.log.ERROR.20261125-172750.123.gz", "PELKA"));
  EXPECT_FALSE(IsLogFileName("PELKA.log.ERROR.20261125-172750.123", "PELKA"));
}

TEST(LogRetention, AnUnreadableDirectoryIsOneProblem) {
  const TempDir scratch;
  const auto problems = zeda::pelka::platform::RemoveOldLogFiles(
      fs::path(scratch.path()) / "missing", "PELKA", fs::file_time_type::clock::now());
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].rfind("Cannot read log directory " + scratch.path() + "/missing: ", 0), 0u)
      << problems[0];
}

TEST(LogRetention, KeepDaysComeFromTheConfigurationInUse) {
  using zeda::pelka::platform::ConfiguredKeepDays;
  const TempDir scratch;
  const ScopedEnv noProgramData("PELKA_PROGRAM_DATA", "");
  // No configuration file (the test's machine file does not exist): a week.
  EXPECT_EQ(ConfiguredKeepDays(), 7);
  ReplaceFile(scratch.file("pelka.json"), "{\"sources\": [], \"logs\": {\"keepDays\": 30}}");
  {
    const ScopedEnv config("PELKA_CONFIG", scratch.file("pelka.json"));
    EXPECT_EQ(ConfiguredKeepDays(), 30);
    // Program data named by the environment: the configuration is not read
    // for its logs.
    const ScopedEnv programData("PELKA_PROGRAM_DATA", scratch.path());
    EXPECT_EQ(ConfiguredKeepDays(), 7);
  }
  ReplaceFile(scratch.file("bad.json"), "{\"sources\": [], \"logs\": {\"keepDays\": -1}}");
  {
    // The reader of the configuration reports the bad file; the logs keep a week.
    const ScopedEnv config("PELKA_CONFIG", scratch.file("bad.json"));
    EXPECT_EQ(ConfiguredKeepDays(), 7);
  }
  const ScopedEnv missing("PELKA_CONFIG", scratch.file("missing.json"));
  EXPECT_EQ(ConfiguredKeepDays(), 7);
}

std::string ConfigProblem(const std::string& text) {
  try {
    zeda::pelka::platform::ParseConfig(text, "/etc/pelka/pelka.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "(accepted)";
}

TEST(LogsConfig, KeepDaysDefaultsToAWeek) {
  using zeda::pelka::platform::ParseConfig;
  EXPECT_EQ(ParseConfig("{\"sources\": []}", "f").logs.keepDays, 7);
  EXPECT_EQ(ParseConfig("{\"sources\": [], \"logs\": {}}", "f").logs.keepDays, 7);
  EXPECT_EQ(ParseConfig("{\"sources\": [], \"logs\": {\"keepDays\": 30}}", "f").logs.keepDays, 30);
  EXPECT_EQ(ParseConfig("{\"logs\": {\"keepDays\": 1}, \"sources\": []}", "f").logs.keepDays, 1);
  EXPECT_EQ(ParseConfig("{\"sources\": [], \"logs\": {\"keepDays\": 3650}}", "f").logs.keepDays,
            3650);
}

TEST(LogsConfig, EachBadValueIsOneLine) {
  const std::string file = "Bad configuration file /etc/pelka/pelka.json: ";
  const auto days = [](const std::string& value) {
    return ConfigProblem("{\"sources\": [], \"logs\": {\"keepDays\": " + value + "}}");
  };
  EXPECT_EQ(days("-1"), file + "logs.keepDays: must be at least 1");
  EXPECT_EQ(days("0"), file + "logs.keepDays: must be at least 1");
  EXPECT_EQ(days("100000"), file + "logs.keepDays: must be at most 3650 (ten years)");
  EXPECT_EQ(days("18446744073709551615"), file + "logs.keepDays: must be at most 3650 (ten years)");
  EXPECT_EQ(days("-9223372036854775808"), file + "logs.keepDays: must be at least 1");
  EXPECT_EQ(days("\"x\""), file + "logs.keepDays: expected a whole number of days");
  EXPECT_EQ(days("\"7\""), file + "logs.keepDays: expected a whole number of days");
  EXPECT_EQ(days("1.5"), file + "logs.keepDays: expected a whole number of days");
  EXPECT_EQ(days("7.0"), file + "logs.keepDays: expected a whole number of days");
  EXPECT_EQ(days("null"), file + "logs.keepDays: expected a whole number of days");
  EXPECT_EQ(ConfigProblem("{\"sources\": [], \"logs\": 7}"), file + "logs: expected an object");
  EXPECT_EQ(ConfigProblem("{\"sources\": [], \"logs\": {\"keepdays\": 7}}"),
            file + "logs.keepdays: unknown member");
  for (const char* value : {"-1", "\"x\"", "100000"}) {
    EXPECT_EQ(days(value).find('\n'), std::string::npos) << value;
  }
}

}  // namespace
}  // namespace zeda::test
