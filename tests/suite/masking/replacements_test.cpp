#include "suite/masking/replacements.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "suite/base/ascii.h"
#include "suite/base/filler.h"
#include "suite/masking/address_forms.h"

namespace masking {
namespace {

// Numbers that are the same at each run of the test.
Random numbers(std::uint32_t seed = 1) {
  return [engine = std::mt19937(seed)]() mutable {
    return static_cast<std::uint32_t>(engine());
  };
}

// The kinds of the characters: digits, letters by case, and what else there is.
std::string shapeOf(const std::string& text) {
  std::string shape;
  for (const char c : text) {
    shape += base::isDigit(c)      ? '9'
             : !base::isLetter(c)  ? c
             : c == base::lower(c) ? 'a'
                                   : 'A';
  }
  return shape;
}

TEST(Replacements, HaveLengthAndShapeOfTheirValues) {
  Replacements replacements(numbers());
  for (const char* value : {"VM24C1180673", "abc-77/Q", "n3.example.com"}) {
    const std::string made = replacements.of(value);
    EXPECT_NE(made, value);
    EXPECT_EQ(shapeOf(made), shapeOf(value));
  }
}

TEST(Replacements, AreTheSameForTheSameValue) {
  Replacements replacements(numbers());
  EXPECT_EQ(replacements.of("VM24C118"), replacements.of("VM24C118"));
  EXPECT_EQ(base::lowerCase(replacements.of("VM24C118")),
            replacements.of("vm24c118"));
}

TEST(Replacements, AreTheSameForEachWayToWriteAnAddress) {
  Replacements replacements(numbers());
  const std::string colons = replacements.of("aa:bb:cc:00:11:22");
  std::string dashes = replacements.of("AA-BB-CC-00-11-22");
  std::string plain = replacements.of("aabbcc001122");
  EXPECT_EQ(shapeOf(colons), "aa:aa:aa:99:99:99");
  EXPECT_EQ(normalForm(colons), normalForm(dashes));
  EXPECT_EQ(normalForm(colons), plain);
}

TEST(Replacements, DifferForDifferentValues) {
  Replacements replacements(numbers());
  std::set<std::string> made;
  for (int i = 1000; i < 3000; ++i) {
    made.insert(replacements.of("S" + std::to_string(i)));
  }
  EXPECT_EQ(made.size(), 2000U);
}

TEST(Replacements, AreNoneOfTheReservedValues) {
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    Replacements replacements(numbers(seed));
    for (char c = '1'; c < '9'; ++c) {
      replacements.reserve(std::string(1, c));
    }
    EXPECT_EQ(replacements.of("5"), "9");
  }
}

TEST(Replacements, EndWhereThereAreNotEnoughOfAShape) {
  Replacements replacements(numbers());
  for (int i = 1; i <= 9; ++i) {
    EXPECT_EQ(replacements.of(std::to_string(i)).size(), 1U);
  }
}

TEST(Replacements, AreNotTheValueItselfWhereNoneIsLeft) {
  Replacements replacements(numbers());
  for (char c = '0'; c <= '9'; ++c) {
    replacements.reserve(std::string(1, c));
  }
  for (char c = '0'; c <= '9'; ++c) {
    EXPECT_NE(replacements.of(std::string(1, c)), std::string(1, c));
  }
}

TEST(Replacements, OfAddressesAreAddresses) {
  Replacements replacements(numbers());
  for (int i = 0; i < 100; ++i) {
    const std::string address = "10.200.0." + std::to_string(100 + i);
    const std::string made = replacements.of(address);
    EXPECT_TRUE(isIpv4(made)) << made;
    EXPECT_EQ(shapeOf(made), shapeOf(address));
  }
}

TEST(Replacements, LeaveWhatStandsForNoValue) {
  Replacements replacements(numbers());
  for (const char* value : {"", "N/A", "To be filled by O.E.M.",
                            "00000000-0000-0000-0000-000000000000", "--"}) {
    EXPECT_EQ(replacements.of(value), value);
  }
}

TEST(Replacements, AreNeverFillers) {
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    Replacements replacements(numbers(seed));
    EXPECT_FALSE(base::isFiller(replacements.of("345")));
  }
}

TEST(Replacements, OfLettersBeyondAsciiAreOthersOfTheSameSize) {
  Replacements replacements(numbers());
  const std::string made = replacements.of("Kühlraum");
  EXPECT_EQ(made.size(), std::string("Kühlraum").size());
  EXPECT_EQ(made.find("ü"), std::string::npos);
}

TEST(Replacements, DependOnNothingButTheRandomNumbers) {
  Replacements first(numbers());
  Replacements second(numbers());
  EXPECT_EQ(first.of("ABX123"), second.of("XYZ987"));
}

TEST(SystemRandom, DiffersFromRunToRun) {
  Replacements first(systemRandom());
  Replacements second(systemRandom());
  EXPECT_NE(first.of("VM24C1180673VM24C1180673"),
            second.of("VM24C1180673VM24C1180673"));
}

}  // namespace
}  // namespace masking
