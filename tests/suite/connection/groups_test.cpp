#include "suite/connection/settings/groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "suite/connection/settings/settings.h"

namespace {

using connection::matchesPattern;
using ::testing::ElementsAre;

constexpr char kTargets[] =
    "[targets.rack1-n10]\naddress = 'a'\n"
    "[targets.rack1-n2]\naddress = 'b'\n"
    "[targets.spare-7]\naddress = 'c'\n";

// Settings that name three targets and have these lines in [groups].
base::Result<connection::Settings> withGroups(const std::string& lines) {
  return connection::readSettings("[groups]\n" + lines + kTargets, "s.toml",
                                  "/home/ada");
}

std::string groupError(const std::string& lines) {
  const auto settings = withGroups(lines);
  EXPECT_FALSE(settings) << lines;
  return settings.error().cause;
}

TEST(MatchesPattern, StarIsAnyTextAndQuestionMarkOneByte) {
  EXPECT_TRUE(matchesPattern("rack1-n3", "rack1-n3"));
  EXPECT_TRUE(matchesPattern("rack1-n3", "rack1-*"));
  EXPECT_TRUE(matchesPattern("rack1-n3", "*"));
  EXPECT_TRUE(matchesPattern("", "*"));
  EXPECT_TRUE(matchesPattern("rack1-n3", "*-n?"));
  EXPECT_TRUE(matchesPattern("aXbXc", "a*X*c"));
  EXPECT_FALSE(matchesPattern("rack1-n31", "*-n?"));
  EXPECT_FALSE(matchesPattern("rack1-n3", "rack1"));
  EXPECT_FALSE(matchesPattern("rack1", "rack1-*"));
  EXPECT_FALSE(matchesPattern("", "?"));
}

TEST(Groups, HoldTheTargetsOfNamesAndPatternsOnceAndInOrder) {
  const auto settings = withGroups(
      "rack1 = ['spare-7', 'rack1-*', 'rack1-n2', 'spare-?']\nnone = []\n");
  ASSERT_TRUE(settings) << settings.error().cause;
  EXPECT_THAT(settings->groups.at("rack1"),
              ElementsAre("spare-7", "rack1-n2", "rack1-n10"));
  EXPECT_TRUE(settings->groups.at("none").empty());
}

TEST(Groups, NameThatIsNoTargetIsRefusedWithTheMostSimilar) {
  EXPECT_EQ(groupError("rack1 = ['rack1-*',\n'spare-8']\n"),
            "s.toml:3: 'rack1' in [groups] names 'spare-8', which is no "
            "target; did you mean 'spare-7'?");
  EXPECT_EQ(groupError("rack1 = ['rack2-*']\n"),
            "s.toml:2: 'rack1' in [groups] has a pattern that stands for no "
            "target: 'rack2-*'");
}

TEST(Groups, OtherValuesAndNamesAreRefused) {
  EXPECT_EQ(groupError("rack1 = 'rack1-*'\n"),
            "s.toml:2: 'rack1' in [groups] must be a list of targets: "
            "[\"rack1-*\", \"spare-7\"]");
  EXPECT_EQ(groupError("rack1 = [7]\n"),
            "s.toml:2: 'rack1' in [groups] must hold texts in quotation marks "
            "alone");
  EXPECT_EQ(groupError("'rack 1' = []\n"),
            "s.toml:2: 'rack 1' in [groups] is no name for a group: letters, "
            "digits, '-', '_' and '.'");
}

TEST(FindGroup, TellsWhichGroupsThereAre) {
  const auto settings = withGroups("rack1 = ['*']\n");
  ASSERT_TRUE(settings) << settings.error().cause;
  EXPECT_EQ((*findGroup(*settings, "rack1"))->size(), 3U);
  const auto other = findGroup(*settings, "rak1");
  ASSERT_FALSE(other);
  EXPECT_EQ(other.error().cause,
            "'rak1' is no group in s.toml (rack1); did you mean 'rack1'?");
  const auto none = findGroup(connection::Settings(), "rack1");
  ASSERT_FALSE(none);
  EXPECT_EQ(none.error().cause,
            "there is no settings file that would name groups");
}

}  // namespace
