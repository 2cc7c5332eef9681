// Every resource of a recorded server in turn goes wrong in one way, and all
// that the module relies on still holds.
#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <functional>

#include "suite/devhealth/health/alert_category.h"
#include "suite/devhealth/health/alerts.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/topology.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Resource;

void expectClean(const std::string& text) {
  EXPECT_LE(text.size(), kMaxTextBytes + 64);
  for (const char c : text) {
    EXPECT_FALSE(static_cast<unsigned char>(c) < 0x20 || c == 0x7F) << text;
  }
}

void expectAlertsHold(const Graph& graph, const redfish::Node& node) {
  for (const bool thorough : {false, true}) {
    for (const auto& alert : readAlerts(graph, node, {thorough}).alerts) {
      EXPECT_TRUE(alert.severity == 1 || alert.severity == 2);
      bool known = false;
      for (int index = 0; index <= static_cast<int>(AlertCategory::kOther);
           ++index) {
        known = known || alert.category == categoryName(AlertCategory{index});
      }
      EXPECT_TRUE(known) << alert.category;
      expectClean(alert.message);
      expectClean(alert.messageId);
      expectClean(alert.extra);
    }
  }
}

void expectAllHolds(const Graph& graph) {
  for (const std::uint16_t index : {std::uint16_t{0}, std::uint16_t{1}}) {
    const redfish::Node node = redfish::nodeAt(graph, index);
    if (node.system == nullptr) {
      continue;
    }
    for (const auto& row : mapSystem(graph, node).records) {
      expectClean(row.machineName);
      expectClean(row.machineTypeModel);
      expectClean(row.uuid);
    }
    for (const auto& row : mapProcessors(graph, node).records) {
      expectClean(row.name);
      expectClean(row.family);
    }
    for (const auto& row : mapFans(graph, node).records) {
      expectClean(row.elementName);
      expectClean(row.desiredSpeed);
    }
    for (const auto& row : mapDimms(graph, node).records) {
      expectClean(row.description);
      expectClean(row.model);
    }
    for (const auto& row : mapPowers(graph, node).records) {
      expectClean(row.elementName);
      expectClean(row.totalOutputPower);
    }
    for (const auto& row : mapPciAdapters(graph, node).records) {
      expectClean(row.description);
      expectClean(row.tag);
      expectClean(row.operationalStatus);
      expectClean(row.statusDescriptions);
    }
    expectAlertsHold(graph, node);
  }
}

using Change = std::function<void(Resource&)>;

// Changes each resource of a recorded server in turn.
void changeEach(const std::string& sample, const Change& change) {
  const Graph whole = recordedGraph(std::string(SAMPLES_DIR) + "/" + sample);
  for (const auto& [key, resource] : whole.resources()) {
    SCOPED_TRACE(key);
    Graph graph = whole;
    Resource changed = resource;
    change(changed);
    graph.insert(std::move(changed));
    expectAllHolds(graph);
  }
}

// Replaces every value below a value, the links' texts included.
void replaceAll(redfish::json::value& value,
                const redfish::json::value& replacement) {
  if (redfish::json::object* object = value.if_object()) {
    for (auto& member : *object) {
      replaceAll(member.value(), replacement);
    }
  } else if (redfish::json::array* array = value.if_array()) {
    for (auto& element : *array) {
      replaceAll(element, replacement);
    }
  } else {
    value = replacement;
  }
}

class HostileGraph : public testing::TestWithParam<const char*> {};

TEST_P(HostileGraph, PropertiesOfTheWrongTypeAreHarmless) {
  for (const char* text : {"null", "true", "-1", "1e400", "[]", "{}",
                           "[[[{}]]]", R"("\u0000\u001b]0;\u202e\ufffe")",
                           R"({"@odata.id": "/redfish/v1"})"}) {
    SCOPED_TRACE(text);
    const redfish::json::value replacement = boost::json::parse(text);
    changeEach(GetParam(), [&replacement](Resource& resource) {
      for (auto& member : resource.body) {
        member.value() = replacement;
      }
    });
  }
}

TEST_P(HostileGraph, ValuesOfTheWrongTypeAreHarmless) {
  for (const char* text :
       {"null", "7", R"("\u0007\n%1%%")", "{}", R"("/redfish/v1/Systems/1")"}) {
    SCOPED_TRACE(text);
    const redfish::json::value replacement = boost::json::parse(text);
    changeEach(GetParam(), [&replacement](Resource& resource) {
      for (auto& member : resource.body) {
        replaceAll(member.value(), replacement);
      }
    });
  }
}

TEST_P(HostileGraph, ResourcesThatCannotBeHadAreHarmless) {
  changeEach(GetParam(), [](Resource& resource) {
    resource.body.clear();
    resource.state = redfish::ResourceState::kUnreadable;
  });
  changeEach(GetParam(), [](Resource& resource) {
    resource.body.clear();
    resource.state = redfish::ResourceState::kAbsent;
  });
}

INSTANTIATE_TEST_SUITE_P(Samples, HostileGraph,
                         testing::Values("two-node", "old-schema", "edge"));

}  // namespace
}  // namespace devhealth
