#include "tests/golden/case.h"

#include <gtest/gtest.h>

#include "tests/golden/text_file.h"
#include "tests/support/temp_folder.h"

namespace golden {
namespace {

namespace fs = std::filesystem;

class FindCases : public testing::Test {
 protected:
  FindCases() { fs::create_directories(root_ / "login" / "wrong-user"); }

  fs::path at(const std::string& file) const {
    return root_ / "login" / "wrong-user" / file;
  }

  const support::TempFolder folder_;
  const fs::path& root_ = folder_.path();
};

TEST_F(FindCases, EachArgumentFileIsARun) {
  writeText(at("args"), "x\n");
  writeText(at("args-in-band"), "x\n");
  const auto cases = findCases(root_);
  ASSERT_EQ(cases.size(), 2U);
  EXPECT_EQ(cases[0].name, "login/wrong_user");
  EXPECT_EQ(cases[1].name, "login/wrong_user/in_band");
  EXPECT_TRUE(cases[0].first);
  EXPECT_FALSE(cases[1].first);
}

TEST_F(FindCases, EachVariantIsARunWithItsValues) {
  writeText(at("args"), "x\n");
  writeText(at("variants"), "busy | CODE=503 | TEXT=a = b\ngone | CODE=404\n");
  const auto cases = findCases(root_);
  ASSERT_EQ(cases.size(), 2U);
  EXPECT_EQ(cases[0].name, "login/wrong_user/busy");
  EXPECT_EQ(cases[0].filled("@CODE@: @TEXT@"), "503: a = b");
  EXPECT_EQ(cases[1].filled("@CODE@"), "404");
}

TEST_F(FindCases, VariantsOwnFileGoesFirst) {
  writeText(at("args"), "x\n");
  writeText(at("variants"), "busy | CODE=503\n");
  writeText(at("stdout"), "y\n");
  EXPECT_EQ(findCases(root_).at(0).file("stdout"), at("stdout"));
  writeText(at("stdout-busy"), "z\n");
  EXPECT_EQ(findCases(root_).at(0).file("stdout"), at("stdout-busy"));
}

TEST_F(FindCases, NearestFolderAboveIsInherited) {
  writeText(at("args"), "x\n");
  writeText(root_ / "env", "A=1\n");
  EXPECT_EQ(findCases(root_).at(0).inherited("env"), root_ / "env");
  writeText(root_ / "login" / "env", "A=2\n");
  EXPECT_EQ(findCases(root_).at(0).inherited("env"), root_ / "login" / "env");
}

}  // namespace
}  // namespace golden
