#include "suite/devhealth/parts/chassis_lists.h"

namespace devhealth {

ChassisLists::ChassisLists(const redfish::Graph& graph,
                           const redfish::Node& node,
                           std::string_view collection) {
  for (const redfish::Resource* chassis : node.chassis) {
    const LinkedList list = membersAt(graph, chassis->body, collection);
    for (const Part& part : list.list.parts()) {
      all_.add(part);
    }
    if (list.failure) {
      failures_.push_back(*list.failure);
    }
  }
}

void ChassisLists::reportFailures(ReadTally& tally) const {
  for (const base::Failure& failure : failures_) {
    tally.fail(failure);
  }
}

}  // namespace devhealth
