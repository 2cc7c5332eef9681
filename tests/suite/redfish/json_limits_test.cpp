#include "suite/redfish/graph/json_limits.h"

#include <gtest/gtest.h>

namespace redfish {
namespace {

std::string repeated(std::string_view entry, std::size_t times) {
  std::string text;
  for (std::size_t index = 0; index < times; ++index) {
    if (index > 0) {
      text += ',';
    }
    text += entry;
  }
  return text;
}

std::string limitReason(const std::string& text) {
  const auto values = countJsonValues(text);
  return values ? "accepted" : values.error().cause;
}

TEST(CountJsonValues, LargestNumberOfValuesIsAccepted) {
  const std::string inner = repeated("[0,0,0]", kMaxJsonValues / 4 - 1);
  EXPECT_EQ(limitReason("{\"a\":[" + inner + "]}"), "accepted");
}

TEST(CountJsonValues, MoreValuesAreRefused) {
  EXPECT_EQ(limitReason("{\"a\":[" + repeated("0", kMaxJsonValues) + "]}"),
            "the JSON has more than 500000 values");
  EXPECT_EQ(limitReason("{\"a\":[" + repeated("{}", kMaxJsonValues) + "]}"),
            "the JSON has more than 500000 values");
}

TEST(CountJsonValues, LargestObjectIsAccepted) {
  EXPECT_EQ(limitReason('{' + repeated("\"a\":0", kMaxJsonMembers) + '}'),
            "accepted");
}

TEST(CountJsonValues, LargerObjectIsRefused) {
  EXPECT_EQ(limitReason('{' + repeated("\"a\":0", kMaxJsonMembers + 1) + '}'),
            "a JSON object has more than 20000 members");
}

TEST(CountJsonValues, MembersOfSeveralObjectsDoNotAddUp) {
  const std::string object =
      '{' + repeated("\"a\":0", kMaxJsonMembers / 2 + 1) + '}';
  EXPECT_EQ(limitReason('[' + object + ',' + object + ']'), "accepted");
}

TEST(CountJsonValues, StructureInsideStringsDoesNotCount) {
  EXPECT_EQ(limitReason("{\"a\":\"" + std::string(kMaxJsonValues + 1, ',') +
                        "\\\"[\"}"),
            "accepted");
}

TEST(CountJsonValues, EscapedQuoteDoesNotEndAString) {
  const std::string members = repeated("\"a\":0", kMaxJsonMembers + 1);
  EXPECT_EQ(limitReason(R"({"s":"\"",)" + members + '}'),
            "a JSON object has more than 20000 members");
  EXPECT_EQ(limitReason(R"({"s":"\\",)" + members + '}'),
            "a JSON object has more than 20000 members");
}

TEST(CountJsonValues, BrokenTextIsLeftToTheParser) {
  EXPECT_EQ(limitReason(std::string(kMaxJsonValues, ']')), "accepted");
  EXPECT_EQ(limitReason(std::string(kMaxJsonValues, ' ') + "\"\\"), "accepted");
  EXPECT_EQ(limitReason(std::string(kMaxJsonDepth * 1000, '[')), "accepted");
}

}  // namespace
}  // namespace redfish
