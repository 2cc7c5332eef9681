#include "suite/devhealth/parts/display_name.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace devhealth {
namespace {

// The name of the first of some siblings.
std::string nameOf(const std::vector<const char*>& siblings,
                   std::string_view locator = {}) {
  NameCounts names;
  for (const char* sibling : siblings) {
    names.add(boost::json::parse(sibling).as_object());
  }
  return displayName(boost::json::parse(siblings.front()).as_object(),
                     *redfish::Uri::parse("/redfish/v1/Parts/Seventh"), names,
                     locator);
}

TEST(DisplayName, UniqueNameIsTaken) {
  EXPECT_EQ(nameOf({R"({"Name": "Left", "Id": "1"})", R"({"Name": "Right"})"}),
            "Left");
}

TEST(DisplayName, RepeatedNameGivesWayToTheLabelOfThePlace) {
  EXPECT_EQ(nameOf({R"({"Name": "Part", "Id": "1", "Location":
                       {"PartLocation": {"ServiceLabel": "Bay 4"}}})",
                    R"({"Name": "Part"})"}),
            "Bay 4");
}

TEST(DisplayName, RepeatedNameCountsAbsentSiblings) {
  EXPECT_EQ(nameOf({R"({"Name": "Part", "Id": "1"})",
                    R"({"Name": "Part", "Status": {"State": "Absent"}})"}),
            "Part 1");
}

TEST(DisplayName, ClassWordIsNoName) {
  for (const std::string word : {"Processor", "CPU", "Fan", "Power Supply",
                                 "Memory", "Network Adapter", "fan"}) {
    EXPECT_EQ(nameOf({(R"({"Name": ")" + word + R"(", "Id": "3"})").c_str()}),
              word + " 3");
  }
}

TEST(DisplayName, LocatorOfTheClassComesAfterTheLabel) {
  EXPECT_EQ(nameOf({R"({"Name": "CPU", "Id": "1", "Socket": 2})"}, "Socket"),
            "2");
  EXPECT_EQ(nameOf({R"({"Name": "CPU", "Socket": "S1", "Location":
                       {"PartLocation": {"ServiceLabel": "CPU 1"}}})"},
                   "Socket"),
            "CPU 1");
}

TEST(DisplayName, MissingNameLeavesTheId) {
  EXPECT_EQ(nameOf({R"({"Name": null, "Id": "A7"})"}), "A7");
  EXPECT_EQ(nameOf({R"({"MemberId": 4})"}), "4");
}

TEST(DisplayName, LastResortIsTheLink) {
  EXPECT_EQ(nameOf({"{}"}), "Seventh");
  EXPECT_EQ(nameOf({R"({"Name": "Fan"})"}), "Seventh");
}

}  // namespace
}  // namespace devhealth
