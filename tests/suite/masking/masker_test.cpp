#include "suite/masking/masker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace masking {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(Masker, FindsNotedValuesInTexts) {
  Masker masker;
  masker.note("SN-4711");
  const std::string value = masker.value("SN-4711");
  EXPECT_NE(value, "SN-4711");
  EXPECT_EQ(masker.text("Drive SN-4711 failed."),
            "Drive " + value + " failed.");
}

TEST(Masker, FindsValuesThatAreNotedLater) {
  Masker masker;
  EXPECT_EQ(masker.text("host alpha7"), "host alpha7");
  masker.note("alpha7");
  EXPECT_EQ(masker.text("host alpha7"), "host " + masker.value("alpha7"));
}

TEST(Masker, IgnoresBlanksAroundAValue) {
  Masker masker;
  masker.note("SN4711  ");
  EXPECT_EQ(masker.value("SN4711  "), masker.value("SN4711") + "  ");
}

TEST(Masker, FindsWordsAloneUnlessTheyAreUnmistakable) {
  Masker masker;
  masker.note("rack");
  masker.note("VM24C1180673");
  EXPECT_EQ(masker.text("rackmount"), "rackmount");
  EXPECT_EQ(masker.text("idVM24C1180673x"),
            "id" + masker.value("VM24C1180673") + "x");
}

TEST(Masker, LeavesShortValuesInTexts) {
  Masker masker;
  masker.note("1");
  masker.note("PS1");
  masker.note("1600");
  EXPECT_EQ(masker.text("PS1 delivers 1600 W of 1"),
            "PS1 delivers 1600 W of 1");
  EXPECT_NE(masker.value("1600"), "1600");
}

TEST(Masker, LeavesWordsOfTheFormatInTexts) {
  Masker masker;
  masker.keep("Chassis");
  masker.note("chassis");
  EXPECT_EQ(masker.text("/redfish/v1/Chassis/1"), "/redfish/v1/Chassis/1");
  EXPECT_NE(masker.value("chassis"), "chassis");
}

TEST(Masker, FindsValuesInLinksThatEncodeThem) {
  Masker masker;
  masker.note("Rack 4711");
  std::string encoded = masker.value("Rack 4711");
  encoded.replace(encoded.find(' '), 1, "%20");
  EXPECT_EQ(masker.text("/Chassis/Rack%204711/Fans"),
            "/Chassis/" + encoded + "/Fans");
}

TEST(Masker, FindsAddressesByTheirForm) {
  Masker masker;
  const std::string text = masker.text(
      "10.0.0.5 aa:bb:cc:00:11:22 3d9a41c8-7e02-4f5b-a6d1-90c4f82b57e3");
  EXPECT_THAT(text, Not(HasSubstr("10.0.0.5")));
  EXPECT_THAT(text, Not(HasSubstr("cc:00:11")));
  EXPECT_THAT(text, Not(HasSubstr("4f5b")));
}

TEST(Masker, LeavesVersionsThatLookLikeAddresses) {
  Masker masker;
  masker.keep("2.10.4.1");
  EXPECT_EQ(masker.text("Firmware 2.10.4.1"), "Firmware 2.10.4.1");
}

TEST(Masker, MasksAnAddressTheSameInEachForm) {
  Masker masker;
  masker.note("AA:BB:CC:00:11:22");
  const std::string masked = masker.value("AA:BB:CC:00:11:22");
  EXPECT_EQ(masker.text("nic-aabbcc001122"), "nic-" + normalForm(masked));
}

TEST(Masker, TakesTimeInProportionToATextOfManyBeginnings) {
  Masker masker;
  std::string value;
  while (value.size() + 2 <= NotedValues::kLongest) {
    value += "a-";
    masker.note(value + "b7");
  }
  std::string text;
  while (text.size() < 300000) {
    text += "a-";
  }
  EXPECT_EQ(masker.text(text), text);
}

}  // namespace
}  // namespace masking
