// What the mapping costs, in counted steps: ten times as much of a server may
// cost twelve times as many.
#include <gtest/gtest.h>

#include "suite/base/time_limit.h"
#include "suite/devhealth/health/alert_category.h"
#include "suite/devhealth/health/alerts.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

constexpr double kMostGrowth = 12;

double stepsOfEvents(const Server& server) {
  const redfish::Node node = server.node();
  const auto before = base::stepsSoFar();
  EXPECT_FALSE(readEvents(server.graph(), node, {}).events.empty());
  return static_cast<double>(base::stepsSoFar() - before);
}

double stepsOfHolders(int count) {
  Server server(R"({"Status":{"Health":"OK"}})");
  std::vector<std::pair<std::string, std::string>> chassis;
  for (int number = 0; number < count; ++number) {
    const std::string name = std::to_string(number);
    chassis.emplace_back(
        name, R"({"Id":"c)" + name + R"(","Status":{"Health":"Critical"}})");
  }
  server.members("", "Chassis", chassis);
  return stepsOfEvents(server);
}

TEST(StepsOfMapping, HoldersAreToldInOnePass) {
  EXPECT_LE(stepsOfHolders(600), stepsOfHolders(60) * kMostGrowth);
}

double stepsOfNames(int count) {
  Server server;
  std::vector<std::pair<std::string, std::string>> memory;
  for (int number = 0; number < count; ++number) {
    const std::string name = std::to_string(number);
    memory.emplace_back(
        name, R"({"@odata.type":"#Memory.v1_0_0.Memory","Id":")" + name +
                  R"(","Status":{"Health":"Warning"}})");
  }
  server.members("Systems/1", "Memory", memory);
  return stepsOfEvents(server);
}

TEST(StepsOfMapping, PartsAreNamedInOnePass) {
  EXPECT_LE(stepsOfNames(600), stepsOfNames(60) * kMostGrowth);
}

double stepsOfCategory(int segments) {
  std::string link = "/redfish/v1/Systems/1";
  for (int segment = 0; segment < segments; ++segment) {
    link += "/a";
  }
  const auto before = base::stepsSoFar();
  static_cast<void>(
      categoryOf(redfish::Graph(), redfish::Uri::parse(link).value()));
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(StepsOfMapping, CategoryTakesAPathOnce) {
  EXPECT_LE(stepsOfCategory(400), stepsOfCategory(40) * kMostGrowth);
}

}  // namespace
}  // namespace devhealth
