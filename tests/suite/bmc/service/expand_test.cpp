#include "tests/bmc/service/expand.h"

#include <gtest/gtest.h>

#include <boost/json/serialize.hpp>

#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

class Expand : public testing::Test {
 protected:
  Expand() : files_(smallService()) {
    std::string error;
    tree_ = Tree::load(files_.folder(), error);
  }

  std::string expanded(const std::string& path, const char* value) {
    boost::json::object object = *tree_->object(path);
    expand(object, path, *tree_, *parseExpand(value));
    return boost::json::serialize(object);
  }

  static bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
  }

  RecordedTree files_;
  std::optional<Tree> tree_;
};

TEST_F(Expand, MembersComeWithContent) {
  const std::string text = expanded("/redfish/v1/Systems", ".");
  EXPECT_TRUE(contains(text, R"("Id":"1")")) << text;
  EXPECT_TRUE(contains(text, R"("Id":"2")")) << text;
}

TEST_F(Expand, OneLevelLeavesReferencesBelow) {
  const std::string text = expanded("/redfish/v1/Systems", ".");
  EXPECT_TRUE(contains(
      text, R"("Processors":{"@odata.id":"/redfish/v1/Systems/1/Processors"})"))
      << text;
}

TEST_F(Expand, SecondLevelIsReachedByNumber) {
  const std::string text = expanded("/redfish/v1/Systems", ".($levels=2)");
  EXPECT_TRUE(contains(text, R"("Members":[])")) << text;
}

TEST_F(Expand, DotLeavesLinksAlone) {
  const std::string text = expanded("/redfish/v1/Systems/1", ".");
  EXPECT_TRUE(contains(text, R"("Members":[])")) << text;
  EXPECT_FALSE(contains(text, R"("Id":"2")")) << text;
}

TEST_F(Expand, TildeTakesLinksAlone) {
  const std::string text = expanded("/redfish/v1/Systems/1", "~");
  EXPECT_FALSE(contains(text, R"("Members":[])")) << text;
  EXPECT_TRUE(contains(text, R"("Id":"2")")) << text;
}

TEST_F(Expand, StarTakesBoth) {
  const std::string text = expanded("/redfish/v1/Systems/1", "*");
  EXPECT_TRUE(contains(text, R"("Members":[])")) << text;
  EXPECT_TRUE(contains(text, R"("Id":"2")")) << text;
}

TEST_F(Expand, CircleStaysAReference) {
  const std::string text = expanded("/redfish/v1/Systems/1", ".($levels=6)");
  EXPECT_TRUE(
      contains(text, R"("System":{"@odata.id":"/redfish/v1/Systems/1/"})"))
      << text;
}

TEST(ParseExpand, LevelsAreRead) {
  EXPECT_EQ(parseExpand(".($levels=3)")->levels, 3);
  EXPECT_EQ(parseExpand(".")->levels, 1);
}

TEST(ParseExpand, OtherFormsAreRefused) {
  for (const char* value : {"", "x", ".(", ".()", ".($levels=)", ".($levels=0)",
                            ".($levels=2", ".($levels=2x)"}) {
    EXPECT_FALSE(parseExpand(value)) << value;
  }
}

}  // namespace
}  // namespace bmc
