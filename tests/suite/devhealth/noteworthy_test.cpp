#include "suite/devhealth/health/noteworthy.h"

#include <gtest/gtest.h>

#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Links = std::vector<std::string>;

Links noteworthy(const std::string& body) {
  const redfish::Graph graph = graphOf({{"/redfish/v1/R", body}});
  Links links;
  forEachNoteworthy(
      *graph.find("/redfish/v1/R"),
      [&links](const redfish::Uri& uri, const redfish::json::object&) {
        links.push_back(uri.identity());
      });
  return links;
}

TEST(ForEachNoteworthy, TakesTheDocument) {
  EXPECT_EQ(noteworthy(R"({"Status": {"Health": "Warning"}})"),
            (Links{"/redfish/v1/R"}));
}

TEST(ForEachNoteworthy, TakesWhateverIsWorthALook) {
  for (const char* body :
       {R"({"Status": {"HealthRollup": "Critical"}})",
        R"({"Status": {"State": "Degraded"}})",
        R"({"Status": {"Conditions": []}})",
        R"({"Status": {"Health": "OK"}, "FailurePredicted": true})"}) {
    EXPECT_EQ(noteworthy(body).size(), 1U) << body;
  }
}

TEST(ForEachNoteworthy, LeavesOutTheHealthy) {
  for (const char* body :
       {"{}", R"({"Status": {"Health": "OK"}})",
        R"({"Status": {"Health": null}})", R"({"Status": "Critical"})"}) {
    EXPECT_EQ(noteworthy(body), Links{}) << body;
  }
}

TEST(ForEachNoteworthy, FindsPartsInArraysAndObjects) {
  EXPECT_EQ(noteworthy(R"({"Fans": [{}, {"Status": {"Health": "Warning"},
                              "Sub": {"Status": {"Health": "Critical"}}}],
                           "a/b~c": {"Status": {"Health": "Warning"}}})"),
            (Links{"/redfish/v1/R#/Fans/1", "/redfish/v1/R#/Fans/1/Sub",
                   "/redfish/v1/R#/a~1b~0c"}));
}

TEST(ForEachNoteworthy, LeavesOutLinksAndOtherFormats) {
  EXPECT_EQ(noteworthy(R"({"Links": {"A": {"Status": {"Health": "Warning"}}},
                           "Members": [{"Status": {"Health": "Warning"}}],
                           "Oem": {"X": {"Status": {"Health": "Warning"}}},
                           "@Odd": {"Status": {"Health": "Warning"}}})"),
            Links{});
}

TEST(ForEachNoteworthy, PartIsToldByItsPlaceWhateverItsLink) {
  EXPECT_EQ(noteworthy(R"({"Inside": [
                {"@odata.id": "/redfish/v1/Other/1",
                 "Status": {"Health": "Warning"}},
                {"@odata.id": "/redfish/v1/R#/Elsewhere",
                 "Status": {"Health": "Warning"}}]})"),
            (Links{"/redfish/v1/R#/Inside/0", "/redfish/v1/R#/Inside/1"}));
}

TEST(ForEachNoteworthy, LeavesOutResourcesThatCameInsideThis) {
  EXPECT_EQ(noteworthy(R"({"Metrics": {"@odata.id": "/redfish/v1/R/Metrics",
                "@odata.type": "#M.v1_0_0.M", "Id": "M", "Name": "M",
                "Status": {"Health": "Critical"},
                "Deeper": {"Status": {"Health": "Critical"}}}})"),
            Links{});
}

TEST(ForEachNoteworthy, SkipsRegistries) {
  EXPECT_EQ(
      noteworthy(R"({"@odata.type": "#MessageRegistry.v1_6_0.MessageRegistry",
                           "Messages": {"A": {"Status": {"Health": "Warning"}}}})"),
      Links{});
}

}  // namespace
}  // namespace devhealth
