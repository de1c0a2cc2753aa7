#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <glog/logging.h>
#include <gtest/gtest.h>

#include "LogDirectory.h"
#include "TestHost.h"
#include "inventory/Logging.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test
namespace {

TEST(LogDirectory, IsTheProgramDataPathFollowedByBackslashLogs) {
  EXPECT_EQ(LogDirectoryOf("/var/lib/pelka"), "/var/lib/pelka\\logs");
  EXPECT_EQ(LogDirectoryOf("C:\\ProgramData\\ZEDA\\Pelka"), "C:\\ProgramData\\ZEDA\\Pelka\\logs");
}

TEST(LogDirectory, TrailingBackslashGivesTwoBackslashes) {
  EXPECT_EQ(LogDirectoryOf("C:\\ProgramData\\Pelka\\"), "C:\\ProgramData\\Pelka\\\\logs");
  EXPECT_EQ(LogDirectoryOf("/tmp/pd\\"), "/tmp/pd\\\\logs");
}

TEST(LogDirectory, NoSeparatorIsAddedOrRemoved) {
  EXPECT_EQ(LogDirectoryOf("/var/lib/pelka/"), "/var/lib/pelka/\\logs");
  EXPECT_EQ(LogDirectoryOf(""), "\\logs");
}

TEST(LogDirectory, BuiltFromTheProgramDataPathAtStartUp) {
  EXPECT_EQ(LogDirectory(), StartupProgramData() + "\\logs");
}

TEST(LogDirectory, DoesNotFollowLaterChangesOfTheProgramDataPath) {
  const std::string before = LogDirectory();
  const char* old = std::getenv("PELKA_PROGRAM_DATA");
  const std::string saved = old != nullptr ? old : "";
  setenv("PELKA_PROGRAM_DATA", "/somewhere/else", 1);
  EXPECT_EQ(LogDirectory(), before);
  setenv("PELKA_PROGRAM_DATA", saved.c_str(), 1);
}

TEST(LogDirectory, OneProcessWritesOneErrorFileAndNoInfoOrWarningCopies) {
  namespace fs = std::filesystem;
  const fs::file_time_type start = fs::file_time_type::clock::now() - std::chrono::seconds(2);
  // The first start (a provider's, or this one) decides the directory.
  zeda::Logging::Initialize("PELKA", LogDirectory().c_str());
  LOG(ERROR) << "log directory test: one file per process";
  google::FlushLogFiles(google::GLOG_INFO);
  // Earlier runs of this test binary share the directory: only the files of
  // this process count (the name ends in its process id; an old file of a
  // process that had the same id was last written before this test began).
  const std::string ownEnd = "." + std::to_string(::getpid());
  const auto isOwn = [&ownEnd](const std::string& name) {
    return name.size() > ownEnd.size() &&
           name.compare(name.size() - ownEnd.size(), ownEnd.size(), ownEnd) == 0;
  };
  const fs::path link = fs::path(LogDirectory()) / "PELKA.ERROR";
  ASSERT_TRUE(fs::is_symlink(link));
  const std::string newest = fs::read_symlink(link).filename().string();
  EXPECT_TRUE(isOwn(newest)) << newest;
  EXPECT_NE(newest.find(".log.ERROR."), std::string::npos) << newest;
  for (const auto& entry : fs::directory_iterator(LogDirectory())) {
    const std::string name = entry.path().filename().string();
    if (!isOwn(name) || !entry.is_regular_file() || entry.last_write_time() < start) continue;
    EXPECT_EQ(name, newest) << "a second file of this process";
  }
}

}  // namespace
}  // namespace zeda::test
