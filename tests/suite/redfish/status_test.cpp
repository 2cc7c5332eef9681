#include "suite/redfish/graph/status.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace redfish {
namespace {

json::object objectOf(const char* text) {
  return json::parse(text).as_object();
}

TEST(HealthFromText, KnowsTheThreeTexts) {
  EXPECT_EQ(healthFromText("OK"), Health::kOk);
  EXPECT_EQ(healthFromText("Warning"), Health::kWarning);
  EXPECT_EQ(healthFromText("Critical"), Health::kCritical);
}

TEST(HealthFromText, OtherTextsAreUnknown) {
  EXPECT_EQ(healthFromText(""), Health::kUnknown);
  EXPECT_EQ(healthFromText("ok"), Health::kUnknown);
  EXPECT_EQ(healthFromText("Degraded"), Health::kUnknown);
}

TEST(OwnHealth, IgnoresTheRollup) {
  EXPECT_EQ(ownHealth(objectOf(R"({"Status": {"Health": "OK",
                                   "HealthRollup": "Critical"}})"),
                      "Status"),
            Health::kOk);
}

TEST(OwnHealth, MissingOrMistypedIsUnknown) {
  EXPECT_EQ(ownHealth(objectOf("{}"), "Status"), Health::kUnknown);
  EXPECT_EQ(ownHealth(objectOf(R"({"Status": "OK"})"), "Status"),
            Health::kUnknown);
  EXPECT_EQ(ownHealth(objectOf(R"({"Status": {"Health": null}})"), "Status"),
            Health::kUnknown);
  EXPECT_EQ(ownHealth(objectOf(R"({"Status": {"Health": 1}})"), "Status"),
            Health::kUnknown);
}

TEST(Rollup, IsTheWorseOfBoth) {
  EXPECT_EQ(rollup(objectOf(R"({"Status": {"Health": "OK",
                                "HealthRollup": "Warning"}})"),
                   "Status"),
            Health::kWarning);
  EXPECT_EQ(rollup(objectOf(R"({"Status": {"Health": "Critical",
                                "HealthRollup": "OK"}})"),
                   "Status"),
            Health::kCritical);
}

TEST(Rollup, ReadsAStatusFurtherDown) {
  EXPECT_EQ(rollup(objectOf(R"({"MemorySummary":
                                {"Status": {"HealthRollup": "Warning"}}})"),
                   "MemorySummary/Status"),
            Health::kWarning);
}

TEST(Rollup, OlderSpellingIsReadToo) {
  EXPECT_EQ(rollup(objectOf(R"({"Status": {"Health": "OK",
                                "HealthRollUp": "Critical"}})"),
                   "Status"),
            Health::kCritical);
}

TEST(StatedRollup, StandardsSpellingComesFirstWhereItHasAValue) {
  EXPECT_EQ(statedRollup(objectOf(R"({"Status": {"HealthRollup": "OK",
                                      "HealthRollUp": "Critical"}})"),
                         "Status"),
            Health::kOk);
  EXPECT_EQ(statedRollup(objectOf(R"({"Status": {"HealthRollup": null,
                                      "HealthRollUp": "Warning"}})"),
                         "Status"),
            Health::kWarning);
}

TEST(IsAbsent, OnlyTheStateAbsentCounts) {
  EXPECT_TRUE(isAbsent(objectOf(R"({"Status": {"State": "Absent"}})")));
  EXPECT_FALSE(isAbsent(objectOf(R"({"Status": {"State": "Disabled"}})")));
}

TEST(IsAbsent, MissingStatusOrStateCountsAsPresent) {
  EXPECT_FALSE(isAbsent(objectOf("{}")));
  EXPECT_FALSE(isAbsent(objectOf(R"({"Status": null})")));
  EXPECT_FALSE(isAbsent(objectOf(R"({"Status": {"State": null}})")));
}

}  // namespace
}  // namespace redfish
