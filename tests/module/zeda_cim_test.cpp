// The command-line client on the real module: an operation no class serves
// and the list of classes and factories.
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Fixtures.h"
#include "ModuleExports.h"

namespace zeda::test {
namespace {

TEST(ZedaCim, EnumerateInstanceNamesOfDiskDriveIsNotSupported) {
  const CliRun run = RunZedaCimOnModule({"--format", "json", "ein", "ZEDA_DiskDrive"});
  const nlohmann::json answer = nlohmann::json::parse(run.out);
  EXPECT_EQ(answer.at("status").at("code"), 7);
  EXPECT_TRUE(answer.at("status").at("message").is_null());
  EXPECT_EQ(answer.at("done"), false);
  EXPECT_TRUE(answer.at("results").empty());
}

TEST(ZedaCim, ClassesListsElevenClassesAndSeventeenFactories) {
  const CliRun run = RunZedaCimOnModule({"classes"});
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
}  // namespace zeda::test
