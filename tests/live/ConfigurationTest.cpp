// The configuration file: its checks, its defaults, and the last good
// configuration staying in service.
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "Basics.h"
#include "CliRun.h"
#include "Config.h"
#include "ErrorLines.h"
#include "Fixtures.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using pelka::platform::Config;
using pelka::platform::ParseConfig;

std::string ProblemOf(const std::string& text) {
  try {
    ParseConfig(text, "/etc/pelka/pelka.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "(accepted)";
}

TEST(ConfigFile, EachProblemNamesFilePlaceAndProblem) {
  const std::string file = "Bad configuration file /etc/pelka/pelka.json: ";
  EXPECT_EQ(ProblemOf("{\"sources\": [}"),
            file +
                "line 1, column 14: syntax error while parsing value - unexpected '}'; expected "
                "'[', '{', or a literal");
  EXPECT_EQ(ProblemOf("[]"), file + "(document): expected an object");
  EXPECT_EQ(ProblemOf("{}"), file + "(document): \"sources\" is missing");
  EXPECT_EQ(ProblemOf("{\"sources\": {}}"), file + "sources: expected an array");
  EXPECT_EQ(ProblemOf("{\"sources\": [], \"extra\": 1}"),
            file + "(document).extra: unknown member");
  EXPECT_EQ(ProblemOf("{\"sources\": [{}]}"),
            file + "sources[0]: \"type\" is missing (known: file, linux)");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"file\"}]}"),
            file + "sources[0]: a file source needs \"path\"");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"file\", \"path\": 3}]}"),
            file + "sources[0].path: expected a string");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"linux\", \"smartTtlSeconds\": -1}]}"),
            file + "sources[0].smartTtlSeconds: must not be negative");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"linux\", \"smartTimeoutSeconds\": 0}]}"),
            file + "sources[0].smartTimeoutSeconds: must be greater than 0");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"linux\", \"smartTTL\": 5}]}"),
            file + "sources[0].smartTTL: unknown member");
  EXPECT_EQ(ProblemOf("{\"sources\": [{\"type\": \"linux\"}, {\"type\": \"linux\"}]}"),
            file + "sources[1].nas: duplicate NAS name \"" +
                pelka::platform::HostName(pelka::platform::kUnnamedMachine) + "\"");
  EXPECT_EQ(ProblemOf("{\"programData\": \"\", \"sources\": []}"),
            file + "programData: must not be empty");
}

TEST(ConfigFile, MembersAndDefaults) {
  const Config config = ParseConfig(
      "{\"programData\": \"/srv/pelka\", \"sources\": [{\"type\": \"file\", \"path\": \"/x.json\"},"
      " {\"type\": \"linux\", \"smartTimeoutSeconds\": 0.25},"
      " {\"type\": \"linux\", \"nas\": \"n2\", \"root\": \"/r\", \"smartctl\": \"/s\", "
      "\"smartTtlSeconds\": 60}]}",
      "f");
  ASSERT_EQ(config.sources.size(), 3u);
  EXPECT_EQ(config.programData, "/srv/pelka");
  EXPECT_EQ(config.sources[0].fileSource->path, "/x.json");
  EXPECT_FALSE(config.sources[0].linuxSource);
  const auto& first = *config.sources[1].linuxSource;
  EXPECT_EQ(first.nas, pelka::platform::HostName(pelka::platform::kUnnamedMachine));
  EXPECT_EQ(first.root, "/");
  EXPECT_EQ(first.smartctl, "smartctl");
  EXPECT_EQ(first.smartTtl, std::chrono::seconds(300));
  EXPECT_EQ(first.smartTimeout, std::chrono::milliseconds(250));
  const auto& second = *config.sources[2].linuxSource;
  EXPECT_EQ(second.nas, "n2");
  EXPECT_EQ(second.root, "/r");
  EXPECT_EQ(second.smartctl, "/s");
  EXPECT_EQ(second.smartTtl, std::chrono::seconds(60));
  EXPECT_EQ(second.smartTimeout, std::chrono::milliseconds(5000));
}

std::vector<std::string> NasNames() {
  std::vector<std::string> names;
  for (const auto& nas : pelka::GetNasList()) names.push_back(nas.name);
  return names;
}

TEST(ConfigFile, LastGoodConfigurationStaysInService) {
  TempDir dir;
  const ScopedEnv config("PELKA_CONFIG", dir.path() + "/pelka.json");
  const ScopedEnv programData("PELKA_PROGRAM_DATA", "");
  pelka::platform::UseFileInventory();
  WriteConfig(dir.path(), "[" + FixtureSource("first") + "]");
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});
  EXPECT_EQ(pelka::util::GetProgramDataPath(), dir.path());

  const ErrorLines errors;
  std::ofstream(dir.path() + "/pelka.json") << "{\"sources\": [{\"type\": \"nfs\"}]}\n";
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});
  ASSERT_EQ(errors.Lines().size(), 1u);
  EXPECT_EQ(errors.Lines()[0],
            "Bad configuration file " + dir.path() +
                "/pelka.json: sources[0].type: unknown source type \"nfs\" (known: file, "
                "linux) (the configuration read before stays in service)");

  WriteConfig(dir.path(), "[" + FixtureSource("second") + ", " + FixtureSource("third") + "]");
  EXPECT_EQ(NasNames(), (std::vector<std::string>{"second", "third"}));
  EXPECT_EQ(errors.Lines().size(), 1u);
}

TEST(ConfigFile, ANasNameServedTwiceIsLoggedOnceAndKeepsTheLastInventory) {
  TempDir dir;
  const ScopedEnv config("PELKA_CONFIG", dir.path() + "/pelka.json");
  pelka::platform::UseFileInventory();
  WriteConfig(dir.path(), "[" + FixtureSource("first") + "]");
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});

  const ErrorLines errors;
  // The sample inventory names its first NAS nas1.
  WriteConfig(dir.path(), "[{\"type\": \"file\", \"path\": \"" ZEDA_EXAMPLE_INVENTORY "\"}, " +
                              FixtureSource("nas1") + "]");
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});
  EXPECT_EQ(NasNames(), std::vector<std::string>{"first"});
  EXPECT_EQ(errors.Lines(),
            std::vector<std::string>{"Bad configuration file " + dir.path() +
                                     "/pelka.json: sources[1]: duplicate NAS name \"nas1\""});
}

TEST(ConfigFile, WhichFile) {
  {
    const ScopedEnv config("PELKA_CONFIG", "/x/pelka.json");
    const ScopedEnv inventory("PELKA_INVENTORY", "/x/inventory.json");
    EXPECT_EQ(pelka::platform::ConfigFilePath().path, "/x/pelka.json");
    EXPECT_TRUE(pelka::platform::ConfigFilePath().named);
  }
  {
    const ScopedEnv config("PELKA_CONFIG", "");
    const ScopedEnv inventory("PELKA_INVENTORY", "/x/inventory.json");
    EXPECT_EQ(pelka::platform::ConfigFilePath().path, "");  // the inventory file serves
  }
  {
    const ScopedEnv config("PELKA_CONFIG", "");
    const ScopedEnv inventory("PELKA_INVENTORY", "");
    EXPECT_EQ(pelka::platform::ConfigFilePath().path, "/etc/pelka/pelka.json");
    EXPECT_FALSE(pelka::platform::ConfigFilePath().named);
  }
}

TEST(ConfigFile, MissingNamedFileIsAnError) {
  TempDir dir;
  const ScopedEnv config("PELKA_CONFIG", dir.path() + "/absent.json");
  pelka::platform::UseFileInventory();
  try {
    pelka::GetNasList();
    FAIL() << "no error";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()), "Cannot read configuration file " + dir.path() +
                                             "/absent.json: No such file or directory");
  }
}

TEST(ConfigFile, WithoutConfigurationTheInventoryFileServes) {
  // No PELKA_CONFIG and no /etc/pelka/pelka.json on a test machine: as before.
  if (std::ifstream("/etc/pelka/pelka.json"))
    GTEST_SKIP() << "this machine has /etc/pelka/pelka.json";
  const ScopedEnv config("PELKA_CONFIG", "");
  const ScopedEnv inventory("PELKA_INVENTORY", ZEDA_EXAMPLE_INVENTORY);
  pelka::platform::UseFileInventory();
  std::vector<std::string> expected;
  for (const auto& nas : pelka::platform::LoadInventoryFile(ZEDA_EXAMPLE_INVENTORY).nas)
    expected.push_back(nas.name);
  ASSERT_FALSE(expected.empty());
  EXPECT_EQ(NasNames(), expected);
}

}  // namespace
}  // namespace zeda::test
