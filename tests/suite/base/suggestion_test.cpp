#include "suite/base/suggestion.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using base::suggestionFor;

TEST(SuggestionFor, NamesTheMostLikely) {
  EXPECT_EQ(suggestionFor("syshealht", {"export", "syshealth"}),
            "; did you mean 'syshealth'?");
  EXPECT_EQ(suggestionFor("targt", {"targets", "target"}),
            "; did you mean 'target'?");
}

TEST(SuggestionFor, CountsASwapAsOneChange) {
  EXPECT_EQ(suggestionFor("pni", {"pin"}), "; did you mean 'pin'?");
}

TEST(SuggestionFor, KeepsSilentOnOtherWords) {
  EXPECT_EQ(suggestionFor("colour", {"device", "node"}), "");
  EXPECT_EQ(suggestionFor("ab", {"abc"}), "");
  EXPECT_EQ(suggestionFor("", {"a"}), "");
  EXPECT_EQ(suggestionFor("a", {}), "");
  EXPECT_EQ(suggestionFor(std::string(100000, 'a'), {"a"}), "");
}

}  // namespace
