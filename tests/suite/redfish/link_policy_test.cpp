// Which links a crawl follows: each condition by itself, without a transport.
#include "suite/redfish/crawl/link_policy.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/suite/graph_of.h"

namespace redfish {
namespace {

std::string link(const std::string& path) {
  return R"({"@odata.id": "/redfish/v1/)" + path + R"("})";
}

std::string member(const std::string& name, const std::string& path) {
  return '"' + name + R"(": )" + link(path);
}

std::string memberList(const std::string& name, const std::string& path) {
  return '"' + name + R"(": [)" + link(path) + "]";
}

// A service with system S in chassis C, and a crawl of which nothing is under
// way.
class Policy : public testing::Test {
 protected:
  void SetUp() override {
    has("", member("Systems", "Systems") + "," + member("Chassis", "Chassis"));
    has("Systems", memberList("Members", "Systems/S"));
    has("Systems/S");
    has("Chassis", memberList("Members", "Chassis/C"));
    has("Chassis/C");
  }

  // Adds a resource by its members, or replaces it.
  void has(const std::string& path, const std::string& members = "") {
    put(knowledge_.graph, uriOf(path), "{" + members + "}");
  }
  void lacks(const std::string& path) {
    put(knowledge_.graph, uriOf(path), kMissing);
  }
  void breaks(const std::string& path) {
    put(knowledge_.graph, uriOf(path), kBroken);
  }
  void expands() {
    knowledge_.expand.offer(*parseObject(
        R"({"ProtocolFeaturesSupported": {"ExpandQuery": {"NoLinks": true}}})"));
  }
  void awaits(Kind kind) { state_.waiting[index(kind)] = 1; }

  // What becomes of the plan's row of a kind and a path.
  Decision decide(const std::string& document, Kind kind, std::string_view path,
                  std::uint32_t wants) {
    selection_.wants = wants;
    LinkPolicy policy(knowledge_, selection_, state_);
    for (const Rule& rule : rulesFrom(kind)) {
      if (rule.path == path && (rule.wants & policy.bits()) != 0) {
        return policy.decide(rule, *knowledge_.graph.find(uriOf(document)));
      }
    }
    ADD_FAILURE() << "the plan has no " << path;
    return Decision::kWait;
  }
  Decision ofSystem(std::string_view path, std::uint32_t wants) {
    return decide("Systems/S", Kind::kSystem, path, wants);
  }
  Decision ofChassis(std::string_view path, std::uint32_t wants) {
    return decide("Chassis/C", Kind::kChassis, path, wants);
  }
  // The same once nothing is under way any more.
  template <typename Ask>
  Decision drained(Ask ask) {
    state_.drained = true;
    const Decision decision = ask();
    state_.drained = false;
    return decision;
  }

  static std::string uriOf(const std::string& path) {
    return path.empty() ? "/redfish/v1" : "/redfish/v1/" + path;
  }

  ServiceKnowledge knowledge_;
  Selection selection_;
  CrawlState state_;
};

// What belongs to the node.

TEST_F(Policy, SystemWaitsForTheOthers) {
  awaits(Kind::kSystem);
  EXPECT_EQ(ofSystem("Memory", kWantDimms), Decision::kWait);
}

TEST_F(Policy, SystemOfAnotherNodeIsSkipped) {
  selection_.nodeIndex = 1;
  EXPECT_EQ(ofSystem("Memory", kWantDimms), Decision::kSkip);
}

TEST_F(Policy, SystemThatIsAPartIsEntered) {
  has("Systems",
      R"("Members": [)" + link("Systems/S") + "," + link("Systems/Host") + "]");
  has("Systems/Host", R"("Boot": {})");
  EXPECT_EQ(ofSystem("Memory", kWantDimms), Decision::kEnter);
}

TEST_F(Policy, UnclearPartsWaitForTheChassis) {
  has("Systems", R"("Members": [)" + link("Systems/S") + "," +
                     link("Systems/A") + "," + link("Systems/B") + "]");
  has("Systems/A", R"("Boot": {})");
  has("Systems/B", R"("Boot": {})");
  EXPECT_EQ(decide("", Kind::kRoot, "Chassis", kWantDimms), Decision::kEnter);
  awaits(Kind::kChassis);
  EXPECT_EQ(ofSystem("Memory", kWantDimms), Decision::kWait);
}

TEST_F(Policy, ChassisAreLeftWhereThePartsAreClear) {
  EXPECT_EQ(decide("", Kind::kRoot, "Chassis", kWantDimms), Decision::kSkip);
  awaits(Kind::kSystem);
  EXPECT_EQ(decide("", Kind::kRoot, "Chassis", kWantDimms), Decision::kWait);
}

TEST_F(Policy, LinkedChassisIsEnteredBeforeTheOthersCame) {
  has("Chassis/C", R"("Links": {)" +
                       memberList("ComputerSystems", "Systems/S") + "}," +
                       member("Power", "Chassis/C/Power"));
  awaits(Kind::kChassis);
  EXPECT_EQ(ofChassis("Power", kWantPowers), Decision::kEnter);
}

TEST_F(Policy, ChassisWithoutLinksWaitsForTheOthers) {
  awaits(Kind::kChassis);
  EXPECT_EQ(ofChassis("Power", kWantPowers), Decision::kWait);
  state_.waiting = {};
  EXPECT_EQ(ofChassis("Power", kWantPowers), Decision::kEnter);
}

TEST_F(Policy, ChassisOfAnotherNodeIsSkippedInTheEnd) {
  has("Systems/S",
      R"("Links": {)" + memberList("Chassis", "Chassis/Own") + "}");
  has("Chassis/Own");
  EXPECT_EQ(ofChassis("Power", kWantPowers), Decision::kWait);
  EXPECT_EQ(drained([this] { return ofChassis("Power", kWantPowers); }),
            Decision::kSkip);
}

TEST_F(Policy, LinkedChassisWaitsForItsExpandedCollection) {
  has("Systems/S", R"("Links": {)" + memberList("Chassis", "Chassis/C") + "}");
  awaits(Kind::kChassisCollection);
  EXPECT_EQ(ofSystem("Links/Chassis", kWantFans), Decision::kEnter);
  expands();
  EXPECT_EQ(ofSystem("Links/Chassis", kWantFans), Decision::kWait);
}

// The health walk.

TEST_F(Policy, RollUpOfOkKeepsTheWalkOut) {
  has("Systems/S", R"("MemorySummary": {"Status": {"HealthRollup": "OK"}})");
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kSkip);
  EXPECT_EQ(ofSystem("Memory", kWantHealth | kWantDimms), Decision::kEnter);
  EXPECT_EQ(ofSystem("Memory", kWantHealth | kWantThorough), Decision::kEnter);
}

TEST_F(Policy, OtherRollUpsLetTheWalkIn) {
  for (const char* status :
       {R"({"HealthRollup": "Warning"})", R"({"HealthRollup": null})", "{}",
        R"({"HealthRollUp": "Warning", "Health": "OK"})"}) {
    has("Systems/S",
        std::string(R"("MemorySummary": {"Status": )") + status + "}");
    EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kEnter) << status;
  }
}

TEST_F(Policy, UnexplainedHolderHasItsBranchesEntered) {
  has("Systems/S", R"("MemorySummary": {"Status": {"Health": "OK"}})");
  selection_.unexplained = {"/redfish/v1/Systems/S"};
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kEnter);
  selection_.unexplained = {"/redfish/v1/Systems/S2"};
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kSkip);
}

TEST_F(Policy, WalkWaitsForTheListOfConditions) {
  awaits(Kind::kServiceConditions);
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kWait);
  EXPECT_EQ(ofSystem("Memory", kWantDimms), Decision::kEnter);
}

TEST_F(Policy, ListOfConditionsThatSufficesSparesTheWalk) {
  has("", member("Systems", "Systems") + "," + member("Chassis", "Chassis") +
              "," + member("ServiceConditions", "ServiceConditions"));
  has("ServiceConditions", R"("HealthRollup": "OK", "Conditions": [])");
  awaits(Kind::kManager);
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kWait);
  state_.waiting = {};
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kSkip);
  has("ServiceConditions", R"("HealthRollup": "Warning", "Conditions": [])");
  EXPECT_EQ(ofSystem("Memory", kWantHealth), Decision::kEnter);
}

// kNoSpeed

class ProcessorMetrics : public Policy {
 protected:
  Decision metricsOf(const std::string& members) {
    has("Systems/S/Processors/1",
        members + (members.empty() ? "" : ",") + member("Metrics", "M"));
    return decide("Systems/S/Processors/1", Kind::kProcessor, "Metrics",
                  kWantProcessors);
  }
};

TEST_F(ProcessorMetrics, AreReadWhereNoSpeedIsStated) {
  for (const char* none :
       {"", R"("OperatingSpeedMHz": null)", R"("OperatingSpeedMHz": 0)",
        R"("OperatingSpeedMHz": "N/A")", R"("OperatingSpeedMHz": -1)",
        R"("ProcessorType": "CPU")", R"("ProcessorType": null)",
        R"("Oem": {"Maker": {"CurrentClockSpeedMHz": null}})"}) {
    EXPECT_EQ(metricsOf(none), Decision::kEnter) << none;
  }
}

TEST_F(ProcessorMetrics, AreLeftWhereASpeedIsStated) {
  for (const char* speed :
       {R"("OperatingSpeedMHz": 2400)", R"("OperatingSpeedMHz": 2333.5)",
        R"("OperatingSpeedMHz": "2400")",
        R"("Oem": {"Maker": {"CurrentClockSpeedMHz": 3000}})"}) {
    EXPECT_EQ(metricsOf(speed), Decision::kSkip) << speed;
  }
}

TEST_F(ProcessorMetrics, AreLeftForPartsWithoutARow) {
  EXPECT_EQ(metricsOf(R"("ProcessorType": "GPU")"), Decision::kSkip);
  EXPECT_EQ(metricsOf(R"("Status": {"State": "Absent"})"), Decision::kSkip);
}

// kNoNewFans, kNoNewSupplies

struct Model {
  const char* name;
  const char* subsystem;
  const char* parts;
  const char* document;
  std::uint32_t want;
};

class OlderDocument : public Policy, public testing::WithParamInterface<Model> {
 protected:
  void SetUp() override {
    Policy::SetUp();
    has("Chassis/C", member(GetParam().subsystem, "Sub") + "," +
                         member(GetParam().document, "Old"));
  }
  Decision older(std::uint32_t wants) {
    return ofChassis(GetParam().document, wants);
  }
  Decision inTheEnd(std::uint32_t wants) {
    return drained([&] { return older(wants); });
  }
};

INSTANTIATE_TEST_SUITE_P(Models, OlderDocument,
                         testing::Values(Model{"Fans", "ThermalSubsystem",
                                               "Fans", "Thermal", kWantFans},
                                         Model{"Supplies", "PowerSubsystem",
                                               "PowerSupplies", "Power",
                                               kWantPowers}),
                         [](const auto& model) { return model.param.name; });

TEST_P(OlderDocument, IsReadAtOnceWithoutASubsystem) {
  has("Chassis/C", member(GetParam().document, "Old"));
  EXPECT_EQ(older(GetParam().want), Decision::kEnter);
  EXPECT_EQ(older(kWantHealth), Decision::kEnter);
}

TEST_P(OlderDocument, WaitsForTheSubsystem) {
  EXPECT_EQ(older(GetParam().want), Decision::kWait);
}

TEST_P(OlderDocument, StandsInForASubsystemThatIsMissingOrUnreadable) {
  lacks("Sub");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kEnter);
  breaks("Sub");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kEnter);
}

TEST_P(OlderDocument, StandsInForASubsystemWithoutParts) {
  has("Sub");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  has("Sub", member(GetParam().parts, "Parts"));
  lacks("Parts");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  has("Parts", R"("Members": [])");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kEnter);
  has("Parts", memberList("Members", "Part"));
  has("Part", R"("Status": {"State": "Absent"})");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kEnter);
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kEnter);
}

TEST_P(OlderDocument, IsLeftWhereTheSubsystemHasAPart) {
  has("Sub", member(GetParam().parts, "Parts"));
  has("Parts", memberList("Members", "Part"));
  has("Part");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kSkip);
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kSkip);
  breaks("Part");
  EXPECT_EQ(inTheEnd(GetParam().want), Decision::kSkip);
}

TEST_P(OlderDocument, IsLeftWhereThePartsWereNotAskedFor) {
  has("Sub", member(GetParam().parts, "Parts"));
  EXPECT_EQ(inTheEnd(kWantHealth), Decision::kWait);
}

// PCIe devices: kAfterChassisDevices, kNoSystemDevices, kNoChassisDevices,
// kNoReadableDevices

class Devices : public Policy {
 protected:
  void systemNamesDevice() {
    has("Systems/S", memberList("PCIeDevices", "D/1"));
  }
  Decision collection() { return ofChassis("PCIeDevices", kWantPciAdapters); }
  Decision links() { return ofChassis("Links/PCIeDevices", kWantPciAdapters); }
  Decision list() { return ofChassis("Oem/*/Links/Devices", kWantPciAdapters); }
  template <typename Ask>
  Decision inTheEnd(Ask ask) {
    return drained(ask);
  }
  static std::string linksOf(const std::string& path) {
    return R"("Links": {)" + memberList("PCIeDevices", path) + "}";
  }
};

TEST_F(Devices, OfTheSystemAreReadAtOnceWithoutExpanding) {
  systemNamesDevice();
  has("Chassis/C", member("PCIeDevices", "Collection"));
  EXPECT_EQ(ofSystem("PCIeDevices", kWantPciAdapters), Decision::kEnter);
}

TEST_F(Devices, OfTheSystemWaitForTheCheaperCollection) {
  expands();
  systemNamesDevice();
  has("Chassis/C", member("PCIeDevices", "Collection"));
  EXPECT_EQ(ofSystem("PCIeDevices", kWantPciAdapters), Decision::kWait);
  EXPECT_EQ(collection(), Decision::kEnter);
  has("Collection");
  EXPECT_EQ(ofSystem("PCIeDevices", kWantPciAdapters), Decision::kEnter);
}

TEST_F(Devices, CollectionIsReadAtOnceWhereTheSystemNamesNone) {
  EXPECT_EQ(collection(), Decision::kEnter);
}

TEST_F(Devices, CollectionStandsInForDevicesThatDoNotExist) {
  systemNamesDevice();
  EXPECT_EQ(collection(), Decision::kWait);
  lacks("D/1");
  EXPECT_EQ(inTheEnd([this] { return collection(); }), Decision::kEnter);
  breaks("D/1");
  EXPECT_EQ(inTheEnd([this] { return collection(); }), Decision::kSkip);
  has("D/1");
  EXPECT_EQ(inTheEnd([this] { return collection(); }), Decision::kSkip);
}

TEST_F(Devices, LinksAreReadAtOnceWhereNothingElseIsNamed) {
  has("Chassis/C", linksOf("D/1"));
  EXPECT_EQ(links(), Decision::kEnter);
}

TEST_F(Devices, LinksStandInForAnEmptyCollection) {
  has("Chassis/C", member("PCIeDevices", "Collection") + "," + linksOf("D/1"));
  EXPECT_EQ(links(), Decision::kWait);
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kWait);
  has("Collection", R"("Members": [])");
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kEnter);
  breaks("Collection");
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kSkip);
  has("Collection", memberList("Members", "D/2"));
  has("D/2");
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kSkip);
}

TEST_F(Devices, LinksAreLeftWhereTheSystemsDevicesExist) {
  systemNamesDevice();
  has("D/1");
  has("Chassis/C", linksOf("D/2"));
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kSkip);
}

TEST_F(Devices, LinksAreLeftWhereAnotherChassisListsDevices) {
  has("Chassis", R"("Members": [)" + link("Chassis/C") + "," +
                     link("Chassis/Other") + "]");
  has("Chassis/C", linksOf("D/1"));
  has("Chassis/Other", member("PCIeDevices", "Collection"));
  has("Collection", memberList("Members", "D/2"));
  has("D/2");
  EXPECT_EQ(inTheEnd([this] { return links(); }), Decision::kSkip);
}

TEST_F(Devices, MakersListIsReadAtOnceWhereNothingElseIsNamed) {
  EXPECT_EQ(list(), Decision::kEnter);
}

TEST_F(Devices, MakersListStandsInForACollectionThatGivesNothing) {
  has("Chassis/C", member("PCIeDevices", "Collection"));
  EXPECT_EQ(list(), Decision::kWait);
  lacks("Collection");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kEnter);
  has("Collection", R"("Members": [])");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kEnter);
  has("Collection", memberList("Members", "D/1"));
  breaks("D/1");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kEnter);
  has("D/1");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kSkip);
}

TEST_F(Devices, MakersListIsLeftWhereTheLinksNameADevice) {
  has("Chassis/C", linksOf("D/1"));
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kWait);
  has("D/1");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kSkip);
  lacks("D/1");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kEnter);
}

TEST_F(Devices, MakersListIsLeftWhereTheSystemNamesADevice) {
  systemNamesDevice();
  has("D/1");
  EXPECT_EQ(inTheEnd([this] { return list(); }), Decision::kSkip);
}

// kNoChassisAdapters

class Interfaces : public Policy {
 protected:
  Decision read() { return ofSystem("NetworkInterfaces", kWantPciAdapters); }
};

TEST_F(Interfaces, AreReadAtOnceWhereNoChassisLinksAdapters) {
  EXPECT_EQ(read(), Decision::kEnter);
  awaits(Kind::kChassis);
  EXPECT_EQ(read(), Decision::kWait);
}

TEST_F(Interfaces, StandInForAdaptersThatDoNotExist) {
  has("Chassis/C", member("NetworkAdapters", "Adapters"));
  EXPECT_EQ(read(), Decision::kWait);
  has("Adapters", R"("Members": [])");
  EXPECT_EQ(drained([this] { return read(); }), Decision::kEnter);
  lacks("Adapters");
  EXPECT_EQ(drained([this] { return read(); }), Decision::kEnter);
}

TEST_F(Interfaces, AreLeftWhereAChassisHasAnAdapter) {
  has("Chassis/C", member("NetworkAdapters", "Adapters"));
  has("Adapters", memberList("Members", "A/1"));
  has("A/1");
  EXPECT_EQ(drained([this] { return read(); }), Decision::kSkip);
}

// kNoControllerArray

TEST_F(Policy, ControllersAreReadWhereTheArrayIsMissingOrEmpty) {
  for (const char* none :
       {"", R"("StorageControllers": [])", R"("StorageControllers": null)"}) {
    has("Storage/1", none);
    EXPECT_EQ(
        decide("Storage/1", Kind::kStorage, "Controllers", kWantPciAdapters),
        Decision::kEnter)
        << none;
  }
  has("Storage/1", R"("StorageControllers": [{"MemberId": "0"}])");
  EXPECT_EQ(
      decide("Storage/1", Kind::kStorage, "Controllers", kWantPciAdapters),
      Decision::kSkip);
}

// kNoStorage

TEST_F(Policy, SimpleStorageIsReadWhereNoStorageIsLinked) {
  EXPECT_EQ(ofSystem("SimpleStorage", kWantHealth), Decision::kEnter);
  has("Systems/S", member("Storage", "Storage"));
  EXPECT_EQ(ofSystem("SimpleStorage", kWantHealth), Decision::kSkip);
}

// kNoFansSoFar, kNoPowerSoFar

TEST_F(Policy, EnclosureIsAskedInTheEndWhereThereAreNoFans) {
  has("Chassis/C", member("Thermal", "Chassis/C/Thermal"));
  has("Chassis/C/Thermal", R"("Fans": [])");
  const auto climb = [this] {
    return ofChassis("Links/ContainedBy", kWantFans);
  };
  EXPECT_EQ(climb(), Decision::kWait);
  EXPECT_EQ(drained(climb), Decision::kEnter);
  has("Chassis/C/Thermal", R"("Fans": [{"MemberId": "0"}])");
  EXPECT_EQ(drained(climb), Decision::kSkip);
}

TEST_F(Policy, EnclosureIsAskedInTheEndWhereThereAreNoSupplies) {
  has("Chassis/C", member("Power", "Chassis/C/Power"));
  has("Chassis/C/Power", R"("PowerSupplies": [])");
  const auto climb = [this] {
    return ofChassis("Links/ContainedBy", kWantPowers);
  };
  EXPECT_EQ(climb(), Decision::kWait);
  EXPECT_EQ(drained(climb), Decision::kEnter);
  has("Chassis/C/Power", R"("PowerSupplies": [{"MemberId": "0"}])");
  EXPECT_EQ(drained(climb), Decision::kSkip);
}

}  // namespace
}  // namespace redfish
