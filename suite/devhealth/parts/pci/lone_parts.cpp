#include "suite/devhealth/parts/pci/lone_parts.h"

#include <algorithm>
#include <array>
#include <boost/json/array.hpp>
#include <utility>

#include "suite/devhealth/parts/chassis_lists.h"
#include "suite/devhealth/parts/names/same_parts.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Node;
using redfish::Resource;

// Processors that are no part to be pulled out and replaced.
constexpr std::array<std::string_view, 4> kNoAccelerators = {
    "CPU", "Core", "Thread", "Partition"};

// The members of a collection of a system.
std::vector<Part> systemMembers(const Graph& graph, const Resource& system,
                                std::string_view path, ReadTally& tally) {
  const LinkedList list = membersAt(graph, system.body, path);
  tally.count(list);
  return list.list.parts();
}

// Why none of some parts that were read on the way to others can be had.
void countAll(const std::vector<Part>& parts, ReadTally& tally) {
  ReadTally own;
  for (const Part& part : parts) {
    own.count(part);
  }
  if (const auto failure = own.verdict()) {
    tally.fail(*failure);
  }
}

class LoneParts {
 public:
  LoneParts(const Graph& graph, const Node& node, ReadTally& tally)
      : graph_(graph), node_(node), tally_(tally), same_(node) {}

  std::vector<PciPart> collect() {
    addAdapters();
    for (const Resource* system : node_.systems) {
      addProcessors(*system);
      addControllers(*system);
    }
    return std::move(parts_);
  }

 private:
  void addAdapters() {
    const ChassisLists lists(graph_, node_, "NetworkAdapters");
    lists.reportFailures(tally_);
    for (const Part& part : lists.parts()) {
      addAdapter(part);
    }
    if (!lists.parts().empty()) {
      return;
    }
    for (const Resource* system : node_.systems) {
      addAdaptersOfInterfaces(*system);
    }
  }

  void addAdaptersOfInterfaces(const Resource& system) {
    const auto interfaces =
        systemMembers(graph_, system, "NetworkInterfaces", tally_);
    countAll(interfaces, tally_);
    PartList adapters;
    for (const Part& part : interfaces) {
      if (part.object == nullptr) {
        continue;
      }
      for (const std::string_view path :
           {"Links/NetworkAdapter", "NetworkAdapter"}) {
        const auto link = redfish::linkAt(*part.object, path);
        if (link && graph_.find(link->document()) != nullptr) {
          adapters.addLinked(graph_, *link);
        }
        tally_.refused(refusedLinksAt(*part.object, path));
      }
    }
    for (const Part& part : adapters.parts()) {
      addAdapter(part);
    }
  }

  void addAdapter(const Part& part) {
    tally_.count(part);
    if (part.object == nullptr ||
        same_.add("NetworkAdapter", part.uri, *part.object) == nullptr) {
      add(PciKind::kAdapter, part);
    }
  }

  void addProcessors(const Resource& system) {
    const auto processors = systemMembers(graph_, system, "Processors", tally_);
    countAll(processors, tally_);
    for (const Part& part : processors) {
      // One that cannot be read has its row among the processors.
      if (part.object == nullptr) {
        continue;
      }
      const std::string type = textAt(*part.object, "ProcessorType");
      if (!type.empty() &&
          std::find(kNoAccelerators.begin(), kNoAccelerators.end(), type) ==
              kNoAccelerators.end()) {
        add(PciKind::kProcessor, part);
      }
    }
  }

  void addControllers(const Resource& system) {
    const auto storages = systemMembers(graph_, system, "Storage", tally_);
    countAll(storages, tally_);
    for (const Part& storage : storages) {
      if (storage.object != nullptr) {
        addControllersOf(storage);
      }
    }
  }

  void addControllersOf(const Part& storage) {
    const Resource* document = graph_.find(storage.uri.document());
    PartList entries;
    if (document != nullptr && storage.uri.fragment().empty()) {
      entries = entriesAt(*document, "StorageControllers");
    }
    std::vector<Part> controllers = entries.parts();
    if (controllers.empty()) {
      const auto link = redfish::linkAt(*storage.object, "Controllers");
      if (link && graph_.find(link->document()) == nullptr) {
        return;
      }
      const LinkedList members =
          membersAt(graph_, *storage.object, "Controllers");
      tally_.count(members);
      controllers = members.list.parts();
    }
    for (const Part& part : controllers) {
      tally_.count(part);
      if (part.object == nullptr || hasIdentity(*part.object)) {
        add(PciKind::kController, part);
        parts_.back().storage = storage.object;
        parts_.back().onlyController = controllers.size() == 1;
      }
    }
  }

  void add(PciKind kind, const Part& part) {
    PciPart lone;
    lone.kind = kind;
    lone.part = part;
    parts_.push_back(std::move(lone));
  }

  const Graph& graph_;
  const Node& node_;
  ReadTally& tally_;
  SameParts same_;
  std::vector<PciPart> parts_;
};

}  // namespace

std::vector<PciPart> loneParts(const Graph& graph, const Node& node,
                               ReadTally& tally) {
  return LoneParts(graph, node, tally).collect();
}

}  // namespace devhealth
