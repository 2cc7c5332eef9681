#include "tests/bmc/faults/tree_edit.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

namespace json = boost::json;

class ApplyTreeEdit : public testing::Test {
 protected:
  ApplyTreeEdit() : files_(smallService()) {
    std::string error;
    tree_ = *Tree::load(files_.folder(), error);
  }

  std::string textAt(const char* path) const {
    const StoredResource* resource = tree_.find(path);
    return resource == nullptr ? "absent" : *resource->text;
  }

  RecordedTree files_;
  Tree tree_;
};

TEST_F(ApplyTreeEdit, PatternReachesEveryResourceThatFits) {
  TreeEdit edit;
  edit.path = "/redfish/v1/Systems/[12]";
  edit.json.set = {{"/Id", "X"}};
  apply(edit, tree_);
  EXPECT_EQ(tree_.object("/redfish/v1/Systems/1")->at("Id"), "X");
  EXPECT_EQ(tree_.object("/redfish/v1/Systems/2")->at("Id"), "X");
}

TEST_F(ApplyTreeEdit, AbsentResourceIsGone) {
  TreeEdit edit;
  edit.path = "/redfish/v1/Systems/2";
  edit.absent = true;
  apply(edit, tree_);
  EXPECT_EQ(textAt("/redfish/v1/Systems/2"), "absent");
}

TEST_F(ApplyTreeEdit, NewPathMakesANewResource) {
  TreeEdit edit;
  edit.path = "/redfish/v1/Systems/3";
  edit.json.set = {{"/Id", "3"}};
  apply(edit, tree_);
  EXPECT_EQ(textAt("/redfish/v1/Systems/3"),
            R"({"@odata.id":"/redfish/v1/Systems/3","Id":"3"})");
}

std::string edited(const char* text, const JsonEdit& edit) {
  json::value document = json::parse(text);
  apply(edit, document);
  return json::serialize(document);
}

TEST(ApplyJsonEdit, RemovesBeforeItSets) {
  JsonEdit edit;
  edit.remove = {"/a", "/none"};
  edit.set = {{"/b", 1}};
  EXPECT_EQ(edited(R"({"a":1})", edit), R"({"b":1})");
}

TEST(ApplyJsonEdit, FillKeepsLinksAlone) {
  JsonEdit edit;
  edit.fill = nullptr;
  EXPECT_EQ(edited(R"({"@odata.id":"/a","Name":"x","Status":{"Health":"OK"},)"
                   R"("Members":[{"@odata.id":"/b","Id":"1"}],"Links":{"N":2,)"
                   R"("C":{"@odata.id":"/c"}}})",
                   edit),
            R"({"@odata.id":"/a","Name":null,"Status":null,)"
            R"("Members":[{"@odata.id":"/b","Id":null}],"Links":{"N":null,)"
            R"("C":{"@odata.id":"/c"}}})");
}

}  // namespace
}  // namespace bmc
