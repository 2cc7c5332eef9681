#include "suite/redfish/graph/part_models.h"

#include <algorithm>

#include "suite/redfish/graph/status.h"

namespace redfish {
namespace {

bool exists(const Graph& graph, const Uri& link) {
  const Resource* resource = graph.find(link.document());
  return resource != nullptr && resource->state != ResourceState::kAbsent;
}

// Whether a part is there: it exists and does not say that it is absent.
bool present(const Graph& graph, const Uri& link) {
  const Found found = graph.resolve(link);
  if (found.document == nullptr) {
    return false;
  }
  if (found.document->state == ResourceState::kUnreadable) {
    return true;
  }
  return found.object != nullptr && !isAbsent(*found.object);
}

// Names of the links by which a chassis leads to its parts.
struct Model {
  std::string_view subsystem;
  std::string_view parts;
  std::string_view oldDocument;
  std::string_view oldParts;
  std::string_view partType;
};

constexpr Model kCooling{"ThermalSubsystem", "Fans", "Thermal", "Fans",
                         "#Fan."};
constexpr Model kPower{"PowerSubsystem", "PowerSupplies", "Power",
                       "PowerSupplies", "#PowerSupply."};

bool chassisHasParts(const Graph& graph, const json::object& chassis,
                     const Model& model) {
  if (subsystemHasParts(graph, chassis, model.subsystem, model.parts)) {
    return true;
  }
  const Found old = graph.follow(chassis, model.oldDocument);
  if (old.object == nullptr) {
    return false;
  }
  const json::array* parts = arrayAt(*old.object, model.oldParts);
  return parts != nullptr &&
         std::any_of(parts->begin(), parts->end(), [](const json::value& part) {
           const json::object* object = part.if_object();
           return object != nullptr && !isAbsent(*object);
         });
}

bool anySource(const Graph& graph, const std::vector<Uri>& sources,
               const Model& model) {
  return std::any_of(sources.begin(), sources.end(), [&](const Uri& source) {
    const Found found = graph.resolve(source);
    if (found.object == nullptr) {
      return false;
    }
    const std::string_view type = stringAt(*found.object, "@odata.type");
    const bool part = !source.fragment().empty() ||
                      type.substr(0, model.partType.size()) == model.partType;
    return part ? !isAbsent(*found.object)
                : chassisHasParts(graph, *found.object, model);
  });
}

}  // namespace

bool subsystemHasParts(const Graph& graph, const json::object& chassis,
                       std::string_view subsystem, std::string_view parts) {
  const Found holder = graph.follow(chassis, subsystem);
  if (holder.object == nullptr) {
    return false;
  }
  const auto link = linkAt(*holder.object, parts);
  if (!link) {
    return false;
  }
  const Found collection = graph.resolve(*link);
  if (collection.object == nullptr) {
    return exists(graph, *link);
  }
  const auto members = linksAt(*collection.object, "Members");
  return std::any_of(members.begin(), members.end(),
                     [&](const Uri& member) { return present(graph, member); });
}

bool hasFans(const Graph& graph, const Node& node) {
  return anySource(graph, coolingSources(node), kCooling) ||
         anySource(graph, enclosingChassis(graph, node), kCooling);
}

bool hasPowerSupplies(const Graph& graph, const Node& node) {
  return anySource(graph, powerSources(node), kPower) ||
         anySource(graph, enclosingChassis(graph, node), kPower);
}

bool anyExists(const Graph& graph, const json::object& holder,
               std::string_view path) {
  const auto links = linksAt(holder, path);
  return std::any_of(links.begin(), links.end(),
                     [&](const Uri& link) { return exists(graph, link); });
}

}  // namespace redfish
