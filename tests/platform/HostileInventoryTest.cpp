// Inventory files written to break the reader: numbers beyond any range, NUL
// inside strings. Each is refused with one message naming the file, the place
// and the problem, and a running process keeps serving the last good
// inventory with one ERROR line per bad change.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Fixtures.h"
#include "InventoryRefusal.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;
using namespace zeda::pelka::platform;

using ::testing::StartsWith;

TEST(HostileInventory, NumbersBeyondDoubleRangeNameTheirPlace) {
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": 1e400})")),
            Expected("nas[0].disks[2].capacity: number too large for unsigned 64-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": -1e400})")),
            Expected("nas[0].disks[2].capacity: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": 1E+400})")),
            Expected("nas[0].disks[2].rpm: number too large for unsigned 32-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"status": -1.5e400}})")),
            Expected("nas[0].disks[2].health.status: number is negative"));
  EXPECT_EQ(
      Refusal(WithThirdDisk(R"({"id": "0:3", "interfaceType": 1e400})")),
      Expected("nas[0].disks[2].interfaceType: expected a string, found a floating-point number"));
}

TEST(HostileInventory, IntegersTooLargeForTheirTypeNameTheirPlace) {
  const std::string huge(400, '9');  // beyond 64 bits and beyond a double
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": )" + huge + "}")),
            Expected("nas[0].disks[2].capacity: number too large for unsigned 64-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": -)" + huge + "}")),
            Expected("nas[0].disks[2].capacity: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": 123456789012345678901234567890})")),
            Expected("nas[0].disks[2].rpm: number too large for unsigned 32-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"status": 18446744073709551615}})")),
            Expected("nas[0].disks[2].health.status: number too large for unsigned 32-bit"));
}

TEST(HostileInventory, MinusZeroIsANegativeIntegerAsItHasAlwaysBeen) {
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": -0})")),
            Expected("nas[0].disks[2].capacity: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": -0 })")),
            Expected("nas[0].disks[2].rpm: number is negative"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": -0}]})"),
            Expected("nas[0].name: expected a string, found a negative integer"));
  // Inside strings and as a real it is no integer.
  const Inventory inventory =
      ParseInventory(WithThirdDisk(R"({"id": "0:3", "identity": {"serial": "WD-0 -0"}})"), kFile);
  EXPECT_EQ(inventory.nas.at(0).disks.at(2).identity.serial, "WD-0 -0");
  EXPECT_EQ(ParseInventory(WithThirdDisk(R"({"id": "0:3", "firmwareVersion": "a: -0,[-0"})"), kFile)
                .nas.at(0)
                .disks.at(2)
                .disk.firmwareVersion,
            "a: -0,[-0");
  EXPECT_EQ(
      Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": -0.0})")),
      Expected("nas[0].disks[2].rpm: expected an unsigned integer, found a floating-point number"));
}

TEST(HostileInventory, OverflowInsideStringsAndKeysIsText) {
  const Inventory inventory = ParseInventory(
      R"({"nas": [{"name": "1e400", "disks": [{"id": "-1e400", "firmwareVersion": "9e999"}]}]})",
      kFile);
  EXPECT_EQ(inventory.nas.at(0).name, "1e400");
  EXPECT_EQ(inventory.nas[0].disks.at(0).disk.id, "-1e400");
  EXPECT_EQ(inventory.nas[0].disks[0].disk.firmwareVersion, "9e999");
}

TEST(HostileInventory, SyntaxErrorAfterAnOverflowKeepsItsLineAndColumn) {
  const std::string refusal = Refusal("{\"nas\": [1e400,\n  ]}");
  EXPECT_THAT(refusal, StartsWith(Expected("line 2, column 3: syntax error")));
  EXPECT_EQ(refusal, Refusal("{\"nas\": [1e300,\n  ]}"));
}

TEST(HostileInventory, NulInsideAnyStringIsRefused) {
  const std::string nul = R"(\u0000)";
  const std::string problem = ": string holds a NUL character (\\u0000)";
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "nas)" + nul + R"(1"}]})"),
            Expected("nas[0].name" + problem));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:)" + nul + R"("})")),
            Expected("nas[0].disks[2].id" + problem));
  const std::vector<std::string> diskStrings = {"interfaceType", "firmwareVersion"};
  for (const std::string& member : diskStrings) {
    EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", ")" + member + R"(": "x)" + nul + R"("})")),
              Expected("nas[0].disks[2]." + member + problem));
  }
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "status": "ok)" + nul + R"("})")),
            Expected("nas[0].disks[2].status" + problem));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"message": ")" + nul + R"("}})")),
            Expected("nas[0].disks[2].health.message" + problem));
  for (const std::string member : {"product", "model", "serial"}) {
    EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "identity": {")" + member + R"(": "a)" + nul +
                                    R"(b"}})")),
              Expected("nas[0].disks[2].identity." + member + problem));
  }
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "groups": [{"dataDisks": ["0:1", "0:)" + nul +
                    R"("]}]}]})"),
            Expected("nas[0].groups[0].dataDisks[1]" + problem));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "groups": [{"spareDisks": [")" + nul + R"("]}]}]})"),
            Expected("nas[0].groups[0].spareDisks[0]" + problem));
}

TEST(HostileInventory, NulInsideAMemberNameIsWrittenAsItsEscape) {
  const std::string refusal = Refusal(R"({"nas": [{"name": "n", "x\u0000y": 1}]})");
  EXPECT_EQ(refusal, Expected("nas[0].x\\u0000y: unknown member"));
  EXPECT_EQ(refusal.find('\0'), std::string::npos);
}

TEST(HostileInventory, NulInsideAStringThatIsNotReadStillCountsAsText) {
  // An escaped NUL is refused where a string is read; elsewhere a string with
  // a NUL is just a string of the wrong type.
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": "1\u00002"})")),
            Expected("nas[0].disks[2].capacity: expected an unsigned integer, found a string"));
}

class HostileFile : public ::testing::Test {
 protected:
  HostileFile() { UseFileInventory(); }
  ~HostileFile() override { UseFileInventory(); }

  TempDir directory_;
  const std::string path_ = directory_.file("inventory.json");
  const ScopedEnv setting_{"PELKA_INVENTORY", path_};
};

// How many lines of `logged` hold `message`, each of ERROR severity.
int ErrorLinesWith(const std::string& logged, const std::string& message) {
  int lines = 0;
  std::size_t start = 0;
  while (start < logged.size()) {
    std::size_t end = logged.find('\n', start);
    if (end == std::string::npos) end = logged.size();
    const std::string line = logged.substr(start, end - start);
    if (line.find(message) != std::string::npos) {
      EXPECT_EQ(line.front(), 'E') << line;
      ++lines;
    }
    start = end + 1;
  }
  return lines;
}

TEST_F(HostileFile, EveryBadChangeKeepsTheLastGoodInventoryWithOneErrorLine) {
  ReplaceFile(path_, R"({"nas": [{"name": "nas1", "disks": [{"id": "0:1"}]}]})");
  const std::list<Nas>& good = GetNasList();
  const std::vector<std::pair<std::string, std::string>> badChanges = {
      {R"({"nas": [{"name": "nas1", "disks": [{"id": "0:1", "capacity": 1e400}]}]})",
       "nas[0].disks[0].capacity: number too large for unsigned 64-bit"},
      {R"({"nas": [{"name": "nas\u00001", "disks": [{"id": "0:1"}]}]})",
       "nas[0].name: string holds a NUL character (\\u0000)"},
      {R"({"nas": [{"name": "nas1", "disks": [{"id": "0:1", "rpm": -1e400}]}]})",
       "nas[0].disks[0].rpm: number is negative"},
  };
  for (const auto& [text, problem] : badChanges) {
    ReplaceFile(path_, text);
    ::testing::internal::CaptureStderr();
    for (int call = 0; call < 3; ++call) {
      EXPECT_EQ(&GetNasList(), &good);
      EXPECT_EQ(Nas::Get("nas1").name, "nas1");
      EXPECT_EQ(util::GetNas("nas1").name, "nas1");
    }
    const std::string logged = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(ErrorLinesWith(logged, "Bad inventory file " + path_ + ": " + problem), 1) << logged;
    EXPECT_EQ(ErrorLinesWith(logged, "Bad inventory file"), 1) << logged;
  }
  ReplaceFile(path_, R"({"nas": [{"name": "nas2"}]})");
  EXPECT_EQ(GetNasList().front().name, "nas2");
}

TEST_F(HostileFile, OverflowWithoutGoodPredecessorIsThrownAsItsMessage) {
  ReplaceFile(path_, R"({"nas": [{"name": "n", "disks": [{"id": "1", "capacity": 1e400}]}]})");
  try {
    GetNasList();
    FAIL() << "a file with 1e400 was served";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "Bad inventory file " + path_ +
                  ": nas[0].disks[0].capacity: number too large for unsigned 64-bit");
  }
}

}  // namespace
}  // namespace zeda::test
