// Every resource of a recorded server in turn goes wrong in one way, and all
// that the module relies on still holds.
#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <functional>
#include <set>

#include "suite/devhealth/health/alerts.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/fields.h"
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

// All texts of a part are clean, its numbers no negative ones.
template <typename Part>
void expectHolds(const Part& part) {
  report::forEachField(part, [](std::string_view name, const auto& value) {
    using Value = std::decay_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, std::string>) {
      expectClean(value);
    } else if constexpr (std::is_same_v<Value, std::optional<double>> ||
                         std::is_same_v<Value, std::optional<std::int64_t>>) {
      EXPECT_FALSE(value && *value < 0) << name;
    }
  });
}

// The same of a table, whose parts have an identifier each, which no other
// has.
template <typename Part>
void expectTableHolds(const Mapped<Part>& table) {
  std::set<std::string> ids;
  for (const Part& part : table.records) {
    expectHolds(part);
    EXPECT_FALSE(part.id.empty());
    EXPECT_TRUE(ids.insert(part.id).second) << part.id;
  }
}

void expectEventsHold(const Graph& graph, const redfish::Node& node) {
  for (const bool thorough : {false, true}) {
    for (const auto& event :
         readEvents(graph, redfish::Topology(graph), node, {thorough, {}})
             .events) {
      EXPECT_TRUE(event.severity == report::Health::kWarning ||
                  event.severity == report::Health::kError);
      EXPECT_LT(static_cast<std::size_t>(event.category), report::kCategories);
      expectHolds(event);
      expectClean(printed(event).extra);
    }
  }
}

void expectAllHolds(const Graph& graph) {
  for (const std::uint16_t index : {std::uint16_t{0}, std::uint16_t{1}}) {
    const redfish::Node node = redfish::Topology(graph).node(index);
    if (node.system == nullptr) {
      continue;
    }
    for (const report::System& system : mapSystem(graph, node).records) {
      expectHolds(system);
    }
    expectTableHolds(mapProcessors(graph, node));
    expectTableHolds(mapFans(graph, node));
    expectTableHolds(mapDimms(graph, node));
    expectTableHolds(mapPowers(graph, node));
    const auto adapters = mapPciAdapters(graph, node);
    expectTableHolds(adapters);
    for (const report::PciAdapter& adapter : adapters.records) {
      expectClean(adapter.stateText);
      expectClean(adapter.statusText);
    }
    expectEventsHold(graph, node);
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
