#include "suite/base/suggestion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "suite/base/time_limit.h"

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

TEST(SuggestionFor, CountsChangesAtBothEnds) {
  EXPECT_EQ(suggestionFor("rack1-server07", {"rack2-server08"}),
            "; did you mean 'rack2-server08'?");
  EXPECT_EQ(suggestionFor("rack1-server07", {"rack2-server18"}), "");
  EXPECT_EQ(suggestionFor("arck1-server70", {"rack1-server07"}),
            "; did you mean 'rack1-server07'?");
}

// A list of some thousand targets is compared with as many names.
TEST(SuggestionFor, LooksAtTheBeginningOfWhatDiffers) {
  const std::vector<std::string> candidates = {std::string(60, 'b'),
                                               std::string(64, 'a') + "b"};
  const auto before = base::stepsSoFar();
  EXPECT_EQ(suggestionFor(std::string(60, 'a'), candidates), "");
  EXPECT_LE(base::stepsSoFar() - before, 6U);
}

}  // namespace
