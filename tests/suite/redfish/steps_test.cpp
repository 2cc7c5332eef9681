// What a crawl costs, in counted steps: ten times as much of a service may cost
// twelve times as many.
#include <gtest/gtest.h>

#include "suite/base/time_limit.h"
#include "suite/redfish/graph/topology.h"
#include "tests/suite/graph_of.h"
#include "tests/suite/redfish/service_fixture.h"

namespace redfish {
namespace {

constexpr double kMostGrowth = 12;

std::string linkTo(const std::string& path) {
  return R"({"@odata.id":"/redfish/v1/)" + path + R"("})";
}

// "NAME/0" to "NAME/(count - 1)", as the entries of an array.
std::string links(const std::string& name, int count) {
  std::string text;
  for (int number = 0; number < count; ++number) {
    text +=
        (number == 0 ? "" : ",") + linkTo(name + "/" + std::to_string(number));
  }
  return text;
}

std::string chassis(int number) {
  return R"({"Id":"c)" + std::to_string(number) +
         R"(","Status":{"Health":"Warning"},"ThermalSubsystem":)" +
         linkTo("Chassis/" + std::to_string(number) + "/Thermal") +
         R"(,"PCIeDevices":)" +
         linkTo("Chassis/" + std::to_string(number) + "/Devices") +
         R"(,"Links":{"ComputerSystems":[)" + links("Elsewhere", 20) +
         R"(],"ContainedBy":)" +
         linkTo("Chassis/" + std::to_string(number / 2)) + "}}";
}

class Steps : public ScriptedService {
 public:
  Steps() {
    script->on("GET /redfish/v1/", 200, kRootBody);
    script->on("GET /redfish/v1/Systems", 200,
               R"({"Members":[)" + linkTo("Systems/1") + "]}");
    script->on("GET /redfish/v1/Systems/1", 200, R"({"Id":"1"})");
  }

  double read(std::uint32_t wants) {
    const auto before = base::stepsSoFar();
    EXPECT_FALSE(start().read(wanting(wants)));
    return static_cast<double>(base::stepsSoFar() - before);
  }
};

double stepsOfCrawl(int count) {
  Steps service;
  service.script->on("GET /redfish/v1/Chassis", 200,
                     R"({"Members":[)" + links("Chassis", count) + "]}");
  for (int number = 0; number < count; ++number) {
    service.script->on("GET /redfish/v1/Chassis/" + std::to_string(number), 200,
                       chassis(number));
  }
  return service.read(kWantHealth | kWantFans | kWantPciAdapters);
}

TEST(Steps, CrawlGrowsWithItsChassis) {
  EXPECT_LE(stepsOfCrawl(600), stepsOfCrawl(60) * kMostGrowth);
}

// A collection of six pages of so many members each.
double stepsOfPages(int members) {
  constexpr int kPages = 6;
  Steps service;
  for (int page = 0; page < kPages; ++page) {
    const std::string next =
        page + 1 == kPages ? ""
                           : R"(,"Members@odata.nextLink":"/redfish/v1/Page)" +
                                 std::to_string(page + 1) + '"';
    std::string list;
    for (int place = 0; place < members; ++place) {
      const int number = page * members + place;
      const std::string path = "Chassis/" + std::to_string(number);
      list += (place == 0 ? "" : ",") + linkTo(path);
      service.script->on("GET /redfish/v1/" + path, 200, chassis(number));
    }
    service.script->on(page == 0
                           ? "GET /redfish/v1/Chassis"
                           : "GET /redfish/v1/Page" + std::to_string(page),
                       200, R"({"Members":[)" + list + "]" + next + "}");
  }
  return service.read(kWantSystem);
}

TEST(Steps, PagesCostWhatTheyHold) {
  EXPECT_LE(stepsOfPages(100), stepsOfPages(10) * kMostGrowth);
}

double stepsOfNodes(int count) {
  Graph graph;
  put(graph, "/redfish/v1",
      R"({"Systems":)" + linkTo("Systems") + R"(,"Chassis":)" +
          linkTo("Chassis") + "}");
  put(graph, "/redfish/v1/Systems",
      R"({"Members":[)" + links("Systems", count) + "]}");
  put(graph, "/redfish/v1/Chassis",
      R"({"Members":[)" + links("Chassis", count) + "]}");
  for (int number = 0; number < count; ++number) {
    const std::string name = std::to_string(number);
    put(graph, "/redfish/v1/Systems/" + name,
        R"({"Id":"n)" + name + (number % 2 == 0 ? R"(","Boot":{})" : "\"") +
            R"(,"Links":{"Chassis":[)" +
            linkTo("Chassis/" + std::to_string(number / 2 * 2)) + "]}}");
    put(graph, "/redfish/v1/Chassis/" + name, chassis(number));
  }
  const auto before = base::stepsSoFar();
  const Topology topology(graph);
  EXPECT_EQ(topology.nodes().size(), static_cast<std::size_t>(count / 2));
  for (std::size_t node = 0; node < topology.nodes().size(); ++node) {
    EXPECT_NE(topology.node(node).system, nullptr);
  }
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(Steps, NodesAreFoundInOnePass) {
  EXPECT_LE(stepsOfNodes(1000), stepsOfNodes(100) * kMostGrowth);
}

}  // namespace
}  // namespace redfish
