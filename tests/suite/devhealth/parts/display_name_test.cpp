#include "suite/devhealth/parts/names/display_name.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Texts = std::vector<std::string>;

// What the parts of one table are called: fans in three chassis in turn, each
// told by its text.
Texts namesOf(const Texts& parts, NameOrder order = NameOrder::kNameFirst,
              std::string_view type = "Fan") {
  std::vector<redfish::json::object> objects;
  objects.reserve(parts.size());
  std::vector<Candidate> candidates;
  for (const std::string& part : parts) {
    objects.push_back(boost::json::parse(part).as_object());
    const std::string chassis = std::to_string(objects.size() % 3);
    candidates.push_back(candidateOf(
        *redfish::Uri::parse("/redfish/v1/Chassis/C" + chassis + "/Fans/Last"),
        &objects.back(), classOfType(type)));
  }
  Texts names;
  for (const DisplayName& name : displayNames({}, candidates, order)) {
    names.push_back(name.text);
  }
  return names;
}

std::string only(const std::string& part, std::string_view type = "Fan") {
  return namesOf({part}, NameOrder::kNameFirst, type).front();
}

std::string label(const std::string& text) {
  return R"("Location": {"PartLocation": {"ServiceLabel": ")" + text + R"("}})";
}

TEST(DisplayNames, UniqueNameIsTaken) {
  EXPECT_EQ(namesOf({R"({"Name": "Left", "Id": "1"})", R"({"Name": "Right"})"}),
            (Texts{"Left", "Right"}));
}

TEST(DisplayNames, RepeatedNameGivesWayToTheLabelOfThePlace) {
  EXPECT_EQ(namesOf({R"({"Name": "Part", )" + label("Bay 4") + "}",
                     R"({"Name": "Part", )" + label("Bay 5") + "}"}),
            (Texts{"Bay 4", "Bay 5"}));
}

TEST(DisplayNames, AbsentPartsCount) {
  EXPECT_EQ(namesOf({R"({"Name": "Part", "Id": "1"})",
                     R"({"Name": "Part", "Status": {"State": "Absent"}})"})[0],
            "Part 1");
}

TEST(DisplayNames, RepeatedLabelIsNone) {
  EXPECT_EQ(namesOf({R"({"Name": "Part", "Id": "a", )" + label("Bay") + "}",
                     R"({"Name": "Part", "Id": "b", )" + label("Bay") + "}"}),
            (Texts{"Part a", "Part b"}));
}

TEST(DisplayNames, ClassWordIsNoName) {
  // In the singular and the plural, of one word and of several, in any case;
  // what ends like the last one is a maker's.
  for (const std::string word :
       {"CPU", "Processors", "DIMM Slot", "Power Supply Bay",
        "Network Adapter View", "Storage Controller", "fan", "CHASSIS",
        "KestwynPowerSupply"}) {
    EXPECT_EQ(only(R"({"Name": ")" + word + R"(", "Id": "3"})"), "Fan 3")
        << word;
  }
}

TEST(DisplayNames, TextWithoutALetterIsNoName) {
  EXPECT_EQ(only(R"({"Name": "3", "Id": "7"})"), "Fan 7");
  EXPECT_EQ(only(R"({"Name": "0:1", "Id": "7"})"), "Fan 7");
  EXPECT_EQ(only(R"({"Name": "\u6249", "Id": "7"})"), "\xE6\x89\x89");
}

TEST(DisplayNames, PlaceholderIsNoName) {
  EXPECT_EQ(only(R"({"Name": "nil", "Id": "7"})"), "Fan 7");
}

TEST(DisplayNames, LocatorOfTheClassComesAfterTheLabel) {
  EXPECT_EQ(only(R"({"Name": "CPU", "Socket": "S1"})", "Processor"), "S1");
  EXPECT_EQ(only(R"({"Name": "CPU", "Socket": "S1", )" + label("P1") + "}",
                 "Processor"),
            "P1");
}

TEST(DisplayNames, PlaceThatIsANumberStandsBehindItsClass) {
  EXPECT_EQ(only(R"({"Name": "CPU", "Socket": 2})", "Processor"),
            "Processor 2");
  EXPECT_EQ(only("{" + label("4") + "}"), "Fan 4");
}

TEST(DisplayNames, BayInMakersFormatComesLast) {
  EXPECT_EQ(namesOf({R"({"Oem": {"Kestwyn": {"BayNumber": 1}}, "Id": "0"})",
                     R"({"Oem": {"Kestwyn": {"BayNumber": 2}}, "Id": "1"})",
                     R"({"Oem": {"Kestwyn": {"BayNumber": 3}}, )" +
                         label("Rear") + "}"},
                    NameOrder::kNameFirst, "PowerSupply"),
            (Texts{"Power Supply 1", "Power Supply 2", "Rear"}));
}

TEST(DisplayNames, IdThatStartsWithAClassWordStandsAlone) {
  EXPECT_EQ(only(R"({"Name": "Processor", "Id": "CPU_0"})", "Processor"),
            "CPU_0");
  EXPECT_EQ(only(R"({"Id": "PowerSupply0"})", "PowerSupply"), "PowerSupply0");
}

TEST(DisplayNames, MemberIdAndTheLinkStandInForTheId) {
  EXPECT_EQ(only(R"({"MemberId": 4})"), "Fan 4");
  EXPECT_EQ(only(R"({"MemberID": "5"})"), "Fan 5");
  EXPECT_EQ(only("{}"), "Fan Last");
}

TEST(DisplayNames, WhatIsStillRepeatedCarriesItsChassis) {
  EXPECT_EQ(namesOf({R"({"Name": "Fan", "Id": "1"})",
                     R"({"Name": "Fan", "Id": "1"})", R"({"Id": "2"})"}),
            (Texts{"C1/Fan 1", "C2/Fan 1", "Fan 2"}));
}

TEST(DisplayNames, NameOfAnAbsentPartIsNotRepeated) {
  EXPECT_EQ(
      namesOf({R"({"Id": "1", "Status": {"State": "Absent"}})",
               R"({"Oem": {"Kestwyn": {"BayNumber": 1}}, "Id": "0"})"})[1],
      "Fan 1");
}

TEST(DisplayNames, HolderIsToldByItsId) {
  const redfish::Graph graph =
      graphOf({{"/redfish/v1/Systems/7", R"({"Id": "Left"})"}});
  const auto idOf = [&graph](const char* link) {
    return holderId(graph, *redfish::Uri::parse(link));
  };
  EXPECT_EQ(idOf("/redfish/v1/Systems/7/Memory/1"), "Left");
  EXPECT_EQ(idOf("/redfish/v1/Chassis/8/Thermal#/Fans/0"), "8");
  EXPECT_EQ(idOf("/redfish/v1/Managers/9"), "");
}

TEST(DisplayNames, PlacesMayComeFirst) {
  EXPECT_EQ(namesOf({R"({"Name": "M1", "DeviceLocator": "A1"})",
                     R"({"Name": "M2", "DeviceLocator": "A2", )" +
                         label("DIMM 2") + "}",
                     R"({"Name": "M3"})"},
                    NameOrder::kPlaceFirst, "Memory"),
            (Texts{"A1", "DIMM 2", "M3"}));
}

TEST(DisplayNames, UnreadablePartIsCalledByItsLink) {
  const auto names = displayNames(
      {}, {candidateOf(*redfish::Uri::parse("/redfish/v1/Chassis/1/Fans/F0"),
                       nullptr, classOfType("Fan"))});
  EXPECT_EQ(names.front().text, "F0");
}

TEST(DisplayNames, TellsWhetherANameIsAPlace) {
  const auto part = boost::json::parse("{" + label("Slot 4") + "}").as_object();
  const auto uri = *redfish::Uri::parse("/redfish/v1/Chassis/1/Fans/F0");
  EXPECT_TRUE(displayNames({}, {candidateOf(uri, &part, classOfType("Fan"))})
                  .front()
                  .place);
}

}  // namespace
}  // namespace devhealth
