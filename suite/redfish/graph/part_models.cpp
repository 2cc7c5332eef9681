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
  const LinkTarget found = graph.resolve(link);
  if (found.document == nullptr) {
    return false;
  }
  if (found.document->state == ResourceState::kUnreadable) {
    return true;
  }
  return found.object != nullptr && !isAbsent(*found.object);
}

bool chassisHasParts(const Graph& graph, const json::object& chassis,
                     const PartSchema& schema) {
  if (subsystemHasParts(graph, chassis, schema)) {
    return true;
  }
  const LinkTarget old = graph.follow(chassis, schema.document);
  if (old.object == nullptr) {
    return false;
  }
  const json::array* parts = arrayAt(*old.object, schema.array);
  return parts != nullptr &&
         std::any_of(parts->begin(), parts->end(), [](const json::value& part) {
           const json::object* object = part.if_object();
           return object != nullptr && !isAbsent(*object);
         });
}

// Whether a resource says that it is of a type ("#Fan.v1_5_0.Fan").
bool isOfType(const json::object& object, std::string_view type) {
  const std::string_view stated = stringAt(object, "@odata.type");
  return stated.size() > type.size() + 1 && stated.front() == '#' &&
         stated.substr(1, type.size()) == type &&
         stated[type.size() + 1] == '.';
}

bool anySource(const Graph& graph, const std::vector<Uri>& sources,
               const PartSchema& schema) {
  return std::any_of(sources.begin(), sources.end(), [&](const Uri& source) {
    const LinkTarget found = graph.resolve(source);
    if (found.object == nullptr) {
      return false;
    }
    const bool part =
        !source.fragment().empty() || isOfType(*found.object, schema.type);
    return part ? !isAbsent(*found.object)
                : chassisHasParts(graph, *found.object, schema);
  });
}

}  // namespace

bool subsystemHasParts(const Graph& graph, const json::object& chassis,
                       const PartSchema& schema) {
  const LinkTarget holder = graph.follow(chassis, schema.subsystem);
  if (holder.object == nullptr) {
    return false;
  }
  const auto link = linkAt(*holder.object, schema.collection);
  if (!link) {
    return false;
  }
  const LinkTarget collection = graph.resolve(*link);
  if (collection.object == nullptr) {
    return exists(graph, *link);
  }
  return anyLinkAt(*collection.object, "Members",
                   [&](const Uri& member) { return present(graph, member); });
}

bool hasFans(const Graph& graph, const Node& node) {
  return anySource(graph, coolingSources(node), kFanSchema) ||
         anySource(graph, enclosingChassis(graph, node), kFanSchema);
}

bool hasPowerSupplies(const Graph& graph, const Node& node) {
  return anySource(graph, powerSources(node), kPowerSupplySchema) ||
         anySource(graph, enclosingChassis(graph, node), kPowerSupplySchema);
}

bool anyExists(const Graph& graph, const json::object& holder,
               std::string_view path) {
  return anyLinkAt(holder, path,
                   [&](const Uri& link) { return exists(graph, link); });
}

bool anyMemberExists(const Graph& graph, const json::object& holder,
                     std::string_view path) {
  const Resource* collection = graph.follow(holder, path).document;
  if (collection == nullptr) {
    return false;
  }
  return collection->state == ResourceState::kUnreadable ||
         anyExists(graph, collection->body, "Members");
}

}  // namespace redfish
