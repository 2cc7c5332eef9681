// What a crawl asks for: counts and targets of requests, over whole servers
// and over the odd ones that a plan has to bear.
#include "suite/redfish/crawl/crawl.h"

#include <gtest/gtest.h>

#include <boost/json/array.hpp>
#include <set>

#include "suite/base/time_limit.h"
#include "suite/redfish/graph/topology.h"
#include "tests/suite/redfish/service_fixture.h"

namespace {

using base::FailureKind;
using redfish::ResourceState;

constexpr std::uint32_t kSixTables =
    redfish::kWantSystem | redfish::kWantProcessors | redfish::kWantFans |
    redfish::kWantDimms | redfish::kWantPowers | redfish::kWantPciAdapters;

std::filesystem::path sample(const char* name) {
  return std::filesystem::path(SAMPLES_DIR) / name;
}

struct CrawlSample : ScriptedService, testing::Test {
  std::optional<base::Failure> read(const char* name, std::uint32_t wants) {
    script->tree = sample(name);
    return start().read(wanting(wants));
  }
  std::size_t finish() {
    service.reset();
    return script->requests.size();
  }
};

TEST_F(CrawlSample, SummaryByServiceConditionsTakesTenRequests) {
  EXPECT_FALSE(read("rack-server", redfish::kWantHealth));
  EXPECT_EQ(service->stats().levels, 3U);
  EXPECT_EQ(finish(), 10U);
}

TEST_F(CrawlSample, GuidedWalkKeepsWithinItsBudget) {
  script->on("GET /redfish/v1/ServiceConditions", 404);
  EXPECT_FALSE(read("rack-server", redfish::kWantHealth));
  EXPECT_EQ(service->stats().levels, 6U);
  EXPECT_EQ(finish(), 28U);  // The conditions that are not there, and 27.
}

TEST_F(CrawlSample, GuidedWalkLeavesHealthyBranchesAlone) {
  script->on("GET /redfish/v1/ServiceConditions", 404);
  read("rack-server", redfish::kWantHealth);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory"), 0U);
  EXPECT_EQ(script->count("GET /redfish/v1/Chassis/1/ThermalSubsystem/Fans"),
            0U);
}

TEST_F(CrawlSample, ThoroughWalkReadsEveryComponent) {
  EXPECT_FALSE(
      read("rack-server", redfish::kWantHealth | redfish::kWantThorough));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory/"), 24U);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Storage/1/Drives/"), 8U);
}

TEST_F(CrawlSample, UnexplainedSystemHasItsBranchesEntered) {
  script->on("GET /redfish/v1/ServiceConditions", 404);
  script->tree = sample("rack-server");
  auto selection = wanting(redfish::kWantHealth);
  start().read(selection);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory/"), 0U);
  selection.unexplained.insert("/redfish/v1/Systems/1");
  service->read(selection);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory/"), 24U);
  EXPECT_EQ(script->count("GET /redfish/v1/Chassis/1/ThermalSubsystem/Fans/"),
            0U);
}

TEST_F(CrawlSample, SixTablesKeepWithinTheirBudget) {
  EXPECT_FALSE(read("rack-server", kSixTables));
  EXPECT_EQ(service->stats().levels, 6U);
  EXPECT_EQ(finish(), 62U);
}

TEST_F(CrawlSample, PciAdaptersAloneKeepWithinTheirBudget) {
  EXPECT_FALSE(read("rack-server", redfish::kWantPciAdapters));
  EXPECT_EQ(service->stats().levels, 5U);
  EXPECT_EQ(finish(), 23U);
}

// The dense server with the models of the first Redfish years: one document of
// all fans, one of all supplies.
struct CrawlOldModels : CrawlSample {
  CrawlOldModels() {
    script->on("GET /redfish/v1/Chassis/1", 200, R"({"Id": "1",
        "Thermal": {"@odata.id": "/redfish/v1/Chassis/1/Thermal"},
        "Power": {"@odata.id": "/redfish/v1/Chassis/1/Power"},
        "PCIeDevices": {"@odata.id": "/redfish/v1/Chassis/1/PCIeDevices"},
        "NetworkAdapters": {"@odata.id":
            "/redfish/v1/Chassis/1/NetworkAdapters"},
        "Links": {"ComputerSystems": [{"@odata.id":
            "/redfish/v1/Systems/1"}]}})");
    script->on("GET /redfish/v1/Chassis/1/Thermal", 200,
               R"({"Fans": [{"MemberId": "0", "Name": "Fan 1"}]})");
    script->on("GET /redfish/v1/Chassis/1/Power", 200,
               R"({"PowerSupplies": [{"MemberId": "0", "Name": "PSU 1"}]})");
  }
};

TEST_F(CrawlOldModels, SixTablesKeepWithinTheirBudget) {
  EXPECT_FALSE(read("rack-server", kSixTables));
  EXPECT_EQ(service->stats().levels, 5U);
  EXPECT_EQ(finish(), 50U);
}

TEST_F(CrawlOldModels, SummaryKeepsWithinItsBudget) {
  script->on("GET /redfish/v1/ServiceConditions", 404);
  EXPECT_FALSE(read("rack-server", redfish::kWantHealth));
  EXPECT_EQ(finish(), 25U);  // The conditions that are not there, and 24.
}

TEST_F(CrawlSample, SixTablesOnTheOldSchema) {
  EXPECT_FALSE(read("old-schema", kSixTables));
  EXPECT_EQ(finish(), 26U);
}

TEST_F(CrawlSample, ItemsReadAheadCostNothingLater) {
  options.prefetch = kSixTables;
  EXPECT_FALSE(read("rack-server", redfish::kWantSystem));
  const std::size_t before = script->requests.size();
  EXPECT_FALSE(service->read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->requests.size(), before);
}

TEST_F(CrawlSample, WhatStallsAheadLosesNothingThatCame) {
  options.prefetch = kSixTables;
  options.callTimeout = std::chrono::milliseconds(200);
  script->stalled = "GET /redfish/v1/Systems/1/Memory/P1-A1";
  EXPECT_FALSE(read("rack-server", redfish::kWantSystem));
  EXPECT_FALSE(service->read(wanting(redfish::kWantProcessors)));
  EXPECT_EQ(service->read(wanting(redfish::kWantDimms))->kind,
            base::FailureKind::kDeadline);
}

TEST_F(CrawlSample, NoResourceIsAskedForTwice) {
  for (const char* name : {"rack-server", "two-node", "old-schema", "edge"}) {
    ScriptedService one;
    one.script->tree = sample(name);
    one.start().read(wanting(kSixTables | redfish::kWantHealth));
    const std::set<std::string> distinct(one.script->requests.begin(),
                                         one.script->requests.end());
    EXPECT_EQ(distinct.size(), one.script->requests.size()) << name;
  }
}

TEST_F(CrawlSample, WhatIsKnownIsNotLookedForAgain) {
  options.prefetch = kSixTables;
  script->tree = sample("rack-server");
  const auto stepsOf = [this](const redfish::Selection& selection) {
    const auto before = base::stepsSoFar();
    EXPECT_FALSE(service->read(selection));
    return base::stepsSoFar() - before;
  };
  start();
  EXPECT_GT(stepsOf(wanting(redfish::kWantSystem)), 0U);
  EXPECT_GT(stepsOf(wanting(redfish::kWantSystem)), 0U);  // Finds nothing.
  EXPECT_EQ(stepsOf(wanting(redfish::kWantFans)), 0U);
  EXPECT_EQ(stepsOf(wanting(redfish::kWantDimms)), 0U);
  EXPECT_GT(stepsOf(wanting(redfish::kWantHealth)), 0U);
  EXPECT_GT(stepsOf(wanting(redfish::kWantHealth)), 0U);
  EXPECT_EQ(stepsOf(wanting(redfish::kWantFans)), 0U);
  auto selection = wanting(redfish::kWantFans);
  selection.unexplained.insert("/redfish/v1/Systems/1");
  EXPECT_GT(stepsOf(selection), 0U);
}

TEST_F(CrawlSample, AnotherNodeIsLookedFor) {
  options.prefetch = redfish::kWantProcessors;
  script->tree = sample("two-node");
  start();
  for (int time = 0; time < 2; ++time) {
    EXPECT_FALSE(service->read(wanting(redfish::kWantProcessors)));
  }
  const auto before = script->requests.size();
  EXPECT_FALSE(service->read(wanting(redfish::kWantProcessors, 1)));
  EXPECT_GT(script->requests.size(), before);
}

TEST_F(CrawlSample, ConcurrencyStaysWithinTheLimit) {
  options.maxConnections = 3;
  EXPECT_FALSE(read("rack-server", kSixTables));
  EXPECT_EQ(script->mostUnderWay, 3U);
}

TEST_F(CrawlSample, SecondNodeReadsItsOwnProcessorsOnly) {
  script->tree = sample("two-node");
  EXPECT_FALSE(start().read(wanting(redfish::kWantProcessors, 1)));
  const auto& nodes = service->topology().nodes();
  ASSERT_EQ(nodes.size(), 2U);
  EXPECT_EQ(
      script->count("GET " + nodes[0].front()->uri.target() + "/Processors"),
      0U);
  EXPECT_GE(
      script->count("GET " + nodes[1].front()->uri.target() + "/Processors"),
      1U);
}

TEST_F(CrawlSample, NodeBeyondTheListIsNoSystem) {
  script->tree = sample("two-node");
  EXPECT_EQ(start().read(wanting(redfish::kWantSystem, 2))->kind,
            base::FailureKind::kNoSystem);
}

// A service built link by link.
struct LinkedService : ScriptedService {
  LinkedService() {
    options.user.clear();
    script->on("GET /redfish/v1/", 200, kRootBody);
    on("/Systems", R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1"}]})");
    on("/Systems/1", R"({
        "Memory": {"@odata.id": "/redfish/v1/Systems/1/Memory"},
        "Processors": {"@odata.id": "/redfish/v1/Systems/1/Processors"}})");
    on("/Chassis", R"({"Members": []})");
  }
  void on(const std::string& path, std::string body, int status = 200) {
    script->on("GET /redfish/v1" + path, status, std::move(body));
  }
  void instead(const std::string& path, std::string body, int status = 200) {
    script->answers.erase("GET /redfish/v1" + path);
    on(path, std::move(body), status);
  }
  const redfish::Resource* found(const std::string& path) {
    return service->graph().find("/redfish/v1" + path);
  }
  std::size_t memory() {
    return script->count("GET /redfish/v1/Systems/1/Memory/");
  }
};

struct CrawlScript : LinkedService, testing::Test {};

TEST_F(CrawlScript, PagesAreFollowedAndJoined) {
  on("/Systems/1/Memory", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1"}],
      "Members@odata.nextLink": "/redfish/v1/Systems/1/Memory?$skip=1"})");
  on("/Systems/1/Memory?$skip=1", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/2"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(memory(), 2U);
  EXPECT_EQ(
      redfish::linksAt(found("/Systems/1/Memory")->body, "Members").size(), 2U);
}

TEST_F(CrawlScript, PagesThatLoopEnd) {
  on("/Systems/1/Memory", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1"}],
      "Members@odata.nextLink": "/redfish/v1/Systems/1/Memory"})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlScript, UnreadablePageSpoilsTheCollection) {
  on("/Systems/1/Memory", R"({"Members": [],
      "Members@odata.nextLink": "/redfish/v1/Systems/1/Memory?$skip=1"})");
  on("/Systems/1/Memory?$skip=1", "garbage");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kUnreadable);
}

TEST_F(CrawlScript, PageOfRefusedMembersSpoilsTheCollection) {
  on("/Systems/1/Memory", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1"}],
      "Members@odata.nextLink": "/redfish/v1/Systems/1/Memory?$skip=1"})");
  on("/Systems/1/Memory?$skip=1", R"({"Members": [
      null, {"@odata.id": "/redfish/v1/../2"}, {"@odata.id": ""}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  const redfish::Resource* const list = found("/Systems/1/Memory");
  EXPECT_EQ(list->state, ResourceState::kUnreadable);
  ASSERT_TRUE(list->failure);
  EXPECT_EQ(list->failure->kind, FailureKind::kRefusedLink);
  EXPECT_EQ(list->failure->cause,
            "the links of all its 2 members leave /redfish/");
}

TEST_F(CrawlScript, OnlyMemberRefusedSpoilsTheCollection) {
  on("/Systems/1/Memory", R"({"Members": {"@odata.id": "/admin/1"}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->failure->cause,
            "the link of its only member leaves /redfish/");
}

TEST_F(CrawlScript, MembersWithoutLinksMakeAnEmptyCollection) {
  on("/Systems/1/Memory", R"({"Members": [null, {}, {"@odata.id": 7}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlScript, PagesWithoutEndSpoilTheCollection) {
  for (int i = 0; i < 100; ++i) {
    const std::string next = std::to_string(i + 1);
    on("/Systems/1/Memory" + (i == 0 ? "" : "?$skip=" + std::to_string(i)),
       R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1/Memory/1"}],
           "Members@odata.nextLink": "/redfish/v1/Systems/1/Memory?$skip=)" +
           next + "\"}");
  }
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kUnreadable);
  EXPECT_LE(script->requests.size(), 80U);
}

TEST_F(CrawlScript, MembersMissingNullOrOneObject) {
  on("/Systems/1/Memory", R"({"Members": {"@odata.id":
                              "/redfish/v1/Systems/1/Memory/1"}})");
  on("/Systems/1/Processors", R"({"Members": null})");
  EXPECT_FALSE(
      start().read(wanting(redfish::kWantDimms | redfish::kWantProcessors)));
  EXPECT_EQ(memory(), 1U);
}

TEST_F(CrawlScript, BadMembersAreSkipped) {
  on("/Systems/1/Memory", R"({"Members": [null, 3, {}, {"@odata.id": 7},
      {"@odata.id": "https://evil.test/x"}, {"@odata.id": "/redfish/../etc"},
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(memory(), 1U);
}

TEST_F(CrawlScript, MillionMembersSpoilTheCollection) {
  std::string body = R"({"Members": [)";
  for (int i = 0; i < 5000; ++i) {
    body += R"({"@odata.id": "/redfish/v1/Systems/1/Memory/)" +
            std::to_string(i) + "\"},";
  }
  body.back() = ']';
  on("/Systems/1/Memory", body + "}");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(memory(), 0U);
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kUnreadable);
}

TEST_F(CrawlScript, ResourcesBeyondTheLimitAreNotAskedFor) {
  std::string body = R"({"Members": [)";
  for (int i = 0; i < 3000; ++i) {
    body += R"({"@odata.id": "/redfish/v1/Systems/1/Memory/)" +
            std::to_string(i) + "\"},";
  }
  body.back() = ']';
  on("/Systems/1/Memory", body + "}");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_LE(script->requests.size(), 2001U);
  EXPECT_EQ(found("/Systems/1/Memory/2999")->state, ResourceState::kUnreadable);
}

TEST_F(CrawlScript, ChassisThatContainEachOtherEnd) {
  instead("/Chassis", R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/A"},
                                      {"@odata.id": "/redfish/v1/Chassis/B"}]})");
  on("/Chassis/A", R"({"Links": {"Contains": [
      {"@odata.id": "/redfish/v1/Chassis/B"},
      {"@odata.id": "/redfish/v1/Chassis/A"}]}})");
  on("/Chassis/B", R"({"Links": {"Contains": [
      {"@odata.id": "/redfish/v1/Chassis/A"}]}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  EXPECT_EQ(redfish::Topology(service->graph()).node(0).chassis.size(), 2U);
}

TEST_F(CrawlScript, OldFansWhenTheNewModelHasNone) {
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/A"}]})");
  on("/Chassis/A", R"({
      "ThermalSubsystem": {"@odata.id": "/redfish/v1/Chassis/A/ThermalSubsystem"},
      "Thermal": {"@odata.id": "/redfish/v1/Chassis/A/Thermal"}})");
  on("/Chassis/A/ThermalSubsystem", R"({"Fans": {"@odata.id":
      "/redfish/v1/Chassis/A/ThermalSubsystem/Fans"}})");
  on("/Chassis/A/ThermalSubsystem/Fans", R"({"Members": []})");
  on("/Chassis/A/Thermal", R"({"Fans": [{"MemberId": "0"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  EXPECT_NE(found("/Chassis/A/Thermal"), nullptr);
}

TEST_F(CrawlScript, OldFansAreLeftWhereTheNewModelHasSome) {
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/A"}]})");
  on("/Chassis/A", R"({
      "ThermalSubsystem": {"@odata.id": "/redfish/v1/Chassis/A/ThermalSubsystem"},
      "Thermal": {"@odata.id": "/redfish/v1/Chassis/A/Thermal"}})");
  on("/Chassis/A/ThermalSubsystem", R"({"Fans": {"@odata.id":
      "/redfish/v1/Chassis/A/ThermalSubsystem/Fans"}})");
  on("/Chassis/A/ThermalSubsystem/Fans", R"({"Members": [{"@odata.id":
      "/redfish/v1/Chassis/A/ThermalSubsystem/Fans/1"}]})");
  on("/Chassis/A/ThermalSubsystem/Fans/1", R"({"Name": "Fan 1"})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  EXPECT_EQ(found("/Chassis/A/Thermal"), nullptr);
}

TEST_F(CrawlScript, FansOfTheEnclosureWhereTheBladeHasNone) {
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/Blade"}]})");
  on("/Chassis/Blade", R"({"Links": {
      "ComputerSystems": [{"@odata.id": "/redfish/v1/Systems/1"}],
      "ContainedBy": {"@odata.id": "/redfish/v1/Chassis/Enclosure"}}})");
  on("/Chassis/Enclosure", R"({"ChassisType": "Enclosure",
      "Thermal": {"@odata.id": "/redfish/v1/Chassis/Enclosure/Thermal"}})");
  on("/Chassis/Enclosure/Thermal", R"({"Fans": [{"MemberId": "0"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  EXPECT_NE(found("/Chassis/Enclosure/Thermal"), nullptr);
}

TEST_F(CrawlScript, OldFansWhereTheSubsystemCannotBeRead) {
  for (const int status : {404, 500}) {
    for (const std::uint32_t want :
         {redfish::kWantFans, redfish::kWantPowers, redfish::kWantHealth}) {
      LinkedService one;
      one.options.maxConnections = 16;
      one.instead("/Chassis",
                  R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/A"}]})");
      one.on("/Chassis/A", R"({
          "ThermalSubsystem": {"@odata.id": "/redfish/v1/Chassis/A/TS"},
          "Thermal": {"@odata.id": "/redfish/v1/Chassis/A/Thermal"},
          "PowerSubsystem": {"@odata.id": "/redfish/v1/Chassis/A/PS"},
          "Power": {"@odata.id": "/redfish/v1/Chassis/A/Power"}})");
      one.on("/Chassis/A/TS", "", status);
      one.on("/Chassis/A/PS", "", status);
      one.on("/Chassis/A/Thermal", R"({"Fans": [{"MemberId": "0"}]})");
      one.on("/Chassis/A/Power", R"({"PowerSupplies": [{"MemberId": "0"}]})");
      EXPECT_FALSE(one.start().read(wanting(want))) << status;
      EXPECT_EQ(one.found("/Chassis/A/Thermal") != nullptr,
                want != redfish::kWantPowers)
          << status;
      EXPECT_EQ(one.found("/Chassis/A/Power") != nullptr,
                want != redfish::kWantFans)
          << status;
    }
  }
}

TEST_F(CrawlScript, BoardBesideAMachineIsReadWithIt) {
  instead("/Systems", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/Board"},
      {"@odata.id": "/redfish/v1/Systems/1"}]})");
  instead("/Systems/1", R"({"Boot": {}})");
  on("/Systems/Board", R"({
      "Memory": {"@odata.id": "/redfish/v1/Systems/Board/Memory"}})");
  on("/Systems/Board/Memory", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/Board/Memory/1"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/Board/Memory/1"), 1U);
  EXPECT_EQ(script->count("GET /redfish/v1/Chassis"), 0U);
}

TEST_F(CrawlScript, BoardBesideTwoMachinesIsPlacedByItsChassis) {
  instead("/Systems", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/Board"},
      {"@odata.id": "/redfish/v1/Systems/1"},
      {"@odata.id": "/redfish/v1/Systems/2"}]})");
  instead("/Systems/1", R"({"Boot": {}})");
  on("/Systems/2", R"({"Boot": {}, "Links": {"Chassis": [
      {"@odata.id": "/redfish/v1/Chassis/C"}]}})");
  on("/Systems/Board", R"({
      "Memory": {"@odata.id": "/redfish/v1/Systems/Board/Memory"}})");
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/C"}]})");
  on("/Chassis/C", R"({"Links": {"ComputerSystems": [
      {"@odata.id": "/redfish/v1/Systems/Board"}]}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms, 0)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/Board/Memory"), 0U);
  EXPECT_FALSE(service->read(wanting(redfish::kWantDimms, 1)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/Board/Memory"), 1U);
}

TEST_F(CrawlScript, ChassisThatDidNotComeAreLeftWhereTheyAreNotNeeded) {
  options.callTimeout = std::chrono::milliseconds(100);
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/C"}]})");
  on("/Chassis/C", "{}");
  on("/Systems/1/Memory", R"({"Members": []})");
  script->stalled = "GET /redfish/v1/Chassis/C";
  EXPECT_TRUE(start().read(wanting(redfish::kWantSystem)));
  EXPECT_FALSE(service->read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count(script->stalled), 1U);
}

TEST_F(CrawlScript, NodesKeepTheirNumbersInWhateverOrderTheyAreListed) {
  for (const char* members : {R"([{"@odata.id": "/redfish/v1/Systems/10"},
            {"@odata.id": "/redfish/v1/Systems/2"}])",
                              R"([{"@odata.id": "/redfish/v1/Systems/2"},
            {"@odata.id": "/redfish/v1/Systems/10"}])"}) {
    LinkedService one;
    one.instead("/Systems", R"({"Members": )" + std::string(members) + "}");
    one.on("/Systems/2", R"({"Id": "Blade2"})");
    one.on("/Systems/10", R"({"Id": "Blade10", "Memory":
        {"@odata.id": "/redfish/v1/Systems/10/Memory"}})");
    EXPECT_FALSE(one.start().read(wanting(redfish::kWantDimms, 1)));
    EXPECT_EQ(one.script->count("GET /redfish/v1/Systems/10/Memory"), 1U);
  }
}

TEST_F(CrawlScript, AdaptersBehindInterfacesOnlyWithoutAdaptersInChassis) {
  instead("/Systems/1", R"({
      "NetworkInterfaces": {"@odata.id": "/redfish/v1/Systems/1/NI"}})");
  on("/Systems/1/NI", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/NI/1"}]})");
  on("/Systems/1/NI/1", R"({"Links": {"NetworkAdapter":
      {"@odata.id": "/redfish/v1/Systems/1/NI/1/NetworkAdapter"}}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantPciAdapters)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/NI/1/NetworkAdapter"), 1U);
}

TEST_F(CrawlScript, PartsOfADocumentStayInIt) {
  instead("/Chassis",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/A"}]})");
  on("/Chassis/A", R"({
      "Thermal": {"@odata.id": "/redfish/v1/Chassis/A/Thermal"}})");
  on("/Chassis/A/Thermal", R"({"Fans": [{
      "@odata.id": "/redfish/v1/Chassis/A/Thermal/Fans/0", "Id": "0",
      "@odata.type": "#Thermal.v1_4_0.Fan", "Name": "Fan 1"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  const auto* fans =
      redfish::arrayAt(found("/Chassis/A/Thermal")->body, "Fans");
  ASSERT_NE(fans, nullptr);
  EXPECT_TRUE(fans->front().as_object().contains("Name"));
}

TEST_F(CrawlScript, ProcessorsOfThePciTableNeedNoMetrics) {
  on("/Systems/1/Processors", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Processors/1"}]})");
  on("/Systems/1/Processors/1", R"({"Metrics":
      {"@odata.id": "/redfish/v1/Systems/1/Processors/1/Metrics"}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantPciAdapters)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Processors/1"), 1U);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Processors/1/Metrics"),
            0U);
  EXPECT_FALSE(service->read(wanting(redfish::kWantProcessors)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Processors/1/Metrics"),
            1U);
}

TEST_F(CrawlScript, UnreadableMemberIsKeptWithItsReason) {
  on("/Systems/1/Memory", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1"}]})");
  on("/Systems/1/Memory/1", "<html>", 200);
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  const auto* member = found("/Systems/1/Memory/1");
  ASSERT_NE(member, nullptr);
  EXPECT_EQ(member->state, ResourceState::kUnreadable);
  EXPECT_EQ(member->failure->kind, base::FailureKind::kBadContent);
}

TEST_F(CrawlScript, ResetOfAReusedConnectionIsRepeatedOnAFreshOne) {
  auto reset = failureOf(base::FailureKind::kUnreachable);
  reset.reusedConnection = true;
  script->on("GET /redfish/v1/Systems/1/Memory", reset);
  on("/Systems/1/Memory", R"({"Members": []})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->fresh, 1U);
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlScript, ConnectionLostBeforeAnAnswerIsRepeatedOnAFreshOne) {
  auto lost = failureOf(base::FailureKind::kUnreachable);
  lost.lostBeforeAnswer = true;
  script->on("GET /redfish/v1/Systems/1/Memory", lost);
  on("/Systems/1/Memory", R"({"Members": []})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->fresh, 1U);
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlScript, ControllerThatVanishesEndsTheReading) {
  script->on("GET /redfish/v1/Systems/1/Memory",
             failureOf(base::FailureKind::kUnreachable));
  script->on("GET /redfish/v1/Systems/1/Processors",
             failureOf(base::FailureKind::kUnreachable));
  instead("/Systems/1", R"({
      "Memory": {"@odata.id": "/redfish/v1/Systems/1/Memory"},
      "Processors": {"@odata.id": "/redfish/v1/Systems/1/Processors"},
      "PCIeDevices": [{"@odata.id": "/redfish/v1/D/1"}]})");
  script->on("GET /redfish/v1/D/1", failureOf(base::FailureKind::kUnreachable));
  EXPECT_EQ(start().read(wanting(kSixTables))->kind,
            base::FailureKind::kUnreachable);
}

TEST_F(CrawlScript, RedirectOnTheSameOriginIsFollowed) {
  auto moved = answerOf(308);
  moved.location = "https://bmc.test/redfish/v1/Other";
  script->on("GET /redfish/v1/Systems/1/Memory", moved);
  script->on("GET /redfish/v1/Other", 200, R"({"Members": []})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlScript, RedirectToAnotherOriginIsRefused) {
  auto moved = answerOf(302);
  moved.location = "https://evil.test/redfish/v1/Other";
  script->on("GET /redfish/v1/Systems/1/Memory", moved);
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory")->failure->kind,
            base::FailureKind::kRefusedLink);
  EXPECT_EQ(script->count("GET /redfish/v1/Other"), 0U);
}

TEST_F(CrawlScript, RedirectLoopEnds) {
  auto moved = answerOf(307);
  moved.location = "/redfish/v1/Systems/1/Memory";
  script->on("GET /redfish/v1/Systems/1/Memory", moved);
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory"), 4U);
}

// The same service, offering $expand.
struct CrawlExpand : CrawlScript {
  CrawlExpand() {
    std::string root = kRootBody;
    root.insert(1, R"("ProtocolFeaturesSupported": {"ExpandQuery":
        {"NoLinks": true, "Levels": true, "MaxLevels": 6}},)");
    instead("/", root);
  }
};

TEST_F(CrawlExpand, ExpandedMembersAreNotAskedFor) {
  on("/Systems?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1",
      "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem", "Id": "1",
      "Name": "S", "Memory": {"@odata.id": "/redfish/v1/Systems/1/Memory"}}]})");
  on("/Systems/1/Memory?$expand=.", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1", "Name": "D",
       "@odata.type": "#Memory.v1_17_0.Memory", "Id": "1"},
      {"@odata.id": "/redfish/v1/Systems/1/Memory/2"}]})");
  on("/Systems/1/Memory/2", R"({"Id": "2"})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory/1"), 0U);
  EXPECT_EQ(memory(), 1U);
  EXPECT_EQ(found("/Systems/1/Memory/1")->state, ResourceState::kRead);
}

TEST_F(CrawlExpand, LinkedChassisIsLeftToItsCollection) {
  on("/Systems?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1",
      "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem", "Id": "1",
      "Name": "S", "Links": {"Chassis": [
          {"@odata.id": "/redfish/v1/Chassis/1"}]}}]})");
  on("/Chassis?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/1",
      "@odata.type": "#Chassis.v1_25_0.Chassis", "Id": "1", "Name": "C"}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantFans)));
  EXPECT_EQ(script->count("GET /redfish/v1/Chassis/1"), 0U);
}

TEST_F(CrawlExpand, WhatComesAlongIsNotKeptUnlessThePlanAsksForIt) {
  on("/Systems?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1",
      "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem", "Id": "1",
      "Name": "S", "Memory": {"@odata.id": "/redfish/v1/Systems/1/Memory"}}]})");
  on("/Systems/1/Memory?$expand=.", R"({"Members": [
      {"@odata.id": "/redfish/v1/Systems/1/Memory/1", "Name": "D",
       "@odata.type": "#Memory.v1_17_0.Memory", "Id": "1",
       "Metrics": {"@odata.id": "/redfish/v1/Systems/1/Memory/1/Metrics",
         "@odata.type": "#MemoryMetrics.v1_7_0.MemoryMetrics",
         "Id": "Metrics", "Name": "M", "Status": {"Health": "Warning"}}}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(found("/Systems/1/Memory/1/Metrics"), nullptr);
  const auto* metrics =
      redfish::objectAt(found("/Systems/1/Memory/1")->body, "Metrics");
  ASSERT_NE(metrics, nullptr);
  EXPECT_EQ(metrics->size(), 1U);

  // Asked for by its link it costs no request.
  auto selection = wanting(redfish::kWantDimms);
  selection.extras.push_back(
      *redfish::Uri::parse("/redfish/v1/Systems/1/Memory/1/Metrics"));
  const std::size_t before = script->requests.size();
  EXPECT_FALSE(service->read(selection));
  EXPECT_EQ(script->requests.size(), before);
  EXPECT_NE(found("/Systems/1/Memory/1/Metrics"), nullptr);
}

TEST_F(CrawlExpand, BranchThatThePlanLeavesIsLeftWhereItComesAlong) {
  instead("/Chassis?$expand=.",
          R"({"Members": [{"@odata.id": "/redfish/v1/Chassis/1",
       "@odata.type": "#Chassis.v1_25_0.Chassis", "Id": "1", "Name": "C",
       "PowerSubsystem": {"@odata.id":
           "/redfish/v1/Chassis/1/PowerSubsystem"}}]})");
  on("/Systems?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1",
      "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem", "Id": "1",
      "Name": "S"}]})");
  on("/Chassis/1/PowerSubsystem?$expand=.($levels=2)", R"({
      "Status": {"HealthRollup": "OK"},
      "Batteries": {"@odata.id": "/redfish/v1/Chassis/1/PowerSubsystem/B",
          "@odata.type": "#BatteryCollection.BatteryCollection",
          "Members": [{"@odata.id": "/redfish/v1/Chassis/1/PowerSubsystem/B/1",
              "@odata.type": "#Battery.v1_2_0.Battery", "Id": "1",
              "Name": "B", "Status": {"Health": "Critical"}}]}})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantHealth)));
  EXPECT_EQ(found("/Chassis/1/PowerSubsystem")->state, ResourceState::kRead);
  EXPECT_EQ(found("/Chassis/1/PowerSubsystem/B"), nullptr);
  EXPECT_EQ(found("/Chassis/1/PowerSubsystem/B/1"), nullptr);

  auto selection = wanting(redfish::kWantHealth);
  selection.unexplained.insert("/redfish/v1/Chassis/1/PowerSubsystem");
  const std::size_t before = script->requests.size();
  EXPECT_FALSE(service->read(selection));
  EXPECT_EQ(script->requests.size(), before);
  EXPECT_EQ(found("/Chassis/1/PowerSubsystem/B/1")->state,
            ResourceState::kRead);
}

TEST_F(CrawlExpand, WhatAMakerAddsStaysInItsPlace) {
  on("/Systems?$expand=.",
     R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1",
      "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem", "Id": "1",
      "Name": "S", "Oem": {"Maker": {"Extra": {
          "@odata.id": "/redfish/v1/Systems/1/Extra", "Id": "E", "Name": "E",
          "@odata.type": "#Extra.v1_0_0.Extra", "ServiceTag": "T1"}}}}]})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantSystem)));
  EXPECT_EQ(redfish::stringAt(found("/Systems/1")->body,
                              "Oem/Maker/Extra/ServiceTag"),
            "T1");
}

TEST_F(CrawlExpand, RefusalFallsBackForTheRun) {
  on("/Systems?$expand=.", "", 501);
  on("/Systems/1/Memory", R"({"Members": []})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems/1/Memory?"), 0U);
  EXPECT_EQ(found("/Systems/1/Memory")->state, ResourceState::kRead);
}

TEST_F(CrawlExpand, RecordedServerIsNeverAskedToExpand) {
  script->live = false;
  on("/Systems/1/Memory", R"({"Members": []})");
  EXPECT_FALSE(start().read(wanting(redfish::kWantDimms)));
  EXPECT_EQ(script->count("GET /redfish/v1/Systems?"), 0U);
}

}  // namespace
