#include "tests/golden/expectations.h"

#include <gtest/gtest.h>

namespace golden {
namespace {

using Texts = std::vector<std::string>;

const Figures kFigures{{"requests", 27}, {"opened", 2}, {"closed", 1}};

TEST(Unmet, MetExpectationsSayNothing) {
  EXPECT_EQ(unmet("requests <= 27\nrequests == 27\nrequests >= 1\n", kFigures),
            Texts{});
}

TEST(Unmet, EachUnmetExpectationTellsTheFigure) {
  EXPECT_EQ(unmet("requests <= 26\nopened == 1\n", kFigures),
            (Texts{"requests <= 26: was 27", "opened == 1: was 2"}));
}

TEST(Unmet, FiguresAreHeldAgainstOneAnother) {
  EXPECT_EQ(unmet("closed == opened", kFigures),
            Texts{"closed == opened: was 1"});
}

TEST(Unmet, UnknownFigureIsUnmet) {
  EXPECT_EQ(unmet("reqests <= 27", kFigures),
            Texts{"reqests <= 27: cannot be read"});
}

TEST(Unmet, UnknownRelationIsUnmet) {
  EXPECT_EQ(unmet("requests != 27", kFigures),
            Texts{"requests != 27: cannot be read"});
}

TEST(Unmet, MissingOrBrokenNumberIsUnmet) {
  EXPECT_EQ(
      unmet("requests <=\nrequests <= 2x", kFigures),
      (Texts{"requests <=: cannot be read", "requests <= 2x: cannot be read"}));
}

TEST(FiguresOf, CountersHaveTheControllersNames) {
  bmc::Counters counters;
  counters.sessionsCreated = 3;
  EXPECT_EQ(figuresOf(counters).at("sessionsCreated"), 3U);
}

}  // namespace
}  // namespace golden
