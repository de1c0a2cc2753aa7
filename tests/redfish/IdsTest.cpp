#include <gtest/gtest.h>

#include "model/Ids.h"

namespace zeda::test {
namespace {

using zeda::redfish::model::NameOfSegment;
using zeda::redfish::model::SegmentOf;

TEST(RedfishIds, PlainNamesAreTheirOwnSegment) {
  for (const char* name : {"nas1", "0:3", "e:00042", "wwn-0x5000c500a1b2c3d4", "a.b_c-d", "...",
                           "sata-WDC_X_Y~2", "x~"}) {
    EXPECT_EQ(SegmentOf(name), name);
    EXPECT_EQ(NameOfSegment(name), std::string(name));
  }
}

TEST(RedfishIds, OtherNamesBecomeTildeAndHex) {
  EXPECT_EQ(SegmentOf("disk 7"), "~6469736b2037");
  EXPECT_EQ(SegmentOf("a/b"), "~612f62");
  EXPECT_EQ(SegmentOf(""), "~");
  EXPECT_EQ(SegmentOf("."), "~2e");
  EXPECT_EQ(SegmentOf(".."), "~2e2e");
  EXPECT_EQ(SegmentOf("~x"), "~7e78");
  EXPECT_EQ(SegmentOf("~"), "~7e");
  EXPECT_EQ(SegmentOf("%2F"), "~253246");
  EXPECT_EQ(SegmentOf(std::string("\xff\x00", 2)), "~ff00");
}

TEST(RedfishIds, EverySegmentReadsBackItsName) {
  for (const std::string& name :
       {std::string("disk 7"), std::string("a/b"), std::string(), std::string("."),
        std::string(".."), std::string("~"), std::string("\xc3\xa9t\xc3\xa9"),
        std::string("\0\x01", 2), std::string("nas1")}) {
    EXPECT_EQ(NameOfSegment(SegmentOf(name)), name) << SegmentOf(name);
  }
}

TEST(RedfishIds, OddSegmentsNameNothing) {
  for (const char* segment : {"", ".", "..", "a b", "a/b", "%2F", "%2e%2e", "~6", "~6G", "~4E",
                              "~6e617331" /* "nas1" has its plain segment */, "~~"}) {
    EXPECT_FALSE(NameOfSegment(segment).has_value()) << segment;
  }
}

}  // namespace
}  // namespace zeda::test
