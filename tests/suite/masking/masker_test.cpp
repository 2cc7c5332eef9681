#include "suite/masking/masker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "suite/base/time_limit.h"
#include "suite/masking/noted_values.h"

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

TEST(Masker, FindsTheLongestValueOfThoseThatBeginAtAPlace) {
  Masker masker;
  masker.note("SN-47");
  masker.note("SN-47-11");
  EXPECT_EQ(masker.text("SN-47-11 SN-47 SN-47-1"),
            masker.value("SN-47-11") + " " + masker.value("SN-47") + " " +
                masker.value("SN-47") + "-1");
}

TEST(Masker, FindsAValueThatBeginsInsideAnotherOnesBeginning) {
  Masker masker;
  masker.note("rack-unit-9");
  masker.note("unit-seven");
  EXPECT_EQ(masker.text("rack-unit-seven"),
            "rack-" + masker.value("unit-seven"));
}

TEST(Masker, FindsValuesAcrossThePartsOfALongText) {
  Masker masker;
  masker.note("VM24C1180673");
  const std::string masked = masker.value("VM24C1180673");
  for (std::size_t before = 65520; before < 65540; ++before) {
    const std::string blanks(before, ' ');
    EXPECT_EQ(masker.text(blanks + "VM24C1180673"), blanks + masked);
  }
}

TEST(Masker, NotesNoMoreThanItHasRoomFor) {
  Masker masker;
  std::size_t bytes = 0;
  for (int number = 1000000; bytes < Masker::kMostNoted - 100; ++number) {
    masker.note("SN" + std::to_string(number));
    bytes += 9;
  }
  EXPECT_FALSE(masker.exceeded());
  for (int number = 100; number < 200; ++number) {
    masker.note("TAG" + std::to_string(number));
  }
  EXPECT_TRUE(masker.exceeded());
}

// What masking costs, in counted steps: ten times as much may cost twelve times
// as many.
constexpr double kMostGrowth = 12;

double stepsOf(const std::function<void()>& work) {
  const auto before = base::stepsSoFar();
  work();
  return static_cast<double>(base::stepsSoFar() - before);
}

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int time = 0; time < times; ++time) {
    all += text;
  }
  return all;
}

TEST(StepsOfMasking, ATextOfManyBeginningsIsReadOnce) {
  Masker masker;
  std::string value;
  while (value.size() + 2 <= NotedValues::kLongest) {
    value += "a-";
    masker.note(value + "b7");
  }
  masker.text("");
  const auto steps = [&masker](int times) {
    const std::string text = repeated("a-", times);
    return stepsOf([&] { EXPECT_EQ(masker.text(text), text); });
  };
  EXPECT_LE(steps(10000), steps(1000) * kMostGrowth);
  // At each place no more than a few, however long the values are.
  EXPECT_LE(steps(10000), 20000.0 * 8);
}

TEST(StepsOfMasking, ManyValuesOfOneShapeAreReplacedOnce) {
  const auto steps = [](int times) {
    Masker masker;
    std::vector<std::string> values;
    for (int time = 0; time < times; ++time) {
      // Ten values of a shape, and so no replacement is left.
      std::string shape = std::to_string(time);
      for (char& c : shape) {
        c = "-./:;,+*=~"[c - '0'];
      }
      for (char digit = '0'; digit <= '9'; ++digit) {
        values.push_back(shape + "(" + digit);
        masker.note(values.back());
      }
    }
    return stepsOf([&] {
      for (const std::string& value : values) {
        EXPECT_EQ(masker.value(value).size(), value.size());
      }
    });
  };
  EXPECT_LE(steps(2000), steps(200) * kMostGrowth);
}

}  // namespace
}  // namespace masking
