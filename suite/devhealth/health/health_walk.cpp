#include "suite/devhealth/health/health_walk.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <utility>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/part_models.h"
#include "suite/redfish/graph/status.h"

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

// Whether the collection at a path was asked for, with all its members. One
// whose link is refused was not.
bool isEntered(const Graph& graph, const json::object& holder,
               std::string_view path) {
  const auto link = redfish::linkAt(holder, path);
  if (!link) {
    return !refusedLinkAt(holder, path);
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

// Collects the first failure of the lists that a walk needs, and the first gap
// in them.
class Check {
 public:
  explicit Check(const Graph& graph) : graph_(graph) {}

  // The resource behind a link; null when it was not read. One that cannot be
  // read is a failure, and so is a refused link to one that is needed.
  const json::object* document(const json::object& holder,
                               std::string_view path, bool needed) {
    if (const auto refused = refusedLinkAt(holder, path)) {
      if (needed) {
        fail(*refused);
      }
      return nullptr;
    }
    const Resource* resource = graph_.follow(holder, path).document;
    if (resource == nullptr) {
      return nullptr;
    }
    if (resource->state == ResourceState::kUnreadable) {
      fail(failureOf(resource->uri, resource->why()));
    }
    return resource->state == ResourceState::kRead ? &resource->body : nullptr;
  }

  // The resources behind links. Refused links count where they are needed.
  void links(const json::object& holder, std::string_view path, bool needed) {
    const ReadTally tally = tallyOf(holder, path, needed);
    if (const auto failure = tally.verdict()) {
      fail(*failure);
    }
    gap(tally.gap());
  }

  // Links without which the walk is worth something still.
  void extras(const json::object& holder, std::string_view path) {
    gap(tallyOf(holder, path, true).gap());
  }

  void collection(const json::object& holder, std::string_view path,
                  bool needed) {
    if (const json::object* list = document(holder, path, needed)) {
      links(*list, "Members", true);
    }
  }

  void fail(Failure failure) {
    if (!failures_.failure) {
      failures_.failure = std::move(failure);
    }
  }

  void gap(std::optional<Failure> gap) {
    if (!failures_.gap) {
      failures_.gap = std::move(gap);
    }
  }

  WalkFailures take() { return std::move(failures_); }

 private:
  ReadTally tallyOf(const json::object& holder, std::string_view path,
                    bool refused) const {
    ReadTally tally;
    count(graph_, redfish::linksAt(holder, path), tally);
    if (refused) {
      tally.refused(refusedLinksAt(holder, path));
    }
    return tally;
  }

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

// Looks at all that the plan of the walk has for a node.
class Walk {
 public:
  Walk(const Graph& graph, const Node& node, const WalkExtent& extent)
      : graph_(graph), node_(node), extent_(extent), check_(graph) {}

  WalkFailures failures() {
    if (auto failure = chassisFailure(graph_, node_)) {
      check_.fail(*failure);
    }
    ReadTally chassis;
    countChassis(graph_, node_, chassis);
    check_.gap(chassis.gap());
    for (const Resource* system : node_.systems) {
      checkSystem(*system);
    }
    for (const Resource* one : node_.chassis) {
      checkChassis(one->body);
    }
    for (const PartSchema& schema :
         {redfish::kFanSchema, redfish::kPowerSupplySchema}) {
      checkSources(schema);
    }
    checkDevices();
    checkAdapters();
    checkManagers();
    return check_.take();
  }

 private:
  // Whether a branch of a resource was to be entered, whatever its roll-up
  // says.
  bool isWanted(const Uri& resource) const {
    return extent_.thorough ||
           redfish::liesWithinAny(resource.document(), extent_.unexplained);
  }

  // The same for a branch with a roll-up, which keeps the walk out when it is
  // OK.
  bool isWanted(const Uri& resource, const json::object& body,
                std::string_view rollup) const {
    return redfish::rollup(body, rollup) != redfish::Health::kOk ||
           isWanted(resource);
  }

  void checkSystem(const Resource& resource) {
    const json::object& system = resource.body;
    check_.collection(
        system, "Processors",
        isWanted(resource.uri, system, "ProcessorSummary/Status"));
    check_.collection(system, "Memory",
                      isWanted(resource.uri, system, "MemorySummary/Status"));
    check_.collection(system, "SimpleStorage",
                      !anyOf(node_.systems, [](const json::object& one) {
                        return redfish::linkAt(one, "Storage").has_value();
                      }));
    const json::object* all = check_.document(system, "Storage", true);
    if (all == nullptr) {
      return;
    }
    check_.links(*all, "Members", true);
    for (const Uri& link : redfish::linksAt(*all, "Members")) {
      if (const json::object* storage = graph_.resolve(link).object) {
        checkStorage(link, *storage);
      }
    }
  }

  void checkStorage(const Uri& link, const json::object& storage) {
    const bool wanted = isWanted(link, storage, "Status");
    const json::array* array = redfish::arrayAt(storage, "StorageControllers");
    check_.collection(storage, "Controllers",
                      wanted && (array == nullptr || array->empty()));
    check_.collection(storage, "Volumes", wanted);
    check_.links(storage, "Drives", wanted);
  }

  void checkChassis(const json::object& chassis) {
    checkSubsystem(chassis, redfish::kFanSchema);
    checkSubsystem(chassis, redfish::kPowerSupplySchema);
  }

  // A subsystem and the older document that stands in for it.
  void checkSubsystem(const json::object& chassis, const PartSchema& schema) {
    const Resource* old = graph_.follow(chassis, schema.document).document;
    if (redfish::isRead(old)) {
      return;
    }
    const redfish::LinkTarget found = graph_.follow(chassis, schema.subsystem);
    const json::object* body = check_.document(chassis, schema.subsystem, true);
    static_cast<void>(check_.document(chassis, schema.document,
                                      isDocumentNeeded(chassis, schema, body)));
    if (body == nullptr) {
      return;
    }
    const bool wanted = isWanted(found.document->uri, *body, "Status");
    const bool fans = schema.type == redfish::kFanSchema.type;
    check_.collection(*body, schema.collection, !fans || wanted);
    if (!fans) {
      check_.collection(*body, "Batteries", wanted);
    }
  }

  // Whether the older document was to be asked for, too: the subsystem has no
  // parts, as far as it was entered.
  bool isDocumentNeeded(const json::object& chassis, const PartSchema& schema,
                        const json::object* subsystem) const {
    if (subsystem == nullptr) {
      return true;
    }
    const auto parts = redfish::linkAt(*subsystem, schema.collection);
    return !(parts && graph_.find(parts->document()) == nullptr) &&
           !redfish::subsystemHasParts(graph_, chassis, schema);
  }

  void checkSources(const PartSchema& schema) {
    ReadTally tally;
    countSources(node_, schema, tally);
    check_.gap(tally.gap());
  }

  // Devices that the systems name, those of the chassis, and lists of makers:
  // the first that brings something stands in for the others.
  void checkDevices() {
    constexpr std::string_view kDevices = "PCIeDevices";
    constexpr std::string_view kLinked = "Links/PCIeDevices";
    const bool ofSystem = anyOf(node_.systems, [&](const json::object& system) {
      return redfish::anyExists(graph_, system, kDevices);
    });
    const bool ofChassis =
        anyOf(node_.chassis, [&](const json::object& chassis) {
          return redfish::anyMemberExists(graph_, chassis, kDevices);
        });
    const bool linked = anyOf(node_.chassis, [&](const json::object& chassis) {
      return redfish::anyExists(graph_, chassis, kLinked);
    });
    for (const Resource* system : node_.systems) {
      check_.links(system->body, kDevices, ofSystem || !(ofChassis || linked));
      check_.extras(system->body, kDevices);
    }
    for (const Resource* chassis : node_.chassis) {
      check_.collection(chassis->body, kDevices, !ofSystem);
      if (!ofSystem && !ofChassis) {
        check_.extras(chassis->body, kLinked);
      }
      for (const json::object* own : makersObjects(chassis->body)) {
        check_.collection(*own, "Links/Devices",
                          !ofSystem && !ofChassis && !linked);
      }
    }
  }

  void checkAdapters() {
    constexpr std::string_view kAdapters = "NetworkAdapters";
    constexpr std::string_view kInterfaces = "NetworkInterfaces";
    for (const Resource* chassis : node_.chassis) {
      check_.collection(chassis->body, kAdapters, true);
    }
    const bool ofChassis =
        anyOf(node_.chassis, [&](const json::object& chassis) {
          return redfish::anyMemberExists(graph_, chassis, kAdapters);
        });
    for (const Resource* system : node_.systems) {
      check_.collection(system->body, kInterfaces, !ofChassis);
      const json::object* all = graph_.follow(system->body, kInterfaces).object;
      if (ofChassis || all == nullptr) {
        continue;
      }
      for (const Uri& link : redfish::linksAt(*all, "Members")) {
        if (const json::object* own = graph_.resolve(link).object) {
          check_.extras(*own, "Links/NetworkAdapter");
          check_.extras(*own, "NetworkAdapter");
        }
      }
    }
  }

  void checkManagers() {
    for (const Resource* system : node_.systems) {
      check_.extras(system->body, "Links/ManagedBy");
    }
    const Resource* root = redfish::serviceRoot(graph_);
    if (node_.managers.empty() && root != nullptr) {
      ReadTally tally;
      tally.count(membersAt(graph_, root->body, "Managers"));
      const auto failure = tally.verdict();
      check_.gap(failure ? failure : tally.gap());
    }
  }

  template <typename Test>
  static bool anyOf(const std::vector<const Resource*>& resources, Test test) {
    return std::any_of(
        resources.begin(), resources.end(),
        [&test](const Resource* one) { return test(one->body); });
  }

  const Graph& graph_;
  const Node& node_;
  const WalkExtent& extent_;
  Check check_;
};

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

WalkFailures walkFailures(const Graph& graph, const Node& node,
                          const WalkExtent& extent) {
  return Walk(graph, node, extent).failures();
}

}  // namespace devhealth
