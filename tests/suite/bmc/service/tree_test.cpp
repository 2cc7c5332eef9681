#include "tests/bmc/service/tree.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

const char* const kRoot =
    R"({"@odata.type":"#ServiceRoot.v1_0_0.ServiceRoot"})";

TEST(TreeLoad, ShortLayoutStandsBelowTheRoot) {
  const RecordedTree files(smallService());
  std::string error;
  const auto tree = Tree::load(files.folder(), error);
  ASSERT_TRUE(tree) << error;
  EXPECT_NE(tree->find("/redfish/v1"), nullptr);
  EXPECT_NE(tree->find("/redfish/v1/Systems/1"), nullptr);
  EXPECT_EQ(tree->find("/redfish/v1/Systems/3"), nullptr);
}

TEST(TreeLoad, LongLayoutIsTakenAsItStands) {
  const RecordedTree files(
      Files{{"redfish/index.json", R"({"v1":"/redfish/v1/"})"},
            {"redfish/v1/index.json", kRoot},
            {"redfish/v1/Systems/index.json", "{}"}});
  std::string error;
  const auto tree = Tree::load(files.folder(), error);
  ASSERT_TRUE(tree) << error;
  EXPECT_NE(tree->find("/redfish"), nullptr);
  EXPECT_NE(tree->find("/redfish/v1/Systems"), nullptr);
}

TEST(TreeLoad, FolderWithoutServiceRootIsRefused) {
  const RecordedTree files(
      Files{{"index.json", R"({"@odata.type":"#Chassis"})"}});
  std::string error;
  EXPECT_FALSE(Tree::load(files.folder(), error));
  EXPECT_NE(error.find("service root"), std::string::npos) << error;
}

TEST(TreeLoad, SymbolicLinksAreLeftOut) {
  const RecordedTree files(
      Files{{"index.json", kRoot}, {"A/index.json", "{}"}});
  std::filesystem::create_directory(files.folder() + "/B");
  std::filesystem::create_symlink("../A/index.json",
                                  files.folder() + "/B/index.json");
  std::string error;
  const auto tree = Tree::load(files.folder(), error);
  ASSERT_TRUE(tree) << error;
  EXPECT_NE(tree->find("/redfish/v1/A"), nullptr);
  EXPECT_EQ(tree->find("/redfish/v1/B"), nullptr);
}

TEST(Tree, TextIsServedAsRecordedEvenIfItIsNoJson) {
  const RecordedTree files(
      Files{{"index.json", kRoot}, {"A/index.json", "{,\xff"}});
  std::string error;
  const auto tree = Tree::load(files.folder(), error);
  ASSERT_TRUE(tree) << error;
  EXPECT_EQ(*tree->find("/redfish/v1/A")->text, "{,\xff");
  EXPECT_EQ(tree->object("/redfish/v1/A"), nullptr);
}

TEST(Tree, ReplacedObjectIsServed) {
  const RecordedTree files(Files{{"index.json", kRoot}});
  std::string error;
  auto tree = Tree::load(files.folder(), error);
  ASSERT_TRUE(tree) << error;
  tree->replace("/redfish/v1/A", {{"Id", "A"}});
  EXPECT_EQ(*tree->find("/redfish/v1/A")->text, R"({"Id":"A"})");
  EXPECT_EQ(tree->object("/redfish/v1/A")->at("Id").as_string(), "A");
}

}  // namespace
}  // namespace bmc
