#include "tests/bmc/faults/fault_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

using testing::EndsWith;

std::string complaintAbout(const std::string& text) {
  const RecordedTree files(Files{{"faults.json", text}, {"x", "y"}});
  std::string error;
  EXPECT_FALSE(readFaultFile(files.folder() + "/faults.json", error)) << text;
  return error;
}

FaultPlan read(const std::string& text) {
  const RecordedTree files(Files{{"faults.json", text}, {"body", "from file"}});
  std::string error;
  const auto plan = readFaultFile(files.folder() + "/faults.json", error);
  EXPECT_TRUE(plan) << error;
  return plan.value_or(FaultPlan{});
}

TEST(ReadFaultFile, EmptyPlanDoesNothing) {
  const FaultPlan plan = read("{}");
  EXPECT_TRUE(plan.rules.empty());
  EXPECT_FALSE(plan.ipmi);
}

TEST(ReadFaultFile, WholeRuleIsRead) {
  const FaultPlan plan = read(R"({"rules": [{
      "match": {"method": "GET", "path": "/a/*", "nth": "2-", "ordinal": "1"},
      "answer": {"status": 503, "headers": {"Retry-After": "1", "X": null},
                 "body": {"parts": [{"file": "body"},
                                    {"hex": "00fF", "times": 2}]}},
      "delivery": {"delayMs": 5, "stepBytes": 1, "stepMs": 7, "cutAfter": 3,
                   "ending": "reset"}}]})");
  ASSERT_EQ(plan.rules.size(), 1U);
  const FaultRule& rule = plan.rules.front();
  EXPECT_EQ(rule.method, "GET");
  EXPECT_EQ(rule.path, "/a/*");
  EXPECT_EQ(rule.nth.first, 2U);
  EXPECT_TRUE(rule.replaces);
  EXPECT_EQ(rule.edit.status, 503);
  ASSERT_EQ(rule.edit.headers.size(), 2U);
  EXPECT_EQ(rule.edit.headers[1].second, std::nullopt);
  ASSERT_EQ(rule.edit.body->parts.size(), 2U);
  EXPECT_EQ(rule.edit.body->parts[0].text, "from file");
  EXPECT_EQ(rule.edit.body->parts[1].text, std::string("\x00\xff", 2));
  EXPECT_EQ(rule.delivery.cutAfter, 3U);
  EXPECT_EQ(rule.delivery.ending, Ending::kReset);
}

TEST(ReadFaultFile, TheOtherPartsAreRead) {
  const FaultPlan plan = read(R"({
      "tls": {"certificate": "expired", "maxVersion": "TLSv1.1",
              "noResumption": true},
      "connections": [{"numbers": "2", "onAccept": "drip"}],
      "sessions": {"expireAfter": 4, "times": 1},
      "ipmi": {"channel": "rejects-2.0", "presence": "ipmi"},
      "tree": [{"path": "/a", "set": {"/b": {"$text": "xy", "$times": 3}}}]})");
  EXPECT_EQ(plan.tls.certificate, CertificateKind::kExpired);
  EXPECT_FALSE(plan.tls.resumption);
  EXPECT_EQ(plan.connections.at(0).plan.onAccept, Admission::kDrip);
  EXPECT_EQ(plan.sessions.expireAfter, 4U);
  EXPECT_EQ(plan.sessions.times, 1U);
  EXPECT_EQ(plan.ipmi->channel, IpmiAnswer::kRejects20);
  EXPECT_TRUE(plan.ipmi->pong);
  EXPECT_EQ(plan.tree.at(0).json.set.at(0).second, "xyxyxy");
}

TEST(ReadFaultFile, MisspeltNamesAreRefusedWithTheirPlace) {
  EXPECT_THAT(complaintAbout(R"({"rule": []})"), EndsWith(": rule is unknown"));
  EXPECT_THAT(complaintAbout(R"({"rules": [{}, {"match": {"pth": "x"}}]})"),
              EndsWith(": rules/1/match/pth is unknown"));
}

TEST(ReadFaultFile, WrongKindsAreRefused) {
  for (const char* text :
       {"[]", R"({"rules": {}})", R"({"rules": [1]})",
        R"({"rules": [{"match": {"nth": 3}}]})",
        R"({"rules": [{"match": {"nth": "x"}}]})",
        R"({"rules": [{"answer": {}, "change": {}}]})",
        R"({"rules": [{"answer": {"status": "200"}}]})",
        R"({"rules": [{"answer": {"headers": {"a": 1}}}]})",
        R"({"rules": [{"answer": {"body": {"parts": [{"hex": "0"}]}}}]})",
        R"({"rules": [{"answer": {"body": {"parts": [{"file": "no"}]}}}]})",
        R"({"rules": [{"delivery": {"ending": "never"}}]})",
        R"({"tls": {"certificate": "good"}})", R"({"tree": [{}]})", "{"}) {
    EXPECT_NE(complaintAbout(text), "") << text;
  }
}

}  // namespace
}  // namespace bmc
