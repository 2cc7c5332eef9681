#include "export/prometheus_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "tests/suite/report/sample_report.h"

namespace exporting {
namespace {

using report::fullReport;
using report::ServerReport;
using testing::HasSubstr;
using testing::Not;

std::string textOf(const ServerReport& report) {
  PrometheusText writer;
  writer.add(report);
  return writer.text();
}

// The lines of a text that hold another one.
std::string linesWith(const std::string& text, const std::string& part) {
  std::istringstream all(text);
  std::string found;
  for (std::string line; std::getline(all, line);) {
    if (line.find(part) != std::string::npos) {
      found += line + "\n";
    }
  }
  return found;
}

TEST(PrometheusText, WritesEveryMetric) {
  const std::string text = textOf(fullReport());
  EXPECT_THAT(
      text,
      HasSubstr("# HELP brivel_target_up Whether anything could be read of "
                "the target.\n# TYPE brivel_target_up gauge\n"
                "brivel_target_up{target=\"rack1-n3\",node=\"1\"} 1\n"));
  const std::string labels = "{target=\"rack1-n3\",node=\"1\"";
  for (const std::string& sample : {
           "brivel_read_complete" + labels + "} 0\n",
           "brivel_read_timestamp_seconds" + labels + "} 1795301823\n",
           "brivel_read_duration_seconds" + labels + "} 0.219\n",
           "brivel_target_info" + labels +
               ",address=\"10.0.0.5:443\",via=\"redfish\",name=\"Maker 100\","
               "type_model=\"8Z50\",serial_number=\"SN1\",uuid=\"0000-1\","
               "firmware_version=\"2.10\","
               "controller_firmware_version=\"4.20\"} 1\n",
           "brivel_health_status" + labels + ",category=\"memory\"} 1\n",
           "brivel_active_events" + labels +
               ",category=\"memory\",severity=\"warning\"} 1\n",
           "brivel_active_events" + labels +
               ",category=\"memory\",severity=\"error\"} 0\n",
           "brivel_component_health" + labels +
               ",kind=\"processor\",id=\"/p/1\",name=\"CPU 1\"} 0\n",
           "brivel_component_health" + labels +
               ",kind=\"memory_module\",id=\"/m/1\",name=\"DIMM 1\"} 2\n",
           "brivel_component_health" + labels +
               ",kind=\"fan\",id=\"/f/1\",name=\"Fan 1\"} 0\n",
           "brivel_component_health" + labels +
               ",kind=\"power_supply\",id=\"/s/1\",name=\"PSU 1\"} 0\n",
           "brivel_component_health" + labels +
               ",kind=\"pci_adapter\",id=\"/c/1\",name=\"Card 1\"} 0\n",
           "brivel_fan_speed_rpm" + labels +
               ",id=\"/f/1\",name=\"Fan 1\"} 6480\n",
           "brivel_fan_speed_percent" + labels +
               ",id=\"/f/1\",name=\"Fan 1\"} 45\n",
           "brivel_power_supply_capacity_watts" + labels +
               ",id=\"/s/1\",name=\"PSU 1\"} 1600\n",
           "brivel_memory_module_capacity_bytes" + labels +
               ",id=\"/m/1\",name=\"DIMM 1\"} 17179869184\n",
           "brivel_memory_slots" + labels + ",state=\"populated\"} 1\n",
           "brivel_memory_slots" + labels + ",state=\"empty\"} 23\n",
       }) {
    EXPECT_THAT(text, HasSubstr(sample));
  }
}

TEST(PrometheusText, GroupsTheSamplesOfAllTargets) {
  ServerReport second = fullReport();
  second.target.name = "rack1-n4";
  PrometheusText writer;
  writer.add(fullReport());
  writer.add(second);
  const std::string text = writer.text();
  EXPECT_EQ(linesWith(text, "# TYPE brivel_target_up"),
            "# TYPE brivel_target_up gauge\n");
  EXPECT_THAT(text,
              HasSubstr("brivel_target_up{target=\"rack1-n3\",node=\"1\"} 1\n"
                        "brivel_target_up{target=\"rack1-n4\",node=\"1\"} "
                        "1\n"));
}

TEST(PrometheusText, WritesOfAFailedTargetThatItIsDown) {
  ServerReport failed;
  failed.target.name = "gone";
  failed.read.time = "2026-11-21T22:57:03Z";
  failed.read.seconds = 5;
  const std::string text = textOf(failed);
  EXPECT_THAT(text,
              HasSubstr("brivel_target_up{target=\"gone\",node=\"1\"} 0\n"));
  EXPECT_THAT(text, HasSubstr("brivel_read_complete{target=\"gone\","
                              "node=\"1\"} 0\n"));
  EXPECT_THAT(text, Not(HasSubstr("brivel_health_status")));
  EXPECT_THAT(text, Not(HasSubstr("brivel_target_info")));
}

TEST(PrometheusText, HealthThatCouldNotBeReadIsUnknown) {
  ServerReport report = fullReport();
  report.health = {};
  report.read.failures.front().what = "health";
  EXPECT_EQ(linesWith(textOf(report), "category=\"power\""),
            "brivel_health_status{target=\"rack1-n3\",node=\"1\","
            "category=\"power\"} 3\n");
}

TEST(PrometheusText, HealthThatWasNotAskedForIsLeftOut) {
  ServerReport report = fullReport();
  report.health = {};
  EXPECT_EQ(linesWith(textOf(report), "category="), "");
}

TEST(PrometheusText, ValuesThatAreNotKnownHaveNoSample) {
  ServerReport report = fullReport();
  report.fans->front().speedRpm = std::nullopt;
  report.memory->front().capacityMib = std::nullopt;
  report.memorySlots = {24, std::nullopt};
  report.read.time = "soon";
  const std::string text = textOf(report);
  EXPECT_THAT(text, Not(HasSubstr("brivel_fan_speed_rpm")));
  EXPECT_THAT(text, Not(HasSubstr("brivel_memory_module_capacity_bytes")));
  EXPECT_THAT(text, Not(HasSubstr("brivel_memory_slots")));
  EXPECT_THAT(text, Not(HasSubstr("brivel_read_timestamp_seconds")));
}

TEST(PrometheusText, EscapesLabels) {
  ServerReport report = fullReport();
  report.fans->front().name = "Fan \"1\" \\ left";
  EXPECT_THAT(textOf(report), HasSubstr("name=\"Fan \\\"1\\\" \\\\ left\""));
}

TEST(PrometheusText, WritesEachOfManyParts) {
  ServerReport report = fullReport();
  report.fans = {2500, report.fans->front()};
  const std::string text = textOf(report);
  const std::string lines = linesWith(text, "brivel_fan_speed_rpm");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2502);
  EXPECT_EQ(linesWith(text, "# TYPE brivel_fan_speed_rpm"),
            "# TYPE brivel_fan_speed_rpm gauge\n");
}

// Collectors refuse the whole text for one sample that is there twice.
TEST(PrometheusText, NoTwoSamplesHaveTheSameLabels) {
  ServerReport report = fullReport();
  report.fans = {5, report.fans->front()};
  report.fans->at(3).id = "/f/1#2";
  PrometheusText writer;
  writer.add(report);
  writer.add(report);
  std::istringstream all(writer.text());
  std::set<std::string> seen;
  for (std::string line; std::getline(all, line);) {
    EXPECT_TRUE(seen.insert(line.substr(0, line.rfind(' '))).second ||
                line[0] == '#')
        << line;
  }
  EXPECT_THAT(writer.text(), HasSubstr("id=\"/f/1#2#2\""));
}

}  // namespace
}  // namespace exporting
