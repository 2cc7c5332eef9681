#include "suite/devhealth/parts/value.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <cstdint>
#include <limits>

namespace devhealth {
namespace {

std::string text(const char* value) {
  return textOf(boost::json::parse(value));
}

std::optional<double> number(const char* value) {
  return numberOf(boost::json::parse(value));
}

TEST(TextOf, StringIsTrimmed) {
  EXPECT_EQ(text(R"("  Prismorel ")"), "Prismorel");
}

TEST(TextOf, LineBreaksAndControlsBecomeOneBlank) {
  EXPECT_EQ(text(R"("one\r\n\ttwo\u001b[31m")"), "one two [31m");
  EXPECT_EQ(text(R"("a\u0085b\u2028c\u007fd")"), "a b c d");
}

TEST(TextOf, DirectionalOverridesAreDropped) {
  EXPECT_EQ(text(R"("ab\u202ecd\u2069")"), "abcd");
}

TEST(TextOf, InvalidUtf8IsReplaced) {
  EXPECT_EQ(recordText("a\xFFz"), "a\xEF\xBF\xBDz");
}

TEST(TextOf, PlaceholdersAreNoValue) {
  for (const char* placeholder :
       {"N/A", "na", "NULL", "Not Specified", "default STRING",
        " To Be Filled By O.E.M. "}) {
    EXPECT_EQ(recordText(placeholder), "") << placeholder;
  }
}

TEST(TextOf, TextThatOnlyHoldsAPlaceholderStays) {
  EXPECT_EQ(recordText("NA-4200"), "NA-4200");
}

TEST(TextOf, IntegersKeepAllDigits) {
  EXPECT_EQ(text("4200"), "4200");
  EXPECT_EQ(text("-7"), "-7");
  EXPECT_EQ(text("18446744073709551615"), "18446744073709551615");
}

TEST(TextOf, RealsHaveNoTrailingZeros) {
  EXPECT_EQ(text("2333.0"), "2333");
  EXPECT_EQ(text("1.5"), "1.5");
  EXPECT_EQ(text("2.96"), "3");
  EXPECT_EQ(text("-0.01"), "0");
}

TEST(TextOf, NumbersOutOfAllReasonAreNoValue) {
  EXPECT_EQ(text("1e400"), "");
  EXPECT_EQ(text("1e300"), "");
}

TEST(TextOf, OtherKindsAreNoValue) {
  for (const char* value : {"null", "true", "{}", "[]", "[\"x\"]"}) {
    EXPECT_EQ(text(value), "") << value;
  }
}

TEST(TextOf, LongTextIsCutAtACharacter) {
  std::string longText;
  while (longText.size() < 65536) {
    longText += "\xC3\xA9";
  }
  const std::string cut = recordText(longText);
  EXPECT_LE(cut.size(), kMaxTextBytes);
  EXPECT_GT(cut.size(), kMaxTextBytes - 8);
  EXPECT_EQ(cut.substr(cut.size() - 5), "\xC3\xA9...");
}

TEST(NumberOf, TakesNumbersOfEveryKind) {
  EXPECT_EQ(number("3200"), 3200);
  EXPECT_EQ(number("-1"), -1);
  EXPECT_EQ(number("3.5"), 3.5);
}

TEST(NumberOf, TakesStringsThatAreWhollyANumber) {
  EXPECT_EQ(number(R"("3200")"), 3200);
  EXPECT_EQ(number(R"("  3200 ")"), 3200);
  EXPECT_EQ(number(R"("1.5e3")"), 1500);
}

TEST(NumberOf, RefusesOtherStrings) {
  for (const char* value : {R"("")", R"("3200 MHz")", R"("0x10")", R"("inf")",
                            R"("nan")", R"("1e999")", R"("N/A")"}) {
    EXPECT_EQ(number(value), std::nullopt) << value;
  }
}

TEST(NumberOf, RefusesOtherKindsAndInfinity) {
  for (const char* value :
       {"null", "true", "{}", "[1]", "1e400", "18446744073709551615"}) {
    EXPECT_EQ(number(value), std::nullopt) << value;
  }
}

TEST(FirstTextAt, SkipsWhatHoldsNoText) {
  const auto object =
      boost::json::parse(R"({"a": null, "b": "N/A", "c": {"d": "x"}})")
          .as_object();
  EXPECT_EQ(firstTextAt(object, {"a", "b", "c/d"}), "x");
  EXPECT_EQ(firstTextAt(object, {"a", "missing"}), "");
}

TEST(PositiveAt, LeavesOutZeroAndLess) {
  const auto object =
      boost::json::parse(R"({"a": 0, "b": -3, "c": "7"})").as_object();
  EXPECT_EQ(positiveAt(object, "a"), std::nullopt);
  EXPECT_EQ(positiveAt(object, "b"), std::nullopt);
  EXPECT_EQ(positiveAt(object, "c"), 7);
}

TEST(Quantity, JoinsNumberAndUnit) {
  EXPECT_EQ(quantity(9000, "RPM"), "9000 RPM");
  EXPECT_EQ(quantity(12.5, "%"), "12.5 %");
  EXPECT_EQ(quantity(std::nullopt, "W"), "");
}

}  // namespace
}  // namespace devhealth
