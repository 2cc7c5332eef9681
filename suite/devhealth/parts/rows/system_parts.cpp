#include "suite/devhealth/parts/rows/system_parts.h"

#include <utility>

#include "suite/devhealth/parts/names/display_name.h"
#include "suite/devhealth/parts/row_order.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;

using Test = bool (*)(const json::object&);

bool isCentral(const json::object& processor) {
  const std::string type = textAt(processor, "ProcessorType");
  return type.empty() || type == "CPU";
}

bool isPresent(const json::object& processor) {
  return !redfish::isAbsent(processor);
}

bool isNoCache(const json::object& memory) {
  return redfish::stringAt(memory, "MemoryType") != "Cache";
}

// Whether a slot holds a module. Services without a Status for empty slots
// tell them by their capacity.
bool holdsModule(const json::object& memory) {
  return isPresent(memory) && (redfish::objectAt(memory, "Status") != nullptr ||
                               numberAt(memory, "CapacityMiB") != 0.0);
}

// The members of a collection of all the node's systems that are of a kind,
// and of those the ones that are there.
std::vector<NamedPart> membersOf(const Graph& graph, const Node& node,
                                 std::string_view collection, Test isKind,
                                 Test isThere, std::string_view type,
                                 NameOrder order, ReadTally& tally) {
  std::vector<Part> parts;
  std::vector<Candidate> candidates;
  for (const redfish::Resource* system : node.systems) {
    const LinkedList list = membersAt(graph, system->body, collection);
    tally.count(list);
    for (const Part& part : list.list.parts()) {
      if (part.object == nullptr) {
        tally.unreadable(part);
      } else {
        tally.read();
        if (!isKind(*part.object)) {
          continue;
        }
      }
      parts.push_back(part);
      candidates.push_back(
          candidateOf(part.uri, part.object, classOfType(type)));
    }
  }
  std::vector<DisplayName> names = displayNames(graph, candidates, order);
  std::vector<NamedPart> rows;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].object == nullptr || isThere(*parts[i].object)) {
      rows.push_back({parts[i], std::move(names[i].text)});
    }
  }
  sortNaturally(rows, &NamedPart::name);
  return rows;
}

}  // namespace

std::vector<NamedPart> centralProcessors(const Graph& graph, const Node& node,
                                         ReadTally& tally) {
  return membersOf(graph, node, "Processors", isCentral, isPresent, "Processor",
                   NameOrder::kNameFirst, tally);
}

std::vector<NamedPart> memoryModules(const Graph& graph, const Node& node,
                                     ReadTally& tally) {
  return membersOf(graph, node, "Memory", isNoCache, holdsModule, "Memory",
                   NameOrder::kPlaceFirst, tally);
}

std::size_t memoryPlaces(const Graph& graph, const Node& node) {
  std::size_t places = 0;
  for (const redfish::Resource* system : node.systems) {
    const LinkedList list = membersAt(graph, system->body, "Memory");
    for (const Part& part : list.list.parts()) {
      if (part.object == nullptr || isNoCache(*part.object)) {
        ++places;
      }
    }
  }
  return places;
}

}  // namespace devhealth
