#include "tests/suite/devhealth/server.h"

#include <boost/json/array.hpp>

#include "tests/suite/graph_of.h"

namespace json = redfish::json;

namespace {

std::string full(const std::string& path) {
  return path.empty() ? "/redfish/v1" : "/redfish/v1/" + path;
}

}  // namespace

std::string linkTo(const std::string& path) {
  return R"({"@odata.id": ")" + full(path) + R"("})";
}

Server::Server(std::string_view system, std::string_view chassis) {
  put("", "{}");
  members("", "Systems", {{"1", std::string(system)}});
  members("", "Chassis", {{"1", std::string(chassis)}});
  members("", "Managers", {{"1", "{}"}});
}

void Server::put(const std::string& path, std::string_view text) {
  ::put(graph_, full(path), text);
}

void Server::link(const std::string& path, const std::string& property) {
  redfish::Resource resource = *graph_.find(full(path));
  const std::string target = path.empty() ? property : path + "/" + property;
  resource.body[property] = json::object{{"@odata.id", full(target)}};
  graph_.insert(std::move(resource));
}

void Server::linked(const std::string& path, const std::string& property,
                    std::string_view text) {
  link(path, property);
  put(path.empty() ? property : path + "/" + property, text);
}

void Server::members(
    const std::string& path, const std::string& property,
    const std::vector<std::pair<std::string, std::string>>& entries) {
  const std::string folder = path.empty() ? property : path + "/" + property;
  std::string list;
  for (const auto& [name, text] : entries) {
    if (!list.empty()) {
      list += ", ";
    }
    list += linkTo(folder + "/" + name);
    put(folder + "/" + name, text);
  }
  linked(path, property, R"({"Members": [)" + list + "]}");
}

void Server::addNode(const std::string& name) {
  for (const std::string collection : {"Systems", "Chassis"}) {
    const bool system = collection == "Systems";
    put(collection + "/" + name,
        R"({"Links": {")" +
            std::string(system ? "Chassis" : "ComputerSystems") + R"(": [)" +
            linkTo((system ? "Chassis/" : "Systems/") + name) + "]}}");
    redfish::Resource list = *graph_.find(full(collection));
    list.body["Members"].as_array().push_back(
        json::object{{"@odata.id", full(collection + "/" + name)}});
    graph_.insert(std::move(list));
  }
}

redfish::Node Server::node(std::uint16_t index) const {
  return redfish::Topology(graph_).node(index);
}
