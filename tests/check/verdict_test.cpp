#include "check/verdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/check/sample.h"

namespace check {
namespace {

using report::Category;
using report::Health;
using report::ReadStatus;
using report::ServerReport;
using testing::ElementsAre;

Status statusOfReport(const ServerReport& report) {
  return statusOf(judge(report));
}

TEST(Judge, OkOfAWholeReadingWithoutEvents) {
  const Verdict verdict = judge(goodReport());
  EXPECT_EQ(statusOf(verdict), Status::kOk);
  EXPECT_TRUE(verdict.findings.empty());
  EXPECT_TRUE(verdict.gaps.empty());
}

TEST(Judge, WarningAndErrorByTheWorstEvent) {
  ServerReport report = goodReport();
  addEvent(event(Category::kPower, Health::kWarning, "It is warm."), report);
  EXPECT_EQ(statusOfReport(report), Status::kWarning);
  addEvent(event(Category::kPower, Health::kError, "It burns."), report);
  EXPECT_EQ(statusOfReport(report), Status::kCritical);
}

TEST(Judge, TakesNoOtherSeverityForLessThanAnError) {
  ServerReport report = goodReport();
  addEvent(event(Category::kPower, Health::kUnknown, "?"), report);
  EXPECT_EQ(statusOfReport(report), Status::kCritical);
}

TEST(Judge, UnknownOfAFailedReading) {
  ServerReport failed;
  failed.target.name = "n1";
  failed.read.failures = {{"", "", 13, "the connection was refused"}};
  const Verdict verdict = judge(failed);
  EXPECT_EQ(statusOf(verdict), Status::kUnknown);
  EXPECT_THAT(verdict.gaps, ElementsAre("the connection was refused"));
}

TEST(Judge, UnknownOfAReadingThatDoesNotSayWhatItLacks) {
  ServerReport report = goodReport();
  report.read.status = ReadStatus::kPartial;
  EXPECT_EQ(statusOfReport(report), Status::kUnknown);
}

TEST(Judge, UnknownWhereAPartCouldNotBeRead) {
  ServerReport report = goodReport();
  report.fans = std::nullopt;
  report.read.status = ReadStatus::kPartial;
  report.read.failures = {{"fan", "/redfish/v1/Fans", 10, "it broke"}};
  const Verdict verdict = judge(report);
  EXPECT_EQ(statusOf(verdict), Status::kUnknown);
  EXPECT_THAT(verdict.gaps, ElementsAre("fan: it broke"));
}

// However healthy everything else is said to be.
TEST(Judge, UnknownWhereTheEventsWereNotRead) {
  ServerReport report = goodReport();
  report.health.events = std::nullopt;
  EXPECT_EQ(statusOfReport(report), Status::kUnknown);
}

TEST(Judge, UnknownWhereHealthIsNotKnown) {
  ServerReport area = goodReport();
  area.health.categories[3] = Health::kUnknown;
  EXPECT_THAT(judge(area).gaps,
              ElementsAre("the health of Memory is not known"));
  EXPECT_EQ(statusOfReport(area), Status::kUnknown);

  ServerReport whole = goodReport();
  whole.health.status = Health::kUnknown;
  EXPECT_EQ(statusOfReport(whole), Status::kUnknown);
}

TEST(Judge, HealthThatNoEventExplainsCounts) {
  ServerReport area = goodReport();
  area.health.categories[5] = Health::kError;
  area.health.status = Health::kError;
  ASSERT_EQ(judge(area).findings.size(), 1U);
  EXPECT_EQ(judge(area).findings[0].text,
            "health is error, and no active event says why");
  EXPECT_EQ(statusOfReport(area), Status::kCritical);

  ServerReport whole = goodReport();
  whole.health.status = Health::kWarning;
  EXPECT_EQ(statusOfReport(whole), Status::kWarning);
}

TEST(Judge, AnErrorBeatsAnIncompleteReadingAndThatAWarning) {
  ServerReport report = goodReport();
  report.read.status = ReadStatus::kPartial;
  report.read.failures = {{"fan", "", 10, "it broke"}};
  addEvent(event(Category::kPower, Health::kWarning, "It is warm."), report);
  EXPECT_EQ(statusOfReport(report), Status::kUnknown);
  addEvent(event(Category::kPower, Health::kError, "It burns."), report);
  EXPECT_EQ(statusOfReport(report), Status::kCritical);
}

TEST(Ignore, FindingsAreKeptAndDoNotCount) {
  ServerReport report = goodReport();
  addEvent(event(Category::kPower, Health::kError, "It burns."), report);
  Verdict verdict = judge(report);
  ignore(IgnoreList("power"), verdict);
  EXPECT_EQ(statusOf(verdict), Status::kOk);
  ASSERT_EQ(verdict.findings.size(), 1U);
  EXPECT_TRUE(verdict.findings[0].ignored);
}

TEST(Ignore, WhatCouldNotBeReadCounts) {
  ServerReport report = goodReport();
  report.health.categories[5] = Health::kUnknown;
  Verdict verdict = judge(report);
  ignore(IgnoreList("power,Power"), verdict);
  EXPECT_EQ(statusOf(verdict), Status::kUnknown);
}

TEST(AddMissingNodes, EachNodeOfAServiceHasToBeRead) {
  ServerReport first = goodReport();
  first.target.nodes = 3;
  ServerReport third = first;
  third.target.node = 3;
  std::vector<Verdict> verdicts = {judge(first), judge(third),
                                   judge(goodReport("n2"))};
  addMissingNodes(verdicts);
  EXPECT_THAT(verdicts[0].gaps, ElementsAre("node 2 of 3 was not read"));
  EXPECT_TRUE(verdicts[1].gaps.empty());
  EXPECT_TRUE(verdicts[2].gaps.empty());
}

}  // namespace
}  // namespace check
