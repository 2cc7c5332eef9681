#include "suite/args/specification.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using args::parseSpecification;
using args::Specification;

Specification parsed(const std::string& text) {
  const auto specification = parseSpecification(text);
  EXPECT_TRUE(specification) << specification.error().cause;
  return specification ? *specification : Specification();
}

std::string errorOf(const std::string& text) {
  const auto specification = parseSpecification(text);
  EXPECT_FALSE(specification);
  return specification ? "" : specification.error().cause;
}

TEST(ParseSpecification, EmptyTextSaysNothing) {
  const Specification specification = parsed("");
  EXPECT_EQ(specification.summary, "");
  EXPECT_TRUE(specification.options.empty());
  EXPECT_FALSE(specification.plugInExit);
  EXPECT_FALSE(specification.manyTargets);
}

TEST(ParseSpecification, FirstLineIsTheSummary) {
  const Specification specification = parsed("Writes JSON.\n");
  EXPECT_EQ(specification.summary, "Writes JSON.");
  EXPECT_TRUE(specification.options.empty());
}

TEST(ParseSpecification, ReadsOptionsLaidOutLikeAHelpText) {
  const Specification specification = parsed(
      "Writes JSON.\n"
      "      --format NAME     json, prometheus\n"
      "                        or csv\n"
      "      --all\n"
      "\n"
      "--level N\n"
      "  --brief  in short\n");
  ASSERT_EQ(specification.options.size(), 4U);
  EXPECT_EQ(specification.options[0].name, "--format");
  EXPECT_EQ(specification.options[0].argument, "NAME");
  EXPECT_EQ(specification.options[0].help, "json, prometheus or csv");
  EXPECT_EQ(specification.options[1].name, "--all");
  EXPECT_EQ(specification.options[1].argument, "");
  EXPECT_EQ(specification.options[1].help, "");
  EXPECT_EQ(specification.options[2].argument, "N");
  EXPECT_EQ(specification.options[3].argument, "");
  EXPECT_EQ(specification.options[3].help, "in short");
}

TEST(ParseSpecification, ReadsThePolicies) {
  const Specification specification =
      parsed("Checks.\nexit: plug-in\ntargets: many\n");
  EXPECT_TRUE(specification.plugInExit);
  EXPECT_TRUE(specification.manyTargets);
}

TEST(ParseSpecification, NamesTheLineThatIsNotUnderstood) {
  EXPECT_EQ(errorOf("--format NAME"),
            "line 1 of its options does not say what the application does");
  EXPECT_EQ(errorOf("\n--format NAME"),
            "line 1 of its options does not say what the application does");
  EXPECT_EQ(errorOf("Writes.\n--For_mat"),
            "line 2 of its options is no option");
  EXPECT_EQ(errorOf("Writes.\n--"), "line 2 of its options is no option");
  EXPECT_EQ(errorOf("Writes.\n--format NAME OTHER"),
            "line 2 of its options is no option");
  EXPECT_EQ(errorOf("Writes.\n--all\n--all"),
            "line 3 of its options repeats the option --all");
  EXPECT_EQ(errorOf("Writes.\nexit: soon"),
            "line 2 of its options is not understood");
  EXPECT_EQ(errorOf("Writes.\n  floating help"),
            "line 2 of its options is not understood");
}

}  // namespace
