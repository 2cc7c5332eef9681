#include "suite/report/json.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/suite/report/sample_report.h"

namespace report {
namespace {

TEST(ToJson, WritesEveryFieldInOrder) {
  EXPECT_EQ(
      toJson(fullReport()),
      R"({"schema":"brivel-report","version":"1.0",)"
      R"("target":{"name":"rack1-n3","address":"10.0.0.5:443",)"
      R"("via":"redfish","node":1,"nodes":2},)"
      R"("read":{"time":"2026-11-21T22:57:03Z","seconds":0.219,)"
      R"("status":"partial","failures":[{"what":"dimm",)"
      R"("resource":"/redfish/v1/Systems/1/Memory","code":13,)"
      R"("cause":"gone"}]},)"
      R"("system":{"name":"Maker 100","type_model":"8Z50",)"
      R"("serial_number":"SN1","uuid":"0000-1","power_state":"on",)"
      R"("firmware_version":"2.10","controller_firmware_version":"4.20"},)"
      R"("health":{"status":"warning","categories":{"system":"normal",)"
      R"("processors":"normal","cooling":"normal","memory":"warning",)"
      R"("pci":"normal","power":"normal","disks":"normal",)"
      R"("other":"normal"},"events":[{"category":"memory",)"
      R"("severity":"warning","message_id":"M.1.0.Hot",)"
      R"("message":"It is hot.",)"
      R"("origin":"/redfish/v1/Systems/1/Memory/1",)"
      R"("time":"2026-11-21T20:00:00Z"}]},)"
      R"("processors":[{"id":"/p/1","name":"CPU 1","model":"Model 9",)"
      R"("cores":8,"threads":16,"speed_mhz":2400.5,"max_speed_mhz":3500,)"
      R"("health":"normal","state":"enabled"}],)"
      R"("memory":[{"id":"/m/1","slot":"DIMM 1","capacity_mib":16384,)"
      R"("type":"DDR5","max_speed_mhz":4800,"max_speed_mts":5600,)"
      R"("manufacturer":"Maker","part_number":"PN1","serial_number":"SN2",)"
      R"("health":"error","state":"degraded"}],)"
      R"("memory_slots":{"total":24,"populated":1},)"
      R"("fans":[{"id":"/f/1","name":"Fan 1","speed_rpm":6480,)"
      R"("speed_percent":45,"health":"normal","state":"enabled"}],)"
      R"("power_supplies":[{"id":"/s/1","name":"PSU 1",)"
      R"("capacity_watts":1600,"manufacturer":"Maker","model":"P1600",)"
      R"("part_number":"PN2","serial_number":"SN3","health":"normal",)"
      R"("state":"standby_spare"}],)"
      R"("pci_adapters":[{"id":"/c/1","name":"Card 1","tag":"c1",)"
      R"("slot":"Slot 1","manufacturer":"Maker","model":"C-9",)"
      R"("serial_number":"SN4","part_number":"PN3","sku":"SKU1",)"
      R"("health":"normal","state":"enabled"}]})");
}

TEST(ToJson, UnknownIsNullAndNoneIsEmpty) {
  ServerReport report;
  report.fans.emplace();
  const std::string line = toJson(report);
  EXPECT_NE(line.find(R"("system":{"name":null,)"), std::string::npos);
  EXPECT_NE(line.find(R"("processors":null,"memory":null,)"
                      R"("memory_slots":{"total":null,"populated":null},)"
                      R"("fans":[],"power_supplies":null)"),
            std::string::npos)
      << line;
  EXPECT_NE(line.find(R"("events":null)"), std::string::npos);
}

TEST(ToJson, QuotesTexts) {
  ServerReport report;
  report.system.name = "a\"b\\c\n\x01 \xC3\xA9";
  EXPECT_NE(toJson(report).find(R"("a\"b\\c\n\u0001 )"
                                "\xC3\xA9\""),
            std::string::npos);
}

TEST(ToJson, NumbersHaveNoExponentAndNoSpuriousDigits) {
  ServerReport report;
  Fan fan;
  fan.speedRpm = 1e15;
  fan.speedPercent = 0.1;
  report.fans = {fan};
  report.read.seconds = std::numeric_limits<double>::infinity();
  const std::string line = toJson(report);
  EXPECT_NE(line.find(R"("speed_rpm":1000000000000000,"speed_percent":0.1,)"),
            std::string::npos)
      << line;
  EXPECT_NE(line.find(R"("seconds":null)"), std::string::npos);
}

TEST(FromJson, ReadsWhatWasWritten) {
  for (const ServerReport& report : {fullReport(), ServerReport()}) {
    const std::string line = toJson(report);
    const auto read = fromJson(line);
    ASSERT_TRUE(read) << read.error().cause;
    EXPECT_EQ(toJson(*read), line);
  }
}

TEST(FromJson, IgnoresWhatALaterVersionAdds) {
  const auto read =
      fromJson(R"({"schema":"brivel-report","version":"1.9","drives":[],)"
               R"("fans":[{"id":"f","state":"melted","new":{}}]})");
  ASSERT_TRUE(read) << read.error().cause;
  ASSERT_EQ(read->fans->size(), 1);
  EXPECT_EQ(read->fans->front().id, "f");
  EXPECT_EQ(read->fans->front().state, State::kUnknown);
}

struct BadLine {
  const char* line;
  const char* error;
};

class FromJsonRefuses : public testing::TestWithParam<BadLine> {};

TEST_P(FromJsonRefuses, AndSaysWhatIsWrong) {
  const auto read = fromJson(GetParam().line);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().cause.find(GetParam().error), 0) << read.error().cause;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, FromJsonRefuses,
    testing::Values(
        BadLine{"{", "this is no JSON: "}, BadLine{"", "this is no JSON: "},
        BadLine{"[]", "this is no brivel-report"},
        BadLine{R"({"schema":"other","version":"1.0"})",
                "this is no brivel-report"},
        BadLine{R"({"schema":"brivel-report"})", "its version is missing"},
        BadLine{R"({"schema":"brivel-report","version":"2.0"})",
                "its version is 2.0; only 1.N can be read"},
        BadLine{R"({"schema":"brivel-report","version":"1.0","fans":{}})",
                "fans is no list"},
        BadLine{R"({"schema":"brivel-report","version":"1.0","system":[]})",
                "system is no object"},
        BadLine{R"({"schema":"brivel-report","version":"1.0",)"
                R"("target":{"node":"1"}})",
                "target.node is no whole number in range"},
        BadLine{R"({"schema":"brivel-report","version":"1.0",)"
                R"("system":{"name":7}})",
                "system.name is no text"},
        BadLine{R"({"schema":"brivel-report","version":"1.0",)"
                R"("read":{"seconds":null}})",
                "read.seconds is no number"}));

}  // namespace
}  // namespace report
