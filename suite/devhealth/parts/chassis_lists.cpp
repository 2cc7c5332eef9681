#include "suite/devhealth/parts/chassis_lists.h"

#include <utility>

namespace devhealth {

ChassisLists::ChassisLists(const redfish::Graph& graph,
                           const redfish::Node& node,
                           std::string_view collection) {
  for (const redfish::Resource* chassis : node.chassis) {
    LinkedList list = membersAt(graph, chassis->body, collection);
    for (const Part& part : list.list.parts()) {
      all_.add(part);
    }
    lists_.push_back(std::move(list));
  }
}

void ChassisLists::reportFailures(ReadTally& tally) const {
  for (const LinkedList& list : lists_) {
    tally.count(list);
  }
}

}  // namespace devhealth
