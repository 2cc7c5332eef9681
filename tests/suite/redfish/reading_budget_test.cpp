#include "suite/redfish/graph/reading_budget.h"

#include <gtest/gtest.h>

#include "suite/redfish/graph/json.h"
#include "tests/suite/redfish/service_fixture.h"

namespace redfish {
namespace {

TEST(ReadingBudget, TextAndValuesAreSpent) {
  ReadingBudget budget(1000);
  EXPECT_FALSE(budget.spend(100, 2));
  EXPECT_FALSE(budget.spend(900 - 3 * kBytesPerValue, 1));
  EXPECT_TRUE(budget.spend(1, 0));
}

TEST(ReadingBudget, WhatDoesNotFitCostsNothing) {
  ReadingBudget budget(std::size_t{3} << 20U);
  const auto failure = budget.spend(std::size_t{4} << 20U, 0);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->cause,
            "with it, what was read of this service takes more than 3 MiB");
  EXPECT_FALSE(budget.spend(std::size_t{3} << 20U, 0));
}

TEST(ReadingBudget, DocumentBeyondItIsNotParsed) {
  ReadingBudget budget(kBytesPerValue * 2 + 20);
  EXPECT_TRUE(parseObject(R"({"a":1,"b":2})", &budget));
  EXPECT_FALSE(parseObject(R"({"a":1,"b":2})", &budget));
  EXPECT_TRUE(parseObject(R"({"a":1,"b":2})"));
}

TEST(ParseSmallObject, LargeBodyIsRefused) {
  const std::string body = "{\"a\":\"" + std::string(300000, 'x') + "\"}";
  EXPECT_TRUE(parseObject(body));
  const auto small = parseSmallObject(body);
  ASSERT_FALSE(small);
  EXPECT_EQ(small.error().cause, "the body is larger than 256 KiB");
}

// Every document is within its own limit; all of them are not.
struct ReadingBudgetOfService : ScriptedService, testing::Test {
  static std::string chassis(int number) {
    const std::string self = "/redfish/v1/Chassis/" + std::to_string(number);
    std::string body = R"({"@odata.id":")" + self +
                       R"(","@odata.type":"#Chassis.v1_14_0.Chassis","Pad":[)";
    for (int value = 0; value < 100000; ++value) {
      body += "0,";
    }
    return body + "0]}";
  }
};

TEST_F(ReadingBudgetOfService, WhatIsBeyondItIsUnreadable) {
  script->on("GET /redfish/v1/", 200, kRootBody);
  script->on("GET /redfish/v1/Systems", 200,
             R"({"Members":[{"@odata.id":"/redfish/v1/Systems/1"}]})");
  script->on("GET /redfish/v1/Systems/1", 200, R"({"Id":"1"})");
  std::string members;
  for (int number = 0; number < 20; ++number) {
    const std::string self = "/redfish/v1/Chassis/" + std::to_string(number);
    script->on("GET " + self, 200, chassis(number));
    members += (number == 0 ? R"({"@odata.id":")" : R"(,{"@odata.id":")") +
               self + R"("})";
  }
  script->on("GET /redfish/v1/Chassis", 200,
             R"({"Members":[)" + members + "]}");
  EXPECT_FALSE(start().read(wanting(kWantSystem)));
  std::size_t values = 0;
  int unreadable = 0;
  for (const auto& [key, resource] : service->graph().resources()) {
    if (resource.state == ResourceState::kUnreadable) {
      ++unreadable;
      EXPECT_EQ(resource.failure->cause,
                "with it, what was read of this service takes more than 18 "
                "MiB");
    } else if (key.rfind("/redfish/v1/Chassis/", 0) == 0) {
      values += 100001;
    }
  }
  EXPECT_LE(values * kBytesPerValue, kMaxReadingBytes);
  EXPECT_GT(unreadable, 0);
}

}  // namespace
}  // namespace redfish
