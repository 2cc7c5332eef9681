#include "syshealth/host/arg_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "suite/args/parser_scope.h"

namespace {

using args::OptionValues;
using args::ParserScope;

TEST(ArgParser, IsMissingWithoutAScope) {
  EXPECT_EQ(ArgParser::GetInstance(), nullptr);
}

TEST(ArgParser, IsMissingAfterTheScope) {
  { const ParserScope scope(OptionValues{}); }
  EXPECT_EQ(ArgParser::GetInstance(), nullptr);
}

TEST(ArgParser, IsOneObjectWhileTheScopeLives) {
  const ParserScope scope(OptionValues{});
  ASSERT_NE(ArgParser::GetInstance(), nullptr);
  EXPECT_EQ(ArgParser::GetInstance(), ArgParser::GetInstance());
}

TEST(ArgParserPresence, IsTrueForAGivenOption) {
  const ParserScope scope(OptionValues{{"device", "all"}});
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("device"));
}

TEST(ArgParserPresence, IsTrueForAnEmptyValue) {
  const ParserScope scope(OptionValues{{"device", ""}});
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("device"));
}

TEST(ArgParserPresence, IsFalseForAnAbsentOption) {
  const ParserScope scope(OptionValues{{"node", "1"}});
  EXPECT_FALSE(ArgParser::GetInstance()->GetValue("device"));
}

TEST(ArgParserText, GivesTheText) {
  const ParserScope scope(OptionValues{{"device", "fan, dimm"}});
  std::string value = "before";
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("device", value));
  EXPECT_EQ(value, "fan, dimm");
}

TEST(ArgParserText, GivesAnEmptyText) {
  const ParserScope scope(OptionValues{{"device", ""}});
  std::string value = "before";
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("device", value));
  EXPECT_EQ(value, "");
}

TEST(ArgParserText, KeepsTheValueWhenAbsent) {
  const ParserScope scope(OptionValues{});
  std::string value = "before";
  EXPECT_FALSE(ArgParser::GetInstance()->GetValue("device", value));
  EXPECT_EQ(value, "before");
}

TEST(ArgParserInteger, GivesTheNumber) {
  const ParserScope scope(OptionValues{{"node", "2"}});
  int value = 7;
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("node", value));
  EXPECT_EQ(value, 2);
}

TEST(ArgParserInteger, GivesANegativeNumber) {
  const ParserScope scope(OptionValues{{"node", "-1"}});
  int value = 7;
  EXPECT_TRUE(ArgParser::GetInstance()->GetValue("node", value));
  EXPECT_EQ(value, -1);
}

TEST(ArgParserInteger, KeepsTheValueWhenAbsent) {
  const ParserScope scope(OptionValues{});
  int value = 7;
  EXPECT_FALSE(ArgParser::GetInstance()->GetValue("node", value));
  EXPECT_EQ(value, 7);
}

TEST(ArgParserInteger, KeepsTheValueWhenNoNumber) {
  const ParserScope scope(OptionValues{{"node", "2nd"}});
  int value = 7;
  EXPECT_FALSE(ArgParser::GetInstance()->GetValue("node", value));
  EXPECT_EQ(value, 7);
}

TEST(RegisterApp, KeepsNameAndNumber) {
  const ParserScope scope(OptionValues{});
  EXPECT_EQ(ArgParser::GetInstance()->RegisterApp("syshealth", 29), 0);
  ASSERT_EQ(scope.registrations().size(), 1U);
  EXPECT_EQ(scope.registrations()[0].name, "syshealth");
  EXPECT_EQ(scope.registrations()[0].appId, 29);
}

TEST(RegisterApp, RefusesATakenName) {
  const ParserScope scope(OptionValues{});
  ArgParser::GetInstance()->RegisterApp("syshealth", 29);
  EXPECT_EQ(ArgParser::GetInstance()->RegisterApp("syshealth", 30),
            args::kParserErrorRegistered);
  EXPECT_EQ(scope.registrations().size(), 1U);
}

TEST(RegisterApp, RefusesATakenNumber) {
  const ParserScope scope(OptionValues{});
  ArgParser::GetInstance()->RegisterApp("syshealth", 29);
  EXPECT_EQ(ArgParser::GetInstance()->RegisterApp("other", 29),
            args::kParserErrorRegistered);
}

TEST(RegisterApp, RefusesAnEmptyName) {
  const ParserScope scope(OptionValues{});
  EXPECT_EQ(ArgParser::GetInstance()->RegisterApp("", 29),
            args::kParserErrorEmptyName);
}

TEST(RegisterOption, AcceptsAnEmptySpecification) {
  const ParserScope scope(OptionValues{});
  ArgParser::GetInstance()->RegisterApp("syshealth", 29);
  EXPECT_EQ(ArgParser::GetInstance()->RegisterOption(29, ""), 0);
}

TEST(RegisterOption, KeepsTheSpecification) {
  const ParserScope scope;
  ArgParser::GetInstance()->RegisterApp("export", 31);
  EXPECT_EQ(
      ArgParser::GetInstance()->RegisterOption(31, "Writes.\n--all  whole"), 0);
  const args::Specification& specification =
      scope.registrations().front().specification;
  EXPECT_EQ(specification.summary, "Writes.");
  EXPECT_EQ(specification.options.size(), 1U);
  EXPECT_EQ(scope.specificationError(), "");
}

TEST(RegisterOption, RefusesATextThatIsNoSpecification) {
  const ParserScope scope;
  ArgParser::GetInstance()->RegisterApp("syshealth", 29);
  EXPECT_EQ(ArgParser::GetInstance()->RegisterOption(29, "--colour"),
            args::kParserErrorSpecification);
  EXPECT_NE(scope.specificationError(), "");
}

TEST(RegisterOption, RefusesAnUnknownApplication) {
  const ParserScope scope(OptionValues{});
  EXPECT_EQ(ArgParser::GetInstance()->RegisterOption(29, ""),
            args::kParserErrorUnknownApp);
}

}  // namespace
