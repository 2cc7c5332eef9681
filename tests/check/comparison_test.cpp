#include "check/comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/check/sample.h"

namespace check {
namespace {

using report::ServerReport;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> told(const Comparison& comparison) {
  std::vector<std::string> texts;
  for (const Finding& finding : comparison.findings) {
    texts.push_back(std::string(nameOf(finding.status)) + " " +
                    finding.messageId + " " + finding.text);
  }
  for (const std::string& gap : comparison.gaps) {
    texts.push_back("UNKNOWN " + gap);
  }
  return texts;
}

std::vector<std::string> compared(const ServerReport& now) {
  return told(compare(goodReport(), now));
}

TEST(Compare, FindsNothingInTheSameServer) {
  EXPECT_THAT(compared(goodReport()), IsEmpty());
}

TEST(Compare, FindsMissingPartsOfEveryKind) {
  ServerReport now = goodReport();
  now.processors->pop_back();
  now.memory->pop_back();
  now.fans->pop_back();
  now.powerSupplies->pop_back();
  now.pciAdapters->pop_back();
  const Comparison comparison = compare(goodReport(), now);
  EXPECT_THAT(
      told(comparison),
      ElementsAre("CRITICAL Baseline.Missing processor CPU 2 is missing "
                  "(8 cores)",
                  "CRITICAL Baseline.Missing memory module DIMM 2 is missing "
                  "(16384 MiB, serial number D2)",
                  "CRITICAL Baseline.Missing fan Fan 2 is missing",
                  "CRITICAL Baseline.Missing power supply PSU 2 is missing "
                  "(1600 W, serial number P2)",
                  "CRITICAL Baseline.Missing PCI adapter Slot 2 is missing"));
  EXPECT_EQ(comparison.findings[1].category, report::Category::kMemory);
  EXPECT_EQ(comparison.findings[1].origin, "/dimm/2");
}

TEST(Compare, APlaceThatIsEmptyNowHasLostItsPart) {
  ServerReport now = goodReport();
  now.memory->at(1).state = report::State::kAbsent;
  EXPECT_THAT(compared(now),
              ElementsAre("CRITICAL Baseline.Missing memory module DIMM 2 is "
                          "missing (16384 MiB, serial number D2)"));
  ServerReport before = now;
  EXPECT_THAT(told(compare(before, now)), IsEmpty());
}

TEST(Compare, FindsSmallerParts) {
  ServerReport now = goodReport();
  now.memory->at(0).capacityMib = 8192;
  now.memory->at(1).capacityMib = 32768;
  now.processors->at(1).cores = 6;
  EXPECT_THAT(compared(now),
              ElementsAre("CRITICAL Baseline.Smaller processor CPU 2 has 6 "
                          "cores, it had 8 cores",
                          "CRITICAL Baseline.Smaller memory module DIMM 1 has "
                          "8192 MiB, it had 16384 MiB"));
}

TEST(Compare, FindsAnotherPartBySerialNumberElseByModel) {
  ServerReport now = goodReport();
  now.memory->at(0).serialNumber = "D9";
  now.pciAdapters->at(0).model = "C10";
  now.system.serialNumber = "SERVER2";
  EXPECT_THAT(
      compared(now),
      ElementsAre("WARNING Baseline.Changed the server is another one: serial "
                  "number SERVER2, it was SERVER1",
                  "WARNING Baseline.Changed memory module DIMM 1 is another "
                  "one: serial number D9, it was D1",
                  "WARNING Baseline.Changed PCI adapter Slot 1 is another one: "
                  "part number or model C10, it was C9"));
}

TEST(Compare, FollowsAPartToAnotherSlot) {
  ServerReport now = goodReport();
  now.memory->at(0).slot = "DIMM 7";
  now.memory->at(0).id = "/dimm/7";
  EXPECT_THAT(compared(now),
              ElementsAre("WARNING Baseline.Changed memory module DIMM 1 the "
                          "one with serial number D1 is now memory module "
                          "DIMM 7"));
}

// As after an update of the controller.
TEST(Compare, FindsPartsAtTheirSlotsWherePathsAreOthers) {
  ServerReport now = goodReport();
  now.memory->at(0).id = "/new/1";
  now.memory->at(1).id = "/new/2";
  EXPECT_THAT(compared(now), IsEmpty());
}

TEST(Compare, FindsPartsByPathWhereNamesAreNotUnique) {
  ServerReport before = goodReport();
  for (report::Fan& fan : *before.fans) {
    fan.name = "Fan";
  }
  ServerReport now = before;
  now.fans->erase(now.fans->begin());
  const Comparison comparison = compare(before, now);
  ASSERT_EQ(comparison.findings.size(), 1U);
  EXPECT_EQ(comparison.findings[0].origin, "/fan/1");
}

// As a part is told of that could not be read.
TEST(Compare, APartOfWhichOnlyThePathIsKnownIsNotMissing) {
  ServerReport now = goodReport();
  now.memory->at(0) = {};
  now.memory->at(0).id = "/dimm/1";
  now.memory->at(0).slot = "1";
  EXPECT_THAT(compared(now),
              ElementsAre("UNKNOWN memory module DIMM 1: its serial number is "
                          "not known now, it was D1",
                          "UNKNOWN memory module DIMM 1: its size is not known "
                          "now, it was 16384 MiB"));
}

// Paths that are places in a list: behind a part that is gone, the others move
// up.
TEST(Compare, APartIsMissingWhereAnotherHasItsPathNow) {
  ServerReport before = goodReport();
  before.fans->at(0).id = "/Thermal#/Fans/0";
  before.fans->at(1).id = "/Thermal#/Fans/1";
  ServerReport now = before;
  now.fans->erase(now.fans->begin());
  now.fans->at(0).id = "/Thermal#/Fans/0";
  EXPECT_THAT(told(compare(before, now)),
              ElementsAre("CRITICAL Baseline.Missing fan Fan 1 is missing"));
}

TEST(Compare, WhatIsNotKnownAnyMoreIsAGap) {
  ServerReport now = goodReport();
  now.memory->at(0).serialNumber.clear();
  now.memory->at(1).capacityMib = std::nullopt;
  now.fans = std::nullopt;
  now.system.serialNumber.clear();
  EXPECT_THAT(
      compared(now),
      ElementsAre("UNKNOWN the server: its serial number is not known now, it "
                  "was SERVER1",
                  "UNKNOWN memory module DIMM 1: its serial number is not "
                  "known now, it was D1",
                  "UNKNOWN memory module DIMM 2: its size is not known now, it "
                  "was 16384 MiB",
                  "UNKNOWN fan: the list was not read, so it cannot be "
                  "compared with the baseline"));
}

TEST(Compare, FurtherPartsAreNoFindings) {
  ServerReport before = goodReport();
  before.memory->pop_back();
  before.pciAdapters = std::nullopt;
  EXPECT_THAT(told(compare(before, goodReport())), IsEmpty());
}

}  // namespace
}  // namespace check
