#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "LogDirectory.h"
#include "TestHost.h"

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

}  // namespace
}  // namespace zeda::test
