// The quick reading of inventories in the plain form against the full
// reading: what it accepts, the full reading accepts with the same records;
// everything else, well-formed or not, it leaves to the full reading, which
// words the refusals (InventoryFormatTest, HostileInventoryTest).
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "InventoryPlain.h"
#include "InventoryRefused.h"
#include "InventoryWalker.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using zeda::pelka::platform::Inventory;
using zeda::pelka::platform::ParseInventory;
using zeda::pelka::platform::ReadPlainInventory;
using zeda::pelka::platform::ReadWholeInventory;

std::optional<Inventory> Whole(const std::string& text) {
  try {
    return ReadWholeInventory(text);
  } catch (const zeda::pelka::platform::Problem&) {
  } catch (const zeda::pelka::platform::SyntaxError&) {
  }
  return std::nullopt;
}

// The text as read from a file (followed by the parser's padding) and as
// given in memory (read from a padded copy).
std::vector<std::string> BothLayouts(const std::string& text) {
  std::string padded = text;
  padded.reserve(text.size() + 64);
  std::string tight = text;
  tight.shrink_to_fit();
  return {padded, tight};
}

const char* const kDisk =
    R"({"id": "0:1", "status": "degraded", "isFree": true, "isSpare": false, "isSsd": true,
        "interfaceType": "SAS", "firmwareVersion": "82.00A82", "capacity": 4000787030016,
        "rpm": 7200, "health": {"status": 3, "message": "Worn"},
        "identity": {"product": "WDC WD40EFRX-68N32N0", "model": "WD40EFRX", "serial": "WD-1"}})";

TEST(InventoryPlain, PlainDocumentsReadAsInFull) {
  const std::vector<std::string> documents = {
      "{}",
      R"({"nas": []})",
      std::string(R"({"nas": [{"name": "nas1", "disks": [)") + kDisk +
          R"(], "groups": [{"dataDisks": ["0:1"], "spareDisks": []}]}]})",
      // Members in any order, blanks anywhere, escapes in values.
      "\n{ \"nas\" : [ { \"disks\" : [ { \"identity\" : { \"serial\" : \"s\\u00e9\\\"\\\\\\n\" } ,"
      " \"rpm\" : 0 , \"id\" : \"a\\/b\" } ] , \"name\" : \"n\\t\" } ] }\t\r\n",
      // Only what is required; the defaults of the rest.
      R"({"nas": [{"name": "a", "disks": [{"id": "x"}]}, {"name": "b"}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "x", "capacity": 18446744073709551615,
          "rpm": 4294967295, "health": {"status": 4294967295}, "identity": {}}]}]})",
      R"({"nas": [{"name": "a", "groups": [{}, {"spareDisks": ["1", "2"]}, {"dataDisks": []}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "status": "unknown"}, {"id": "2", "status": "ok"},
          {"id": "3", "status": "predictive-failure"}, {"id": "4", "status": "error"},
          {"id": "5", "status": "stopped"}, {"id": "6", "status": "no-contact"}]}]})",
  };
  for (const std::string& document : documents) {
    const std::optional<Inventory> whole = Whole(document);
    ASSERT_TRUE(whole) << document;
    for (const std::string& text : BothLayouts(document)) {
      const std::optional<Inventory> plain = ReadPlainInventory(text);
      ASSERT_TRUE(plain) << document;
      EXPECT_TRUE(*plain == *whole) << document;
    }
  }
  // The comparison sees every field: one document checked by hand.
  const std::optional<Inventory> one = ReadPlainInventory(documents[2]);
  ASSERT_TRUE(one);
  ASSERT_EQ(one->nas.size(), 1u);
  ASSERT_EQ(one->nas[0].disks.size(), 1u);
  const auto& record = one->nas[0].disks[0];
  EXPECT_EQ(record.disk.id, "0:1");
  EXPECT_EQ(record.disk.status, zeda::orvi::Degraded);
  EXPECT_TRUE(record.disk.isFree);
  EXPECT_TRUE(record.disk.isSsd);
  EXPECT_EQ(record.disk.capacity, 4000787030016u);
  EXPECT_EQ(record.disk.rpm, 7200u);
  EXPECT_EQ(record.health.healthStatus, 3u);
  EXPECT_EQ(record.identity.product, "WDC WD40EFRX-68N32N0");
  EXPECT_EQ(one->nas[0].groups.at(0).dataDisks, std::vector<std::string>{"0:1"});
  const std::optional<Inventory> defaults = ReadPlainInventory(documents[4]);
  ASSERT_TRUE(defaults);
  EXPECT_EQ(defaults->nas.at(0).disks.at(0).disk.status, zeda::orvi::Ok);
}

TEST(InventoryPlain, AnythingElseIsLeftToTheFullReading) {
  const std::vector<std::string> wellFormed = {
      R"({"nas": [], "nas": []})",
      R"({"nas": [{"name": "a", "name": "b"}]})",
      R"({"n\u0061s": [{"name": "a"}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "i\u0064": "2"}]}]})",
  };
  for (const std::string& document : wellFormed) {
    ASSERT_TRUE(Whole(document)) << document;
    for (const std::string& text : BothLayouts(document)) {
      EXPECT_FALSE(ReadPlainInventory(text)) << document;
    }
    EXPECT_TRUE(ParseInventory(document, "x.json") == *Whole(document)) << document;
  }
  const std::vector<std::string> refused = {
      "",
      "  ",
      "[]",
      R"("nas")",
      R"({"nas": null})",
      R"({"nas": [], "extra": 1})",
      R"({"nas": [{"name": "a\u0000"}]})",
      R"({"nas": [{"name": "a"}, {"name": "a"}]})",
      R"({"nas": [{"disks": []}]})",
      R"({"nas": [{"name": "a", "disks": [{"status": "ok"}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "capacity": 1.0}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "capacity": 18446744073709551616}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "capacity": -1}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "rpm": 4294967296}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "rpm": 01}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "health": {"status": 4294967296}}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "status": "bogus"}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": "1", "isFree": "yes"}]}]})",
      R"({"nas": [{"name": "a", "disks": [{"id": 1}]}]})",
      R"({"nas": [{"name": "a", "groups": [{"dataDisks": [1]}]}]})",
      R"({"nas": [{"name": tru}]})",
      R"({"nas": [1,]})",
      R"({"nas": [{"name": "a",}]})",
      R"({"nas": [{"name": "a"} {"name": "b"}]})",
      R"({"nas": []} x)",
      R"({"nas": []} {})",
      R"({"nas": []}})",
      R"({"nas": [])",
      "{\"nas\": [{\"name\": \"a\ttab\"}]}",
      "{\"nas\": [{\"name\": \"\xff\"}]}",
      R"({"nas": [{"name": "bad \x escape"}]})",
  };
  for (const std::string& document : refused) {
    EXPECT_FALSE(Whole(document)) << document;
    for (const std::string& text : BothLayouts(document)) {
      EXPECT_FALSE(ReadPlainInventory(text)) << document;
    }
  }
}

}  // namespace
}  // namespace zeda::test
