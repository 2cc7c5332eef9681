#include "suite/redfish/recording/body_masking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "suite/base/time_limit.h"

namespace redfish {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string masked(const std::string& body, masking::Masker& masker) {
  noteBody(body, masker);
  return maskBody(body, masker);
}

std::string masked(const std::string& body) {
  masking::Masker masker;
  return masked(body, masker);
}

TEST(MaskBody, MasksValuesOfIdentifyingMembers) {
  for (const char* name :
       {"SerialNumber", "serial_number", "ChassisSerialNumber", "AssetTag",
        "UUID", "ServiceTag", "MACAddress", "PermanentMACAddress", "HostName",
        "FQDN", "UserName", "DurableName", "NodeGUID", "WWN"}) {
    const std::string body = std::string("{\"") + name + "\": \"QX4711ab\"}";
    EXPECT_THAT(masked(body), Not(HasSubstr("QX4711ab"))) << name;
    EXPECT_EQ(masked(body).size(), body.size()) << name;
  }
}

TEST(MaskBody, LeavesOtherMembersByteForByte) {
  const std::string body =
      "{ \"Model\":\"R2480 \\u0041\",\n\t\"SpeedRPM\" : 6480.50, \"A\": [1e3 ],"
      "\"SerialNumberSupported\": true, \"SerialNumber\": null}\n";
  EXPECT_EQ(masked(body), body);
}

TEST(MaskBody, MasksEntriesOfArraysAndNumbers) {
  const std::string body =
      R"({"MACAddresses": ["qx4711ab", "qx4712ab"], "SerialNumber": 471100})";
  EXPECT_THAT(masked(body), Not(HasSubstr("qx471")));
  EXPECT_THAT(masked(body), Not(HasSubstr("471100")));
}

TEST(MaskBody, MasksLinksMessagesAndNamesOfMembers) {
  masking::Masker masker;
  const std::string body =
      R"({"SerialNumber": "QX4711ab", "@odata.id": "/redfish/v1/A/QX4711ab",)"
      R"("MessageArgs": ["QX4711ab"], "Oem": {"QX4711ab": {}},)"
      R"("error": {"message": "no QX4711ab here"}})";
  const std::string text = masked(body, masker);
  EXPECT_THAT(text, Not(HasSubstr("4711")));
  EXPECT_THAT(text, HasSubstr("/redfish/v1/A/" + masker.value("QX4711ab")));
}

TEST(MaskBody, LeavesWordsOfTheFormat) {
  const std::string body =
      R"({"@odata.type": "#Fan.v1_5_0.Fan", "Name": "Fan 1",)"
      R"("Status": {"Health": "Warning"}, "MessageId": "Base.1.8.0.1.Fan"})";
  EXPECT_EQ(masked(body), body);
  masking::Masker masker;
  masker.note("Warning");
  masker.note("Status");
  EXPECT_EQ(masked(body, masker), body);
}

TEST(MaskBody, LeavesVersionsThatLookLikeAddresses) {
  const std::string body =
      R"({"FirmwareVersion": "2.10.4.1", "Description": "since 2.10.4.1"})";
  EXPECT_EQ(masked(body), body);
}

TEST(MaskBody, MasksEscapedTextsAndKeepsThemValid) {
  masking::Masker masker;
  const std::string body =
      R"({"AssetTag": "a\"b\u00344711", "Name": "\"a\"b44711\" \\"})";
  const std::string text = masked(body, masker);
  EXPECT_THAT(text, Not(HasSubstr("4711")));
  EXPECT_THAT(text, HasSubstr(R"("Name": "\")"));
  EXPECT_THAT(text, HasSubstr(R"(\" \\"})"));
}

TEST(MaskBody, BlackensPasswordsAndTokens) {
  const std::string text =
      masked(R"({"Password": "hunter2", "AuthToken": "abcdef"})");
  EXPECT_EQ(text, R"({"Password": "XXXXXXX", "AuthToken": "XXXXXX"})");
}

TEST(MaskBody, MasksWhatIsNoJson) {
  masking::Masker masker;
  masker.note("alpha-17");
  const std::string page =
      maskBody("<p title=\"x\">Host alpha-17 (10.0.0.5)</p>", masker);
  EXPECT_THAT(page, testing::StartsWith("<p title=\"x\">Host "));
  EXPECT_THAT(page, testing::EndsWith(")</p>"));
  EXPECT_EQ(page.size(), 41U);
  EXPECT_THAT(page, Not(HasSubstr("alpha-17")));
  EXPECT_THAT(page, Not(HasSubstr("10.0.0.5")));
  const std::string cut = R"({"SerialNumber": "QX4711ab", "Name": "QX4711)";
  EXPECT_THAT(masked(cut), Not(HasSubstr("QX4711ab")));
}

// A body with so many values below one name of the same length.
double stepsOfLongName(int size) {
  std::string body = R"({")" + std::string(static_cast<std::size_t>(size), 'n');
  body += R"(Serial":[)";
  for (int value = 0; value < size; ++value) {
    body += R"("a",)";
  }
  body += "1]}";
  masking::Masker masker;
  const auto before = base::stepsSoFar();
  noteBody(body, masker);
  maskBody(body, masker);
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(StepsOfBodyMasking, ANameIsReadOnceForAllItsValues) {
  EXPECT_LE(stepsOfLongName(2000), stepsOfLongName(200) * 12);
}

}  // namespace
}  // namespace redfish
