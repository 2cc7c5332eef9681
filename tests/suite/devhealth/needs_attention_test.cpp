#include "suite/devhealth/health/needs_attention.h"

#include <gtest/gtest.h>

#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Links = std::vector<std::string>;

Links partsOf(const std::string& body) {
  const redfish::Graph graph = graphOf({{"/redfish/v1/R", body}});
  Links links;
  forEachNeedingAttention(
      *graph.find("/redfish/v1/R"),
      [&links](const redfish::Uri& uri, const redfish::json::object&) {
        links.push_back(uri.identity());
      });
  return links;
}

TEST(ForEachNeedingAttention, TakesTheDocument) {
  EXPECT_EQ(partsOf(R"({"Status": {"Health": "Warning"}})"),
            (Links{"/redfish/v1/R"}));
}

TEST(ForEachNeedingAttention, TakesWhateverIsWorthALook) {
  for (const char* body :
       {R"({"Status": {"HealthRollup": "Critical"}})",
        R"({"Status": {"State": "Degraded"}})",
        R"({"Status": {"Conditions": []}})",
        R"({"Status": {"Health": "OK"}, "FailurePredicted": true})"}) {
    EXPECT_EQ(partsOf(body).size(), 1U) << body;
  }
}

TEST(ForEachNeedingAttention, LeavesOutTheHealthy) {
  for (const char* body :
       {"{}", R"({"Status": {"Health": "OK"}})",
        R"({"Status": {"Health": null}})", R"({"Status": "Critical"})"}) {
    EXPECT_EQ(partsOf(body), Links{}) << body;
  }
}

TEST(ForEachNeedingAttention, FindsPartsInArraysAndObjects) {
  EXPECT_EQ(partsOf(R"({"Fans": [{}, {"Status": {"Health": "Warning"},
                              "Sub": {"Status": {"Health": "Critical"}}}],
                           "a/b~c": {"Status": {"Health": "Warning"}}})"),
            (Links{"/redfish/v1/R#/Fans/1", "/redfish/v1/R#/Fans/1/Sub",
                   "/redfish/v1/R#/a~1b~0c"}));
}

TEST(ForEachNeedingAttention, LeavesOutLinksAndOtherFormats) {
  EXPECT_EQ(partsOf(R"({"Links": {"A": {"Status": {"Health": "Warning"}}},
                           "Members": [{"Status": {"Health": "Warning"}}],
                           "Oem": {"X": {"Status": {"Health": "Warning"}}},
                           "@Odd": {"Status": {"Health": "Warning"}}})"),
            Links{});
}

TEST(ForEachNeedingAttention, PartIsToldByItsPlaceWhateverItsLink) {
  EXPECT_EQ(partsOf(R"({"Inside": [
                {"@odata.id": "/redfish/v1/Other/1",
                 "Status": {"Health": "Warning"}},
                {"@odata.id": "/redfish/v1/R#/Elsewhere",
                 "Status": {"Health": "Warning"}}]})"),
            (Links{"/redfish/v1/R#/Inside/0", "/redfish/v1/R#/Inside/1"}));
}

TEST(ForEachNeedingAttention, LeavesOutResourcesThatCameInsideThis) {
  EXPECT_EQ(partsOf(R"({"Metrics": {"@odata.id": "/redfish/v1/R/Metrics",
                "@odata.type": "#M.v1_0_0.M", "Id": "M", "Name": "M",
                "Status": {"Health": "Critical"},
                "Deeper": {"Status": {"Health": "Critical"}}}})"),
            Links{});
}

TEST(ForEachNeedingAttention, SkipsRegistries) {
  EXPECT_EQ(
      partsOf(R"({"@odata.type": "#MessageRegistry.v1_6_0.MessageRegistry",
                           "Messages": {"A": {"Status": {"Health": "Warning"}}}})"),
      Links{});
}

}  // namespace
}  // namespace devhealth
