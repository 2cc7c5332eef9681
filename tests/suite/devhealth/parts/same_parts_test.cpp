#include "suite/devhealth/parts/names/same_parts.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "tests/suite/devhealth/server.h"

namespace devhealth {
namespace {

// Whether two fans, told by chassis and text, are one. Chassis A and B have
// one Id, chassis C has another.
bool same(const std::string& chassis, const std::string& first,
          const std::string& otherChassis, const std::string& second) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/A") + "," +
                linkTo("Chassis/B") + "," + linkTo("Chassis/C") + "]}}");
  server.put("Chassis/A", R"({"Id": "1"})");
  server.put("Chassis/B", R"({"Id": "1"})");
  server.put("Chassis/C", R"({"Id": "3"})");
  const redfish::Node node = server.node();
  SameParts parts(node);
  const auto add = [&parts](const std::string& place, const std::string& text) {
    const auto fan = boost::json::parse(text).as_object();
    return parts.add("Fan", *redfish::Uri::parse("/redfish/v1/" + place), fan);
  };
  EXPECT_EQ(add("Chassis/" + chassis + "/Fans/1", first), nullptr);
  return add("Chassis/" + otherChassis + "/Fans/2", second) != nullptr;
}

constexpr const char* kNamed = R"({"Name": "Left", "SerialNumber": "S"})";

TEST(SameParts, SerialNumberAndNameUnderTwoChassis) {
  EXPECT_TRUE(same("A", kNamed, "C", kNamed));
  EXPECT_FALSE(
      same("A", kNamed, "C", R"({"Name": "Right", "SerialNumber": "S"})"));
  EXPECT_FALSE(
      same("A", kNamed, "C", R"({"Name": "Left", "SerialNumber": "T"})"));
}

TEST(SameParts, WithinOneChassisNothingIsTheSame) {
  EXPECT_FALSE(same("A", kNamed, "A", kNamed));
}

TEST(SameParts, IdentifierStandsInForANameThatIsNone) {
  const std::string one = R"({"Name": "Fan", "SerialNumber": "S", "Id": "1"})";
  EXPECT_TRUE(same("A", one, "C", one));
  EXPECT_FALSE(same("A", one, "C",
                    R"({"Name": "Fan", "SerialNumber": "S", "Id": "2"})"));
}

TEST(SameParts, NameAndIdentifierUnderTwoDocumentsOfOneChassis) {
  const std::string one = R"({"Name": "Left", "MemberId": "0"})";
  EXPECT_TRUE(same("A", one, "B", one));
  EXPECT_FALSE(same("A", one, "B", R"({"Name": "Left", "MemberId": "1"})"));
  EXPECT_FALSE(same("A", one, "C", one));
}

TEST(SameParts, KindsAreToldApart) {
  Server server("{}", "{}");
  const redfish::Node node = server.node();
  SameParts parts(node);
  const auto part = boost::json::parse(kNamed).as_object();
  const auto uri = [](const char* link) { return *redfish::Uri::parse(link); };
  parts.add("Fan", uri("/redfish/v1/Chassis/A/Fans/1"), part);
  EXPECT_EQ(parts.add("Drive", uri("/redfish/v1/Chassis/B/Drives/1"), part),
            nullptr);
  EXPECT_EQ(parts.add("Fan", uri("/redfish/v1/Systems/1/Fans/1"), part),
            nullptr);
  EXPECT_NE(parts.add("Fan", uri("/redfish/v1/Chassis/B/Fans/1"), part),
            nullptr);
}

}  // namespace
}  // namespace devhealth
