#include "suite/devhealth/inventory/processor_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Processors = std::vector<std::pair<std::string, std::string>>;

Mapped<Tarvex::DeviceHealth::Processor> mappedProcessors(
    const Processors& processors) {
  Server server;
  server.members("Systems/1", "Processors", processors);
  return printed(mapProcessors(server.graph(), server.node()));
}

Tarvex::DeviceHealth::Processor onlyProcessor(const std::string& processor) {
  const auto result = mappedProcessors({{"CPU0", processor}});
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_EQ(result.records.size(), 1U);
  return result.records.empty() ? Tarvex::DeviceHealth::Processor{}
                                : result.records.front();
}

TEST(MapProcessors, FieldsComeFromTheirProperties) {
  const auto row = onlyProcessor(R"({"Name": "CPU 1", "Family": "Orlen Nine",
      "OperatingSpeedMHz": 2400, "MaxSpeedMHz": 4100.0,
      "Status": {"Health": "OK"}})");
  EXPECT_EQ(row.name, "CPU 1");
  EXPECT_EQ(row.family, "Orlen Nine");
  EXPECT_EQ(row.currentClockSpeed, "2400");
  EXPECT_EQ(row.maxClockSpeed, "4100");
  EXPECT_EQ(row.healthState, "OK");
}

TEST(MapProcessors, SocketNamesProcessorsOfOneName) {
  EXPECT_EQ(onlyProcessor(R"({"Name": "Processor", "Socket": 2})").name,
            "Processor 2");
}

TEST(MapProcessors, FamilyFallsBackInOrder) {
  EXPECT_EQ(onlyProcessor(R"({"Family": null, "Model": "Nine 9400"})").family,
            "Nine 9400");
  EXPECT_EQ(
      onlyProcessor(R"({"Manufacturer": "Orlen", "ProcessorArchitecture": "x86",
                     "ProcessorId": {"EffectiveFamily": "6"}})")
          .family,
      "Orlen family 6");
  EXPECT_EQ(onlyProcessor(
                R"({"Manufacturer": "Orlen", "ProcessorArchitecture": "ARM"})")
                .family,
            "ARM");
}

TEST(MapProcessors, ModelComesBeforeAGenericFamily) {
  EXPECT_EQ(onlyProcessor(R"({"Family": "Orlen(R) Nine(R) processor",
                     "Model": "Nine 9400"})")
                .family,
            "Nine 9400");
  EXPECT_EQ(
      onlyProcessor(R"({"Family": "Nine 9400 Family", "Model": "M"})").family,
      "Nine 9400 Family");
}

TEST(MapProcessors, GenericFamilyIsBetterThanNone) {
  EXPECT_EQ(onlyProcessor(R"({"Family": "Orlen(R) Nine(R) processor",
                     "Model": "Not Specified"})")
                .family,
            "Orlen(R) Nine(R) processor");
  EXPECT_EQ(onlyProcessor(R"({"Manufacturer": "Orlen",
                     "ProcessorId": {"EffectiveFamily": "Nine Family"}})")
                .family,
            "Nine Family");
}

TEST(MapProcessors, SpeedInMakersFormatStandsIn) {
  EXPECT_EQ(onlyProcessor(R"({"Oem": {"A": 7, "B": {}, "Kestwyn":
                     {"CurrentClockSpeedMHz": 2400}}})")
                .currentClockSpeed,
            "2400");
  EXPECT_EQ(onlyProcessor(R"({"OperatingSpeedMHz": 3100, "Oem": {"Kestwyn":
                     {"CurrentClockSpeedMHz": 2400}}})")
                .currentClockSpeed,
            "3100");
}

TEST(MapProcessors, RowsAreInNaturalOrder) {
  const auto rows = mappedProcessors({{"A", R"({"Name": "CPU 10"})"},
                                      {"B", R"({"Name": "CPU 2"})"}})
                        .records;
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].name, "CPU 2");
  EXPECT_EQ(rows[1].name, "CPU 10");
}

TEST(MapProcessors, BaseSpeedIsNotTheCurrentOne) {
  EXPECT_EQ(onlyProcessor(R"({"BaseSpeedMHz": 2000, "MaxSpeedMHz": 4000})")
                .currentClockSpeed,
            "");
}

TEST(MapProcessors, CurrentSpeedFallsBackToTheMetrics) {
  Server server;
  server.members("Systems/1", "Processors", {{"CPU0", "{}"}});
  server.linked("Systems/1/Processors/CPU0", "Metrics",
                R"({"OperatingSpeedMHz": 2333.4})");
  EXPECT_EQ(printed(mapProcessors(server.graph(), server.node()))
                .records.at(0)
                .currentClockSpeed,
            "2333.4");
}

TEST(MapProcessors, MaximumFallsBackInOrder) {
  EXPECT_EQ(onlyProcessor(R"({"MaxSpeedMHz": null, "SpeedLimitMHz": 3000,
                     "OperatingSpeedRangeMHz": {"AllowableMax": "3500"}})")
                .maxClockSpeed,
            "3500");
  EXPECT_EQ(onlyProcessor(R"({"SpeedLimitMHz": 3000})").maxClockSpeed, "3000");
  EXPECT_EQ(onlyProcessor(R"({"MaxSpeedMHz": 0})").maxClockSpeed, "");
}

TEST(MapProcessors, OnlyCpusMakeRows) {
  const auto rows = mappedProcessors({{"A", R"({"ProcessorType": "CPU"})"},
                                      {"B", R"({"ProcessorType": null})"},
                                      {"C", R"({"ProcessorType": "GPU"})"},
                                      {"D", R"({"ProcessorType": "Thread"})"},
                                      {"E", "{}"}})
                        .records;
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].name, "Processor A");
  EXPECT_EQ(rows[1].name, "Processor B");
  EXPECT_EQ(rows[2].name, "Processor E");
}

TEST(MapProcessors, EmptySocketsMakeNoRows) {
  EXPECT_TRUE(mappedProcessors({{"A", R"({"Status": {"State": "Absent"}})"}})
                  .records.empty());
}

TEST(MapProcessors, PartsInOtherStatesStay) {
  const auto rows =
      mappedProcessors({{"A", R"({"Status": {"State": "Disabled"}})"},
                        {"B", R"({"Status": {"State": null}})"},
                        {"C", R"({"Status": {"State": "Unheard"}})"}})
          .records;
  EXPECT_EQ(rows.size(), 3U);
}

TEST(MapProcessors, UnreadableMemberHasARow) {
  const auto result = mappedProcessors(
      {{"A", R"({"Name": "First"})"}, {"B", std::string(kBroken)}});
  EXPECT_FALSE(result.failure.has_value());
  ASSERT_EQ(result.records.size(), 2U);
  EXPECT_EQ(result.records[0].name, "B");
  EXPECT_EQ(result.records[0].healthState, "Unknown");
  EXPECT_EQ(result.records[0].family, "");
}

TEST(MapProcessors, MemberThatWasNeverReadCountsAsUnreadable) {
  Server server;
  server.linked("Systems/1", "Processors",
                R"({"Members": [)" + linkTo("Systems/1/Processors/A") + "," +
                    linkTo("Systems/1/Processors/B") + "]}");
  server.put("Systems/1/Processors/A", "{}");
  const auto result = printed(mapProcessors(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  ASSERT_EQ(result.records.size(), 2U);
  EXPECT_EQ(result.records[1].healthState, "Unknown");
}

TEST(MapProcessors, MissingMemberHasNone) {
  const auto result =
      mappedProcessors({{"A", "{}"}, {"B", std::string(kMissing)}});
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_EQ(result.records.size(), 1U);
}

TEST(MapProcessors, AllMembersUnreadableIsAFailure) {
  const auto result = mappedProcessors(
      {{"A", std::string(kBroken)}, {"B", std::string(kBroken)}});
  ASSERT_TRUE(result.failure.has_value());
  EXPECT_EQ(result.failure->kind, base::FailureKind::kBadContent);
  EXPECT_EQ(result.failure->cause,
            "none of 2 parts could be read; the first: HTTP status 500");
}

TEST(MapProcessors, AllMembersMissingIsAnEmptyTable) {
  const auto result = mappedProcessors({{"A", std::string(kMissing)}});
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_TRUE(result.records.empty());
}

TEST(MapProcessors, CollectionNotLinkedIsAnEmptyTable) {
  const Server server;
  const auto result = printed(mapProcessors(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_TRUE(result.records.empty());
}

TEST(MapProcessors, MissingCollectionIsAnEmptyTable) {
  Server server;
  server.linked("Systems/1", "Processors", kMissing);
  const auto result = printed(mapProcessors(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_TRUE(result.records.empty());
}

TEST(MapProcessors, UnreadableCollectionIsAFailure) {
  Server server;
  server.linked("Systems/1", "Processors", kBroken);
  const auto result = printed(mapProcessors(server.graph(), server.node()));
  ASSERT_TRUE(result.failure.has_value());
  EXPECT_EQ(result.failure->kind, base::FailureKind::kServerError);
}

TEST(MapProcessors, CollectionThatWasNeverReadIsAFailure) {
  Server server;
  server.link("Systems/1", "Processors");
  EXPECT_TRUE(printed(mapProcessors(server.graph(), server.node()))
                  .failure.has_value());
}

TEST(MapProcessors, SameMemberTwiceIsOneRow) {
  Server server;
  server.members("Systems/1", "Processors", {{"A", "{}"}});
  server.put(
      "Systems/1/Processors",
      R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1/Processors/A"},
                {"@odata.id": "https://other/redfish/v1/Systems/1/Processors/A/"},
                null, {}, {"@odata.id": 7}]})");
  EXPECT_EQ(
      printed(mapProcessors(server.graph(), server.node())).records.size(), 1U);
}

TEST(MapProcessors, SingleObjectInPlaceOfTheListIsOneMember) {
  Server server;
  server.members("Systems/1", "Processors", {{"A", "{}"}});
  server.put("Systems/1/Processors",
             R"({"Members": )" + linkTo("Systems/1/Processors/A") + "}");
  EXPECT_EQ(
      printed(mapProcessors(server.graph(), server.node())).records.size(), 1U);
}

TEST(MapProcessors, WrongTypesCostOnlyTheirOwnValues) {
  const auto row =
      onlyProcessor(R"({"Name": [], "Id": "7", "Family": {}, "Model": true,
      "OperatingSpeedMHz": "fast", "MaxSpeedMHz": "3900",
      "OperatingSpeedRangeMHz": [], "Metrics": [], "ProcessorId": 3,
      "Status": "OK"})");
  EXPECT_EQ(row.name, "Processor 7");
  EXPECT_EQ(row.family, "");
  EXPECT_EQ(row.currentClockSpeed, "");
  EXPECT_EQ(row.maxClockSpeed, "3900");
  EXPECT_EQ(row.healthState, "Unknown");
}

}  // namespace
}  // namespace devhealth
