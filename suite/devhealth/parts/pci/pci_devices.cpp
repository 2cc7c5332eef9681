#include "suite/devhealth/parts/pci/pci_devices.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "suite/devhealth/parts/chassis_lists.h"
#include "suite/devhealth/parts/names/same_parts.h"
#include "suite/devhealth/parts/value.h"

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

// Parts of the wire, and batteries, rather than adapters.
bool isNoAdapter(const PciPart& part) {
  if (part.part.object == nullptr) {
    return false;
  }
  const std::string_view type =
      redfish::stringAt(*part.part.object, "DeviceType");
  return type == "Retimer" || type == "Simulated" ||
         (part.kind == PciKind::kListed &&
          type.find("Battery") != std::string_view::npos);
}

PartList linkedBy(const Graph& graph,
                  const std::vector<const Resource*>& holders,
                  std::string_view path, ReadTally& tally) {
  PartList list;
  for (const Resource* holder : holders) {
    for (const Uri& link : redfish::linksAt(holder->body, path)) {
      list.addLinked(graph, link);
    }
    tally.refused(refusedLinksAt(holder->body, path));
  }
  return list;
}

bool anyRead(const std::vector<Part>& parts) {
  return std::any_of(parts.begin(), parts.end(),
                     [](const Part& part) { return part.object != nullptr; });
}

// The lists of devices that makers link in a format of their own.
std::vector<Part> listedByMakers(const Graph& graph, const Node& node,
                                 ReadTally& tally) {
  PartList all;
  for (const Resource* chassis : node.chassis) {
    for (const json::object* own : makersObjects(chassis->body)) {
      const auto link = redfish::linkAt(*own, "Links/Devices");
      if (link && graph.find(link->document()) == nullptr) {
        continue;
      }
      const LinkedList list = membersAt(graph, *own, "Links/Devices");
      tally.count(list);
      for (const Part& part : list.list.parts()) {
        all.add(part);
      }
    }
  }
  return all.parts();
}

// What the chassis list, and whether it is a maker's own list.
std::vector<Part> listedByChassis(const Graph& graph, const Node& node,
                                  ReadTally& tally, bool& listed) {
  const ChassisLists lists(graph, node, "PCIeDevices");
  const std::vector<Part>& own = lists.parts();
  std::vector<Part> parts = own;
  if (parts.empty()) {
    parts = linkedBy(graph, node.chassis, "Links/PCIeDevices", tally).parts();
  }
  if (!anyRead(parts)) {
    std::vector<Part> others = listedByMakers(graph, node, tally);
    if (!others.empty()) {
      parts = std::move(others);
      listed = true;
    }
  }
  // Another list makes up for collections that cannot be read, but a part of
  // the collections does not make up for the rest.
  if (parts.empty() || (!listed && !own.empty())) {
    lists.reportFailures(tally);
  }
  parts.erase(std::remove_if(parts.begin(), parts.end(),
                             [&node](const Part& part) {
                               return part.object != nullptr &&
                                      isOthers(node, *part.object);
                             }),
              parts.end());
  return parts;
}

}  // namespace

std::vector<PciPart> pciDevices(const Graph& graph, const Node& node,
                                ReadTally& tally) {
  bool listed = false;
  std::vector<Part> parts =
      linkedBy(graph, node.systems, "PCIeDevices", tally).parts();
  if (parts.empty()) {
    parts = listedByChassis(graph, node, tally, listed);
  }
  SameParts same(node);
  std::vector<PciPart> devices;
  for (const Part& part : parts) {
    PciPart device;
    device.kind = listed ? PciKind::kListed : PciKind::kDevice;
    device.part = part;
    tally.count(part);
    const bool repeated =
        part.object != nullptr &&
        same.add("PCIeDevice", part.uri, *part.object) != nullptr;
    if (!repeated && !isNoAdapter(device)) {
      devices.push_back(std::move(device));
    }
  }
  return devices;
}

}  // namespace devhealth
