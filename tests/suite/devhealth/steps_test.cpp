// What the mapping costs, in counted steps: ten times as much of a server may
// cost twelve times as many.
#include <gtest/gtest.h>

#include "suite/base/time_limit.h"
#include "suite/devhealth/health/alert_category.h"
#include "suite/devhealth/health/alerts.h"
#include "suite/devhealth/health/repeated_parts.h"
#include "suite/redfish/graph/service_conditions.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

constexpr double kMostGrowth = 12;

double stepsOfEvents(const Server& server) {
  const redfish::Node node = server.node();
  const auto before = base::stepsSoFar();
  EXPECT_FALSE(
      readEvents(server.graph(), server.topology(), node, {}).events.empty());
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

// So many empty bays, and as many redundancy groups, in one document.
double stepsOfBays(int count) {
  std::string bays;
  std::string groups;
  for (int number = 0; number < count; ++number) {
    const std::string comma = number == 0 ? "" : ",";
    bays += comma + R"({"Status":{"State":"Absent","Health":"Warning"}})";
    groups += comma + R"({"Status":{"Health":"OK"}})";
  }
  Server server(R"({"Status":{"Health":"Warning"}})");
  server.linked(
      "Chassis/1", "Power",
      R"({"PowerSupplies":[)" + bays + R"(],"Redundancy":[)" + groups + "]}");
  return stepsOfEvents(server);
}

TEST(StepsOfMapping, RedundancyIsLookedAtOnce) {
  EXPECT_LE(stepsOfBays(600), stepsOfBays(60) * kMostGrowth);
}

// So many chassis in trouble, each with an empty bay that explains it, and one
// with as many that do not.
double stepsOfQuietParts(int count) {
  Server server(R"({"Status":{"Health":"OK"}})");
  std::vector<std::pair<std::string, std::string>> chassis;
  std::string bays;
  for (int number = 0; number < count; ++number) {
    const std::string name = std::to_string(number);
    chassis.emplace_back(
        name, R"({"Id":"c)" + name + R"(","Status":{"Health":"Critical"}})");
    bays += std::string(number == 0 ? "" : ",") +
            R"({"Status":{"State":"Absent","Health":"Warning"}})";
  }
  server.members("", "Chassis", chassis);
  server.linked("Chassis/0", "Power", R"({"PowerSupplies":[)" + bays + "]}");
  return stepsOfEvents(server);
}

TEST(StepsOfMapping, QuietPartsAreToldInOnePass) {
  EXPECT_LE(stepsOfQuietParts(600), stepsOfQuietParts(60) * kMostGrowth);
}

// Chassis each of which lies below the path of the one before.
double stepsOfNestedChassis(int count) {
  Server server;
  std::string members;
  std::string path = "Chassis";
  for (int number = 0; number < count; ++number) {
    path += "/a";
    server.put(path, R"({"Parts":[{"SerialNumber":"S"}]})");
    members += (number == 0 ? "" : ",") + linkTo(path);
  }
  server.put("Chassis", R"({"Members":[)" + members + "]}");
  const redfish::Node node = server.node();
  EXPECT_EQ(node.chassis.size(), static_cast<std::size_t>(count));
  const auto before = base::stepsSoFar();
  const RepeatedParts repeated(server.graph(), node);
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(StepsOfMapping, PartsOfChassisBelowOthersAreTakenOnce) {
  EXPECT_LE(stepsOfNestedChassis(400), stepsOfNestedChassis(40) * kMostGrowth);
}

// A list of conditions of other nodes beside a node with many managers.
double stepsOfServiceConditions(int count) {
  Server server;
  server.addNode("2");
  std::vector<std::pair<std::string, std::string>> managers;
  std::string conditions;
  for (int number = 0; number < count; ++number) {
    managers.emplace_back(std::to_string(number), "{}");
    conditions += std::string(number == 0 ? "" : ",") +
                  R"({"Severity":"Warning","OriginOfCondition":)" +
                  linkTo("Systems/2/Memory/" + std::to_string(number)) + "}";
  }
  server.members("", "Managers", managers);
  server.linked(
      "", "ServiceConditions",
      R"({"HealthRollup":"Warning","Conditions":[)" + conditions + "]}");
  const redfish::Node node = server.node();
  EXPECT_EQ(node.managers.size(), static_cast<std::size_t>(count));
  const auto before = base::stepsSoFar();
  EXPECT_TRUE(redfish::serviceConditionsSuffice(server.graph(), node));
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(StepsOfMapping, ConditionsFindTheirHoldersByPath) {
  EXPECT_LE(stepsOfServiceConditions(600),
            stepsOfServiceConditions(60) * kMostGrowth);
}

}  // namespace
}  // namespace devhealth
