#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {

RecordedTree::RecordedTree(const Files& files) {
  for (const auto& [path, text] : files) {
    folder_.write(path, text);
  }
}

Files smallService() {
  return {
      {"index.json",
       R"({"@odata.id":"/redfish/v1/","@odata.type":"#ServiceRoot.v1_16_0.ServiceRoot",)"
       R"("Systems":{"@odata.id":"/redfish/v1/Systems"},)"
       R"("Links":{"Sessions":{"@odata.id":"/redfish/v1/SessionService/Sessions"}}})"},
      {"Systems/index.json", R"({"@odata.id":"/redfish/v1/Systems","Members":[)"
                             R"({"@odata.id":"/redfish/v1/Systems/1"},)"
                             R"({"@odata.id":"/redfish/v1/Systems/2"}]})"},
      {"Systems/1/index.json",
       R"({"@odata.id":"/redfish/v1/Systems/1","Id":"1",)"
       R"("Processors":{"@odata.id":"/redfish/v1/Systems/1/Processors"},)"
       R"("Links":{"Chassis":[{"@odata.id":"/redfish/v1/Systems/2"}]}})"},
      {"Systems/1/Processors/index.json",
       R"({"@odata.id":"/redfish/v1/Systems/1/Processors","Members":[],)"
       R"("System":{"@odata.id":"/redfish/v1/Systems/1/"}})"},
      {"Systems/2/index.json",
       R"({"@odata.id":"/redfish/v1/Systems/2","Id":"2"})"}};
}

}  // namespace bmc
