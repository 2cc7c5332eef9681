// Recordings of real servers, which are not part of the project: read where
// there are any (BRIVEL_RECORDINGS, else ../shared/trees beside the source
// tree), one folder a server. The rows are held against what the JSON itself
// says; no content of a recording stands here.
#include <gtest/gtest.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "suite/base/natural_order.h"
#include "suite/redfish/recorded/directory_transport.h"
#include "suite/redfish/service.h"
#include "suite/run/run.h"
#include "syshealth/health/dev_health.h"
#include "syshealth/result/health_status.h"
#include "tests/support/file_text.h"

namespace devhealth {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using Tarvex::DeviceHealth::DevHealth;
using Texts = std::vector<std::string>;

fs::path recordings() {
  const char* named = std::getenv("BRIVEL_RECORDINGS");
  return named != nullptr ? fs::path(named) : fs::path(RECORDINGS_DIR);
}

// The JSON of a recording by link, read without any of the program's rules.
using Documents = std::map<std::string, json::object>;

Documents documentsIn(const fs::path& recording) {
  const bool isLong = fs::exists(recording / "redfish" / "v1");
  const fs::path top = isLong ? recording / "redfish" / "v1" : recording;
  Documents documents;
  for (const auto& entry : fs::recursive_directory_iterator(top)) {
    if (entry.path().filename() != "index.json") {
      continue;
    }
    const fs::path folder = fs::relative(entry.path().parent_path(), top);
    boost::system::error_code error;
    json::value value = json::parse(support::fileText(entry.path()), error);
    if (!error && value.is_object()) {
      documents["/redfish/v1/" +
                (folder == "." ? "" : folder.generic_string())] =
          std::move(value.as_object());
    }
  }
  return documents;
}

std::string textAt(const json::object& object, const char* name) {
  const json::value* value = object.if_contains(name);
  return value != nullptr && value->is_string()
             ? std::string(value->get_string().c_str())
             : std::string();
}

bool isAbsent(const json::object& part) {
  const json::value* status = part.if_contains("Status");
  return status != nullptr && status->is_object() &&
         textAt(status->get_object(), "State") == "Absent";
}

// A link without the slash that some services put at its end.
std::string linkOf(const json::value& value) {
  std::string link =
      value.is_object() ? textAt(value.get_object(), "@odata.id") : "";
  while (!link.empty() && link.back() == '/') {
    link.pop_back();
  }
  return link;
}

// The members of the collections that the systems link under a name, as far as
// the recording has them, each once.
std::vector<const json::object*> membersOfSystems(const Documents& documents,
                                                  const char* collection) {
  std::vector<const json::object*> members;
  std::set<std::string> seen;
  for (const auto& [link, system] : documents) {
    const json::value* named = system.if_contains(collection);
    const bool isSystem =
        textAt(system, "@odata.type").find("#ComputerSystem.") == 0;
    if (!isSystem || named == nullptr) {
      continue;
    }
    const auto list = documents.find(linkOf(*named));
    const json::value* all =
        list == documents.end() ? nullptr : list->second.if_contains("Members");
    if (all == nullptr || !all->is_array()) {
      continue;
    }
    for (const json::value& member : all->get_array()) {
      const auto part = documents.find(linkOf(member));
      if (part != documents.end() && seen.insert(part->first).second) {
        members.push_back(&part->second);
      }
    }
  }
  return members;
}

std::size_t presentProcessors(const Documents& documents) {
  std::size_t count = 0;
  for (const json::object* part : membersOfSystems(documents, "Processors")) {
    const std::string type = textAt(*part, "ProcessorType");
    if (!isAbsent(*part) && (type.empty() || type == "CPU")) {
      ++count;
    }
  }
  return count;
}

std::size_t presentModules(const Documents& documents) {
  std::size_t count = 0;
  for (const json::object* part : membersOfSystems(documents, "Memory")) {
    if (!isAbsent(*part) && textAt(*part, "MemoryType") != "Cache") {
      ++count;
    }
  }
  return count;
}

// The parts of both models that are there, told apart by serial number, else
// by name and member: however many chassis list them.
std::size_t presentInChassis(const Documents& documents, const char* array,
                             const std::string& folder) {
  std::set<std::string> parts;
  const auto add = [&parts](const json::object& part, const std::string& id) {
    if (!isAbsent(part)) {
      const std::string serial = textAt(part, "SerialNumber");
      parts.insert(serial.size() > 3 ? serial
                                     : textAt(part, "Name") + '\n' + id);
    }
  };
  for (const auto& [link, document] : documents) {
    if (link.find("/Chassis/") == std::string::npos) {
      continue;
    }
    if (link.find(folder) != std::string::npos &&
        link.find('/', link.find(folder) + folder.size()) ==
            std::string::npos) {
      add(document, textAt(document, "Id"));
    }
    const json::value* entries = document.if_contains(array);
    if (entries == nullptr || !entries->is_array()) {
      continue;
    }
    for (const json::value& entry : entries->get_array()) {
      if (entry.is_object()) {
        const json::object& part = entry.get_object();
        const json::value* id = part.if_contains("MemberId");
        id = id == nullptr ? part.if_contains("MemberID") : id;
        add(part, id == nullptr ? "" : json::serialize(*id));
      }
    }
  }
  return parts.size();
}

// What one node of a recording shows.
struct Shown {
  std::vector<Tarvex::DeviceHealth::Processor> processors;
  std::vector<Tarvex::DeviceHealth::DIMM> dimms;
  std::vector<Tarvex::DeviceHealth::Fan> fans;
  std::vector<Tarvex::DeviceHealth::Power> powers;
  std::vector<Tarvex::DeviceHealth::PCIAdapter> adapters;
  std::vector<Tarvex::DeviceHealth::Alert> alerts;
};

std::vector<Shown> shownOf(const fs::path& recording) {
  run::Run run;
  run.pool().add(std::make_unique<redfish::Service>(
      redfish::ServiceOptions{},
      redfish::makeDirectoryTransport(recording.string())));
  std::vector<Shown> nodes;
  constexpr std::uint16_t kMostNodes = 16;
  for (std::uint16_t index = 0; index < kMostNodes; ++index) {
    Tarvex::TarvexConnection::ConnectionInfo connection;
    connection.nodeIndex = index;
    DevHealth client(connection);
    Shown node;
    if (client.connect() != kHealthSuccess) {
      break;
    }
    Tarvex::DeviceHealth::SystemBoard board;
    EXPECT_EQ(client.get_system(board), kHealthSuccess);
    EXPECT_FALSE(board.machineName.empty());
    EXPECT_EQ(client.get_processors(node.processors), kHealthSuccess);
    EXPECT_EQ(client.get_DIMMs(node.dimms), kHealthSuccess);
    EXPECT_EQ(client.get_fans(node.fans), kHealthSuccess);
    EXPECT_EQ(client.get_Powers(node.powers), kHealthSuccess);
    EXPECT_EQ(client.get_PCIApaters(node.adapters), kHealthSuccess);
    EXPECT_EQ(client.getHealthSum(node.alerts), kHealthSuccess);
    nodes.push_back(std::move(node));
  }
  return nodes;
}

template <typename Row>
Texts column(const std::vector<Row>& rows, std::string Row::*field) {
  Texts texts;
  for (const Row& row : rows) {
    texts.push_back(row.*field);
  }
  return texts;
}

void expectNames(const Texts& names, const char* table) {
  SCOPED_TRACE(table);
  EXPECT_TRUE(
      std::is_sorted(names.begin(), names.end(), base::naturallyBefore));
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(),
            names.size());
  for (const std::string& name : names) {
    EXPECT_FALSE(name.empty());
  }
}

void expectTables(const Shown& node) {
  using namespace Tarvex::DeviceHealth;
  expectNames(column(node.processors, &Processor::name), "processors");
  expectNames(column(node.dimms, &DIMM::description), "modules");
  expectNames(column(node.fans, &Fan::elementName), "fans");
  expectNames(column(node.powers, &Power::elementName), "supplies");
  expectNames(column(node.adapters, &PCIAdapter::description), "adapters");
  std::set<std::string> alerts;
  for (const Alert& alert : node.alerts) {
    EXPECT_TRUE(alert.severity == 1 || alert.severity == 2);
    EXPECT_TRUE(alerts.insert(alert.category + alert.message).second);
  }
}

TEST(Recordings, RowsAreWhatTheJsonSays) {
  if (!fs::is_directory(recordings())) {
    GTEST_SKIP() << "there are no recordings in " << recordings();
  }
  for (const auto& entry : fs::directory_iterator(recordings())) {
    if (!entry.is_directory()) {
      continue;
    }
    SCOPED_TRACE(entry.path().filename());
    const Documents documents = documentsIn(entry.path());
    const std::vector<Shown> nodes = shownOf(entry.path());
    ASSERT_FALSE(nodes.empty());
    std::size_t processors = 0;
    std::size_t modules = 0;
    for (const Shown& node : nodes) {
      expectTables(node);
      processors += node.processors.size();
      modules += node.dimms.size();
    }
    EXPECT_EQ(processors, presentProcessors(documents));
    EXPECT_EQ(modules, presentModules(documents));
    if (nodes.size() == 1) {
      EXPECT_EQ(nodes[0].fans.size(),
                presentInChassis(documents, "Fans", "/Fans/"));
      EXPECT_EQ(
          nodes[0].powers.size(),
          presentInChassis(documents, "PowerSupplies", "/PowerSupplies/"));
    }
  }
}

}  // namespace
}  // namespace devhealth
