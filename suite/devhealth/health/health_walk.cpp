#include "suite/devhealth/health/health_walk.h"

#include <algorithm>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/part_models.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using base::Failure;
using redfish::Graph;
using redfish::Node;
using redfish::PartSchema;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

bool allAskedFor(const Graph& graph, const std::vector<Uri>& links) {
  return std::all_of(links.begin(), links.end(), [&graph](const Uri& link) {
    return graph.find(link.document()) != nullptr;
  });
}

// Whether the collection at a path was asked for, with all its members.
bool isEntered(const Graph& graph, const json::object& holder,
               std::string_view path) {
  const auto link = redfish::linkAt(holder, path);
  if (!link) {
    return true;
  }
  const Resource* collection = graph.find(link->document());
  return collection != nullptr &&
         allAskedFor(graph, redfish::linksAt(collection->body, "Members"));
}

bool isStorageEntered(const Graph& graph, const json::object& storage) {
  return isEntered(graph, storage, "Controllers") &&
         isEntered(graph, storage, "Volumes") &&
         allAskedFor(graph, redfish::linksAt(storage, "Drives"));
}

// Tells a tally what became of the resources behind some links.
void count(const Graph& graph, const std::vector<Uri>& links,
           ReadTally& tally) {
  for (const Uri& link : links) {
    const Resource* resource = graph.find(link.document());
    if (resource == nullptr) {
      continue;
    }
    if (resource->state == ResourceState::kRead) {
      tally.read();
    }
    if (resource->state == ResourceState::kUnreadable) {
      tally.unreadable({link, nullptr, resource->why()});
    }
  }
}

// Collects the first failure of the lists that a walk needs.
class Check {
 public:
  explicit Check(const Graph& graph) : graph_(graph) {}

  // The resource behind a link; null when it was not read. One that cannot be
  // read is a failure.
  const json::object* document(const json::object& holder,
                               std::string_view path) {
    const Resource* resource = graph_.follow(holder, path).document;
    if (resource == nullptr) {
      return nullptr;
    }
    if (resource->state == ResourceState::kUnreadable) {
      fail(failureOf(resource->uri, resource->why()));
    }
    return resource->state == ResourceState::kRead ? &resource->body : nullptr;
  }

  void links(const json::object& holder, std::string_view path) {
    ReadTally tally;
    count(graph_, redfish::linksAt(holder, path), tally);
    if (const auto failure = tally.verdict()) {
      fail(*failure);
    }
    if (!failures_.gap) {
      failures_.gap = tally.gap();
    }
  }

  void collection(const json::object& holder, std::string_view path) {
    if (const json::object* list = document(holder, path)) {
      links(*list, "Members");
    }
  }

  // A subsystem and the older document that stands in for it.
  void subsystem(const json::object& chassis, const PartSchema& schema,
                 std::string_view more) {
    const Resource* old = graph_.follow(chassis, schema.document).document;
    if (old != nullptr && old->state == ResourceState::kRead) {
      return;
    }
    static_cast<void>(document(chassis, schema.document));
    if (const json::object* body = document(chassis, schema.subsystem)) {
      collection(*body, schema.collection);
      if (!more.empty()) {
        collection(*body, more);
      }
    }
  }

  void fail(Failure failure) {
    if (!failures_.failure) {
      failures_.failure = std::move(failure);
    }
  }

  WalkFailures take() { return std::move(failures_); }

 private:
  const Graph& graph_;
  WalkFailures failures_;
};

void addSkippedOfSystem(const Graph& graph, const Resource& system,
                        std::set<std::string>& skipped) {
  if (!isEntered(graph, system.body, "Processors") ||
      !isEntered(graph, system.body, "Memory")) {
    skipped.insert(system.uri.document());
  }
  const json::object* all = graph.follow(system.body, "Storage").object;
  if (all == nullptr) {
    return;
  }
  for (const Uri& link : redfish::linksAt(*all, "Members")) {
    const json::object* storage = graph.resolve(link).object;
    if (storage != nullptr && !isStorageEntered(graph, *storage)) {
      skipped.insert(link.document());
    }
  }
}

void addSkippedOfChassis(const Graph& graph, const Resource& chassis,
                         std::set<std::string>& skipped) {
  struct Branch {
    std::string_view subsystem;
    std::string_view collection;
  };
  for (const Branch& branch : {Branch{"ThermalSubsystem", "Fans"},
                               Branch{"PowerSubsystem", "Batteries"}}) {
    const redfish::LinkTarget found =
        graph.follow(chassis.body, branch.subsystem);
    if (found.object != nullptr &&
        !isEntered(graph, *found.object, branch.collection)) {
      skipped.insert(found.document->uri.document());
    }
  }
}

void checkSystem(const Graph& graph, const json::object& system, Check& check) {
  check.collection(system, "Processors");
  check.collection(system, "Memory");
  check.links(system, "PCIeDevices");
  check.collection(system, "NetworkInterfaces");
  check.collection(system, "SimpleStorage");
  const json::object* all = check.document(system, "Storage");
  if (all == nullptr) {
    return;
  }
  check.links(*all, "Members");
  for (const Uri& link : redfish::linksAt(*all, "Members")) {
    const json::object* storage = graph.resolve(link).object;
    if (storage == nullptr) {
      continue;
    }
    check.collection(*storage, "Controllers");
    check.collection(*storage, "Volumes");
    check.links(*storage, "Drives");
  }
}

}  // namespace

void addSkippedOfNode(const Graph& graph, const Node& node,
                      std::set<std::string>& skipped) {
  for (const Resource* system : node.systems) {
    addSkippedOfSystem(graph, *system, skipped);
  }
  for (const Resource* chassis : node.chassis) {
    addSkippedOfChassis(graph, *chassis, skipped);
  }
}

WalkFailures walkFailures(const Graph& graph, const Node& node) {
  Check check(graph);
  if (auto failure = chassisFailure(graph, node)) {
    check.fail(*failure);
  }
  for (const Resource* system : node.systems) {
    checkSystem(graph, system->body, check);
  }
  for (const Resource* chassis : node.chassis) {
    check.subsystem(chassis->body, redfish::kFanSchema, "");
    check.subsystem(chassis->body, redfish::kPowerSupplySchema, "Batteries");
    check.collection(chassis->body, "PCIeDevices");
    check.collection(chassis->body, "NetworkAdapters");
    for (const json::object* own : makersObjects(chassis->body)) {
      check.collection(*own, "Links/Devices");
    }
  }
  return check.take();
}

}  // namespace devhealth
