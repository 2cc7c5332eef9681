#include "suite/devhealth/inventory/pci_devices.h"

#include <algorithm>
#include <unordered_set>

#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;
using redfish::Resource;
using redfish::Uri;

// Whether a device that a chassis lists belongs to a node beside this one.
bool isOthers(const Node& node, const json::object& device) {
  if (node.alone) {
    return false;
  }
  const auto chassis = redfish::linksAt(device, "Links/Chassis");
  const auto isOwn = [&node](const Uri& link) {
    return std::any_of(node.chassis.begin(), node.chassis.end(),
                       [&link](const Resource* own) {
                         return own->uri.document() == link.document();
                       });
  };
  return !chassis.empty() &&
         std::none_of(chassis.begin(), chassis.end(), isOwn);
}

// Parts of the wire rather than adapters.
bool isNoAdapter(const json::object& device) {
  const std::string_view type = redfish::stringAt(device, "DeviceType");
  return type == "Retimer" || type == "Simulated";
}

// The members of one collection of every chassis.
class ChassisLists {
 public:
  ChassisLists(const Graph& graph, const Node& node,
               std::string_view collection) {
    for (const Resource* chassis : node.chassis) {
      lists_.push_back(membersAt(graph, chassis->body, collection));
    }
  }

  std::vector<Part> parts() const {
    std::vector<Part> all;
    std::unordered_set<std::string> seen;
    for (const LinkedList& list : lists_) {
      for (const Part& part : list.list.parts()) {
        if (seen.insert(part.uri.identity()).second) {
          all.push_back(part);
        }
      }
    }
    return all;
  }

  void tellFailures(ReadTally& tally) const {
    for (const LinkedList& list : lists_) {
      if (list.failure) {
        tally.fail(*list.failure);
      }
    }
  }

 private:
  std::vector<LinkedList> lists_;
};

std::vector<Part> namedBySystem(const Graph& graph, const Node& node) {
  PartList list;
  for (const Uri& link : redfish::linksAt(node.system->body, "PCIeDevices")) {
    list.addLinked(graph, link);
  }
  return list.parts();
}

std::vector<Part> linkedByChassis(const Graph& graph, const Node& node) {
  PartList list;
  for (const Resource* chassis : node.chassis) {
    for (const Uri& link :
         redfish::linksAt(chassis->body, "Links/PCIeDevices")) {
      list.addLinked(graph, link);
    }
  }
  return list.parts();
}

std::vector<Part> listedByChassis(const Graph& graph, const Node& node,
                                  ReadTally& tally) {
  const ChassisLists lists(graph, node, "PCIeDevices");
  std::vector<Part> parts = lists.parts();
  if (parts.empty()) {
    parts = linkedByChassis(graph, node);
  }
  // What the older links name makes up for lists that cannot be read, but a
  // part of the lists does not make up for the rest.
  if (parts.empty() || !lists.parts().empty()) {
    lists.tellFailures(tally);
  }
  parts.erase(std::remove_if(parts.begin(), parts.end(),
                             [&node](const Part& part) {
                               return part.object != nullptr &&
                                      isOthers(node, *part.object);
                             }),
              parts.end());
  return parts;
}

// The parts that make rows; all of them are told to the tally.
std::vector<Part> present(std::vector<Part> parts, ReadTally& tally) {
  std::vector<Part> rows;
  for (Part& part : parts) {
    if (part.object == nullptr) {
      tally.unreadable(part);
    } else {
      tally.read();
      if (redfish::isAbsent(*part.object) || isNoAdapter(*part.object)) {
        continue;
      }
    }
    rows.push_back(std::move(part));
  }
  return rows;
}

}  // namespace

std::vector<Part> pciDevices(const Graph& graph, const Node& node,
                             ReadTally& tally) {
  std::vector<Part> parts = namedBySystem(graph, node);
  if (parts.empty()) {
    parts = listedByChassis(graph, node, tally);
  }
  return present(std::move(parts), tally);
}

std::vector<Part> networkAdapters(const Graph& graph, const Node& node,
                                  ReadTally& tally) {
  const ChassisLists lists(graph, node, "NetworkAdapters");
  lists.tellFailures(tally);
  return present(lists.parts(), tally);
}

}  // namespace devhealth
