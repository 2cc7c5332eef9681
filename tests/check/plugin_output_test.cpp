#include "check/plugin_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/check/sample.h"

namespace check {
namespace {

using report::Category;
using report::Health;
using report::ServerReport;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string outputOf(const ServerReport& report) {
  return pluginOutput({judge(report)});
}

ServerReport failedReport(const std::string& name) {
  ServerReport failed;
  failed.target.name = name;
  failed.read.seconds = 5;
  failed.read.failures = {{"", "", 13, "the connection was refused"}};
  return failed;
}

TEST(PluginOutput, OfAGoodServer) {
  EXPECT_EQ(outputOf(goodReport()),
            "BRIVEL OK - no active events | errors=0;;;0 warnings=0;;;0 "
            "time=0.219s;;;0 'fan_Fan 1'=6001 'fan_Fan 2'=6002\n");
}

TEST(PluginOutput, NamesTheWorstFirstAndListsAll) {
  ServerReport report = goodReport();
  report.fans = std::nullopt;
  report::Event warning =
      event(Category::kCooling, Health::kWarning, "A fan is slow.");
  warning.messageId = "FanAlerts.1.0.Slow";
  warning.origin.clear();
  addEvent(warning, report);
  addEvent(event(Category::kPower, Health::kError,
                 "Power Supply 2 has lost its input power."),
           report);
  EXPECT_EQ(
      outputOf(report),
      "BRIVEL CRITICAL - Power: Power Supply 2 has lost its input power. "
      "(+1 warning) | errors=1;;;0 warnings=1;;;0 time=0.219s;;;0\n"
      "[CRITICAL] Power: Power Supply 2 has lost its input power. "
      "(PowerAlerts.1.0.InputLost, /redfish/v1/Chassis/1/PowerSubsystem/2)\n"
      "[WARNING] Cooling: A fan is slow. (FanAlerts.1.0.Slow)\n");
}

// A count of events that nobody read would be drawn as a good value.
TEST(PluginOutput, OfAFailedReadingHasNoCounts) {
  EXPECT_EQ(outputOf(failedReport("n1")),
            "BRIVEL UNKNOWN - the connection was refused | time=5s;;;0\n"
            "[UNKNOWN] the connection was refused\n");
}

TEST(PluginOutput, ListsWhatIsIgnored) {
  ServerReport report = goodReport();
  report.fans = std::nullopt;
  addEvent(event(Category::kPower, Health::kError, "It burns."), report);
  Verdict verdict = judge(report);
  ignore(IgnoreList("power"), verdict);
  EXPECT_EQ(pluginOutput({verdict}),
            "BRIVEL OK - no active events (1 ignored) | errors=0;;;0 "
            "warnings=0;;;0 time=0.219s;;;0\n"
            "[IGNORED] Power: It burns. (PowerAlerts.1.0.InputLost, "
            "/redfish/v1/Chassis/1/PowerSubsystem/2)\n");
}

TEST(PluginOutput, TextsCannotBreakTheFormat) {
  ServerReport report = goodReport();
  report.fans->at(0).name = "a'b=c|d;e\nf";
  addEvent(event(Category::kPower, Health::kError,
                 "one|two;three\nBRIVEL OK - fine\r\n"),
           report);
  const std::string output = outputOf(report);
  const std::string first = output.substr(0, output.find('\n'));
  EXPECT_THAT(first, StartsWith("BRIVEL CRITICAL - Power: one/two,three BRIVEL "
                                "OK - fine | errors=1;;;0 "));
  EXPECT_THAT(first, HasSubstr("'fan_a_b_c_d_e f'=6001"));
  EXPECT_THAT(output.substr(output.find('\n')), Not(HasSubstr("|")));
  EXPECT_THAT(output, Not(HasSubstr("\nBRIVEL")));
}

TEST(PluginOutput, FansOfOneNameHaveLabelsOfTheirOwn) {
  ServerReport report = goodReport();
  report.fans->at(1).name = "Fan 1";
  report.fans->at(1).speedRpm = std::nullopt;
  report.fans->at(1).speedPercent = 45.5;
  EXPECT_THAT(outputOf(report),
              HasSubstr("'fan_Fan 1'=6001 'fan_Fan 1_2'=45.5%\n"));
}

TEST(PluginOutput, StaysShortWhateverTheServerSays) {
  ServerReport report = goodReport();
  report.fans = {1000, report.fans->front()};
  for (int i = 0; i < 1000; ++i) {
    addEvent(event(Category::kPower, Health::kError, std::string(1000, 'x')),
             report);
  }
  const std::string output = outputOf(report);
  EXPECT_LT(output.find('\n'), 4000U);
  EXPECT_LT(output.size(), 64U * 1024U);
  EXPECT_THAT(output, HasSubstr("(+999 errors)"));
  EXPECT_THAT(output, HasSubstr("... and 900 more\n"));
}

TEST(PluginOutput, IsTheSameOfAShortenedVerdict) {
  ServerReport report = goodReport();
  report.fans = {1000, report.fans->front()};
  for (int i = 0; i < 1000; ++i) {
    addEvent(event(i % 2 == 0 ? Category::kPower : Category::kMemory,
                   i % 3 == 0 ? Health::kError : Health::kWarning,
                   "event " + std::to_string(i)),
             report);
  }
  Verdict verdict = judge(report);
  ignore(IgnoreList("Memory"), verdict);
  const std::string whole = pluginOutput({verdict});
  EXPECT_THAT(whole, HasSubstr("500 ignored"));
  shorten(verdict);
  EXPECT_EQ(verdict.findings.size(), 4 * kMostFindings);
  EXPECT_EQ(verdict.fans.size(), kMostFans);
  EXPECT_EQ(pluginOutput({verdict}), whole);
  shorten(verdict);
  EXPECT_EQ(pluginOutput({verdict}), whole);
}

TEST(PluginOutput, OfSeveralServersHasOneLineForEachTheWorstFirst) {
  ServerReport bad = goodReport("n2");
  addEvent(event(Category::kPower, Health::kError, "It burns."), bad);
  ServerReport warm = goodReport("n4");
  addEvent(event(Category::kPower, Health::kWarning, "It is warm."), warm);
  ServerReport node = goodReport("n0");
  node.target.node = 2;
  node.target.nodes = 2;
  EXPECT_EQ(
      pluginOutput({judge(goodReport("n1")), judge(warm), judge(bad),
                    judge(failedReport("n3")), judge(node)}),
      "BRIVEL CRITICAL - 5 servers: 1 CRITICAL, 1 UNKNOWN, 1 WARNING, 2 OK | "
      "errors=1;;;0 warnings=1;;;0 servers=5;;;0 unread=1;;;0 time=5s;;;0\n"
      "[CRITICAL] n2: Power: It burns.\n"
      "[UNKNOWN] n3: the connection was refused\n"
      "[WARNING] n4: Power: It is warm.\n"
      "[OK] n0, node 2: no active events\n"
      "[OK] n1: no active events\n");
}

TEST(PluginOutput, OfNothingIsUnknown) {
  EXPECT_EQ(statusOf(std::vector<Verdict>()), Status::kUnknown);
  EXPECT_EQ(pluginOutput({}), "BRIVEL UNKNOWN - no server was read\n");
}

TEST(StatusOf, TheWorstServerDecides) {
  const Verdict good = judge(goodReport());
  const Verdict unread = judge(failedReport("n3"));
  ServerReport warm = goodReport();
  addEvent(event(Category::kPower, Health::kWarning, "It is warm."), warm);
  ServerReport bad = goodReport();
  addEvent(event(Category::kPower, Health::kError, "It burns."), bad);
  EXPECT_EQ(statusOf(std::vector{good, good}), Status::kOk);
  EXPECT_EQ(statusOf(std::vector{good, judge(warm)}), Status::kWarning);
  EXPECT_EQ(statusOf(std::vector{judge(warm), unread, good}), Status::kUnknown);
  EXPECT_EQ(statusOf(std::vector{judge(bad), unread, good}), Status::kCritical);
}

}  // namespace
}  // namespace check
