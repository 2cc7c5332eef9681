#include "bench/sample_graph.h"

#include <boost/json/serialize.hpp>
#include <cstdlib>
#include <iostream>

#include "suite/redfish/recorded/directory_transport.h"

namespace bench {

redfish::Selection wholeNode() {
  redfish::Selection selection;
  selection.wants = redfish::kWantSystem | redfish::kWantProcessors |
                    redfish::kWantFans | redfish::kWantDimms |
                    redfish::kWantPowers | redfish::kWantPciAdapters |
                    redfish::kWantHealth | redfish::kWantThorough;
  return selection;
}

redfish::Service sampleService() {
  return {redfish::ServiceOptions(),
          redfish::makeDirectoryTransport(RACK_SERVER)};
}

const redfish::Graph& sampleGraph() {
  static redfish::Service service = sampleService();
  static const auto failure = service.read(wholeNode());
  if (failure) {
    std::cerr << base::describe(*failure) << '\n';
    std::exit(EXIT_FAILURE);
  }
  return service.graph();
}

std::vector<std::pair<redfish::Uri, std::string>> sampleDocuments() {
  std::vector<std::pair<redfish::Uri, std::string>> documents;
  for (const auto& entry : sampleGraph().resources()) {
    const redfish::Resource& resource = entry.second;
    if (resource.state == redfish::ResourceState::kRead) {
      documents.emplace_back(resource.uri,
                             boost::json::serialize(resource.body));
    }
  }
  return documents;
}

}  // namespace bench
