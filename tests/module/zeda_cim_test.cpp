// The command-line client on the real module: an operation no class serves
// and the list of classes and factories.
#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Fixtures.h"
#include "ModuleExports.h"

namespace zeda::pelka::test {
namespace {

struct CliRun {
  std::string out;
};

// Runs zeda-cim on this build's module with a program-data directory of its
// own. The log directory is that path followed by "\logs", a sibling of it,
// so both live inside one temporary directory.
CliRun ZedaCim(const std::string& arguments) {
  const zeda::testing::TempDir base;
  const std::string command = std::string("'") + ZEDA_CIM + "' --module '" +
                              zeda::testing::ModulePath() + "' --program-data '" +
                              base.path() + "/program-data' " + arguments + " 2>/dev/null";
  CliRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  std::array<char, 4096> buffer{};
  for (size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    run.out.append(buffer.data(), n);
  }
  pclose(pipe);
  return run;
}

TEST(ZedaCim, EnumerateInstanceNamesOfDiskDriveIsNotSupported) {
  const CliRun run = ZedaCim("--format json ein ZEDA_DiskDrive");
  const nlohmann::json answer = nlohmann::json::parse(run.out);
  EXPECT_EQ(answer.at("status").at("code"), 7);
  EXPECT_TRUE(answer.at("status").at("message").is_null());
  EXPECT_EQ(answer.at("done"), false);
  EXPECT_TRUE(answer.at("results").empty());
}

TEST(ZedaCim, ClassesListsElevenClassesAndSeventeenFactories) {
  const CliRun run = ZedaCim("classes");
  std::set<std::string> expected;
  for (const Export& e : Exports()) expected.insert(e.symbol());
  std::set<std::string> classes;
  std::set<std::string> factories;
  std::istringstream lines(run.out);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word.empty()) continue;
    classes.insert(word.substr(0, word.find(':')));
    while (words >> word) factories.insert(word);
  }
  EXPECT_EQ(classes.size(), 11u) << run.out;
  for (const ProviderClass& c : ProviderClasses()) {
    EXPECT_EQ(classes.count(c.className), 1u) << c.className;
  }
  EXPECT_EQ(factories, expected) << run.out;
}

}  // namespace
}  // namespace zeda::pelka::test
