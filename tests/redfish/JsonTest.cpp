#include <gtest/gtest.h>

#include "model/Json.h"

namespace zeda::test {
namespace {

using zeda::redfish::model::Json;
using zeda::redfish::model::kLinksPerPiece;
using zeda::redfish::model::LinkListReply;

std::string Drained(zeda::redfish::Reply& reply, std::size_t* pieces, std::size_t* largest) {
  std::string body;
  *pieces = 0;
  *largest = 0;
  bool more = true;
  while (more) {
    std::string piece;
    more = reply.chunks(piece);
    ++*pieces;
    *largest = std::max(*largest, piece.size());
    body += piece;
  }
  std::string after;
  EXPECT_FALSE(reply.chunks(after));
  EXPECT_TRUE(after.empty());
  return body;
}

Json Head() {
  Json head = Json::object();
  head["@odata.id"] = "/x";
  head["Name"] = "n\xff";  // not UTF-8: written with a replacement character
  return head;
}

TEST(RedfishJson, ShortListsAreOneBody) {
  auto reply =
      LinkListReply(Head(), "Members", 2, [](std::size_t i) { return "/m/" + std::to_string(i); });
  EXPECT_FALSE(reply.chunks);
  EXPECT_EQ(reply.body,
            "{\"@odata.id\":\"/x\",\"Name\":\"n\xef\xbf\xbd\",\"Members@odata.count\":2,"
            "\"Members\":[{\"@odata.id\":\"/m/0\"},{\"@odata.id\":\"/m/1\"}]}");
  const auto empty = LinkListReply(Json::object(), "Drives", 0, [](std::size_t) { return ""; });
  EXPECT_EQ(empty.body, R"({"Drives@odata.count":0,"Drives":[]})");
}

TEST(RedfishJson, LinksThatNeedEscapingAreEscaped) {
  const auto reply = LinkListReply(Json::object(), "Members", 2, [](std::size_t i) {
    return i == 0 ? std::string("/a\"b\\c") : std::string("/\xc3\xa9\x01");
  });
  EXPECT_EQ(reply.body,
            "{\"Members@odata.count\":2,\"Members\":[{\"@odata.id\":\"/a\\\"b\\\\c\"},"
            "{\"@odata.id\":\"/\xc3\xa9\\u0001\"}]}");
}

TEST(RedfishJson, LongListsAreStreamedInBoundedPieces) {
  const std::size_t count = 100000;
  auto reply = LinkListReply(Head(), "Members", count,
                             [](std::size_t i) { return "/m/" + std::to_string(i); });
  ASSERT_TRUE(reply.chunks);
  EXPECT_TRUE(reply.body.empty());
  std::size_t pieces = 0;
  std::size_t largest = 0;
  const std::string body = Drained(reply, &pieces, &largest);
  EXPECT_EQ(pieces, count / kLinksPerPiece);
  EXPECT_LT(largest, 40 * kLinksPerPiece);
  const Json parsed = Json::parse(body);
  EXPECT_EQ(parsed["Members@odata.count"], count);
  ASSERT_EQ(parsed["Members"].size(), count);
  EXPECT_EQ(parsed["Members"][99999]["@odata.id"], "/m/99999");
  EXPECT_EQ(parsed["Name"], "n\xef\xbf\xbd");
}

TEST(RedfishJson, StreamedAndWholeBodiesAreTheSameText) {
  for (const std::size_t count : {kLinksPerPiece + 1, 2 * kLinksPerPiece, 2 * kLinksPerPiece + 7}) {
    auto streamed =
        LinkListReply(Head(), "Drives", count, [](std::size_t i) { return std::to_string(i); });
    std::size_t pieces = 0;
    std::size_t largest = 0;
    const std::string text = Drained(streamed, &pieces, &largest);
    std::string whole = "{\"@odata.id\":\"/x\",\"Name\":\"n\xef\xbf\xbd\",\"Drives@odata.count\":" +
                        std::to_string(count) + ",\"Drives\":[";
    for (std::size_t i = 0; i < count; ++i) {
      whole += (i == 0 ? "" : ",") + std::string("{\"@odata.id\":\"") + std::to_string(i) + "\"}";
    }
    whole += "]}";
    EXPECT_EQ(text, whole) << count;
  }
}

}  // namespace
}  // namespace zeda::test
