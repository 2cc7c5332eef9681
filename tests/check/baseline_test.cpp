#include "check/baseline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "check/plugin_output.h"
#include "suite/report/json.h"
#include "tests/check/sample.h"

namespace check {
namespace {

using report::ServerReport;
using report::toJson;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string refusal(const std::string& text) {
  const auto baseline = Baseline::parse(text);
  EXPECT_FALSE(baseline) << text;
  return baseline ? "" : baseline.error().cause;
}

Baseline parsed(const std::string& text) {
  auto baseline = Baseline::parse(text);
  EXPECT_TRUE(baseline) << baseline.error().cause;
  return baseline ? *std::move(baseline) : Baseline();
}

Verdict judged(const Baseline& baseline, const ServerReport& report) {
  Verdict verdict = judge(report);
  baseline.judge(report, verdict);
  return verdict;
}

TEST(Baseline, ComparesEachServerWithItsOwn) {
  ServerReport second = goodReport("n2");
  second.memory->pop_back();
  const Baseline baseline =
      parsed(toJson(goodReport("n1")) + "\n\n" + toJson(second) + "\r\n");
  ServerReport now = goodReport("n1");
  now.memory->pop_back();
  EXPECT_EQ(statusOf(judged(baseline, now)), Status::kCritical);
  now.target.name = "n2";
  EXPECT_EQ(statusOf(judged(baseline, now)), Status::kOk);
}

TEST(Baseline, AServerWithoutOneIsAGap) {
  const Verdict verdict =
      judged(parsed(toJson(goodReport("n1"))), goodReport("n2"));
  EXPECT_EQ(statusOf(verdict), Status::kUnknown);
  EXPECT_THAT(verdict.gaps, ElementsAre("the baseline has no n2"));
}

TEST(Baseline, AServerThatCannotBeReadHasNotLostItsParts) {
  ServerReport failed;
  failed.target = goodReport().target;
  failed.read.failures = {{"", "", 13, "refused"}};
  const Verdict verdict = judged(parsed(toJson(goodReport())), failed);
  EXPECT_THAT(verdict.findings, IsEmpty());
  EXPECT_EQ(statusOf(verdict), Status::kUnknown);
}

TEST(Baseline, MissesANodeThatTheServiceDoesNotNameAnyMore) {
  ServerReport first = goodReport();
  first.target.nodes = 2;
  ServerReport second = first;
  second.target.node = 2;
  const Baseline baseline = parsed(toJson(first) + "\n" + toJson(second));
  std::vector<Verdict> verdicts = {judge(goodReport())};
  baseline.addMissingNodes(verdicts);
  ASSERT_EQ(verdicts[0].findings.size(), 1U);
  EXPECT_EQ(verdicts[0].findings[0].text, "node 2 is missing");
  EXPECT_EQ(statusOf(verdicts), Status::kCritical);

  std::vector<Verdict> both = {judge(first), judge(second)};
  baseline.addMissingNodes(both);
  EXPECT_EQ(statusOf(both), Status::kOk);

  std::vector<Verdict> other = {judge(goodReport("n2"))};
  baseline.addMissingNodes(other);
  EXPECT_EQ(statusOf(other), Status::kOk);
}

TEST(Baseline, IsRefusedWhenBroken) {
  const std::string good = toJson(goodReport());
  EXPECT_EQ(refusal(""), "it is empty");
  EXPECT_EQ(refusal("\n \n"), "it is empty");
  EXPECT_THAT(refusal(good + "\n{\"half\":"), HasSubstr("line 2: "));
  EXPECT_THAT(refusal(good.substr(0, good.size() / 2)), HasSubstr("line 1: "));
  EXPECT_EQ(refusal(good + "\n" + good), "line 2: n1 stands in it twice");
  ServerReport partial = goodReport();
  partial.read.status = report::ReadStatus::kPartial;
  partial.read.failures = {{"fan", "", 10, "it broke"}};
  EXPECT_EQ(refusal(toJson(partial)),
            "line 1: the reading of n1 is not complete, so nothing can be "
            "compared with it");
  ServerReport empty;
  empty.target = goodReport().target;
  empty.read = goodReport().read;
  EXPECT_EQ(refusal(toJson(empty)),
            "line 1: the reading of n1 has no parts to compare with");
}

}  // namespace
}  // namespace check
