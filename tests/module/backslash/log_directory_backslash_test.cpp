// A program-data path that ends in a backslash: the module's log directory
// then has two backslashes before "logs", and the ERROR lines land there.
// The module forms the directory once, when it is loaded, so this runs in a
// process of its own that sets the path before loading the module.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <glog/logging.h>
#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<TempDir> gBase;

std::string ProgramData() { return gBase->path() + "/pd\\"; }

TEST(LogDirectoryWithTrailingBackslash, ErrorLinesGoToTheDirectoryWithTwoBackslashes) {
  zeda::host::Host host(ModulePath());
  const zeda::host::Outcome outcome = host.associators(
      "ZEDA_Realizes_DiskProvider", zeda::host::ObjectPath(kNamespace, "ZEDA_DiskDrive"),
      std::nullopt, std::nullopt, std::nullopt, std::nullopt);
  EXPECT_EQ(outcome.code(), CMPI_RC_ERR_INVALID_PARAMETER);

  const std::string logDir = gBase->path() + "/pd\\\\logs";
  EXPECT_TRUE(fs::is_directory(logDir)) << logDir;
  EXPECT_FALSE(fs::exists(gBase->path() + "/pd\\logs"));
  EXPECT_FALSE(fs::exists(gBase->path() + "/pd"));

  google::FlushLogFiles(google::GLOG_ERROR);
  std::ifstream in(logDir + "/PELKA.ERROR");
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  ASSERT_FALSE(lines.empty()) << "no PELKA.ERROR in " << logDir;
  const std::string tail =
      "pelka_provider:129] ZEDA_Realizes_Disk: Wrong association class name: ; Expected: "
      "ZEDA_Realizes_Disk (RC=4)";
  const std::string& last = lines.back();
  ASSERT_GE(last.size(), tail.size()) << last;
  EXPECT_EQ(last.substr(last.size() - tail.size()), tail);
}

}  // namespace
}  // namespace zeda::test

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  zeda::test::gBase = std::make_unique<zeda::test::TempDir>();
  setenv("PELKA_PROGRAM_DATA", zeda::test::ProgramData().c_str(), 1);
  const int result = RUN_ALL_TESTS();
  zeda::test::gBase.reset();
  return result;
}
