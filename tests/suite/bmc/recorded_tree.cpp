#include "tests/suite/bmc/recorded_tree.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace bmc {

namespace fs = std::filesystem;

RecordedTree::RecordedTree(const Files& files) {
  std::string pattern = fs::temp_directory_path() / "bmc-tree-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot make " + pattern);
  }
  folder_ = pattern;
  for (const auto& [path, text] : files) {
    fs::create_directories((folder_ / path).parent_path());
    std::ofstream(folder_ / path, std::ios::binary) << text;
  }
}

RecordedTree::~RecordedTree() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
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
