#include "suite/redfish/graph/graph.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace redfish {
namespace {

Resource resourceOf(const char* link, const char* body) {
  return {*Uri::parse(link), ResourceState::kRead,
          json::parse(body).as_object(), std::nullopt};
}

Graph thermalGraph() {
  Graph graph;
  graph.insert(resourceOf("/redfish/v1/T", R"({
      "Fans": [{"Name": "first"}, {"Name": "second"}],
      "a/b": {"Name": "slash"}, "c~d": {"Name": "tilde"}, "": {"Name": "none"},
      "01": {"Name": "digits"}, "text": "x"})"));
  return graph;
}

std::string nameAt(const Graph& graph, const char* link) {
  const LinkTarget found = graph.resolve(*Uri::parse(link));
  if (found.document == nullptr) {
    return "never asked for";
  }
  return found.object == nullptr ? "nothing"
                                 : std::string(stringAt(*found.object, "Name"));
}

TEST(GraphFind, FindsByDocumentKey) {
  const Graph graph = thermalGraph();
  ASSERT_NE(graph.find("/redfish/v1/T"), nullptr);
  EXPECT_EQ(graph.find("/redfish/v1/T")->uri.document(), "/redfish/v1/T");
  EXPECT_EQ(graph.find("/redfish/v1/U"), nullptr);
}

TEST(GraphInsert, ReplacesTheResourceOfTheSameDocument) {
  Graph graph;
  graph.insert(resourceOf("/redfish/v1/A", R"({"Name": "old"})"));
  graph.insert(resourceOf("/redfish/v1/A/", R"({"Name": "new"})"));
  EXPECT_EQ(graph.resources().size(), 1U);
  EXPECT_EQ(nameAt(graph, "/redfish/v1/A"), "new");
}

TEST(GraphInsert, OtherResourcesKeepTheirPlace) {
  Graph graph;
  const Resource& first = graph.insert(resourceOf("/redfish/v1/A", "{}"));
  graph.insert(resourceOf("/redfish/v1/B", "{}"));
  graph.insert(resourceOf("/redfish/v1/0", "{}"));
  EXPECT_EQ(graph.find("/redfish/v1/A"), &first);
}

TEST(GraphResolve, WithoutFragmentGivesTheBody) {
  const Graph graph = thermalGraph();
  const LinkTarget found = graph.resolve(*Uri::parse("/redfish/v1/T"));
  EXPECT_EQ(found.object, &found.document->body);
}

TEST(GraphResolve, FollowsArrayIndices) {
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/Fans/1"), "second");
}

TEST(GraphResolve, UndoesPointerEscapes) {
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/a~1b"), "slash");
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/c~0d"), "tilde");
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/a%7e1b"), "slash");
}

TEST(GraphResolve, EmptyAndNumericTokensAreNamesInObjects) {
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/"), "none");
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/T#/01"), "digits");
}

TEST(GraphResolve, PointersToNothingGiveNoObject) {
  for (const char* fragment :
       {"Fans/0", "/Fans/2", "/Fans/-1", "/Fans/-", "/Fans/00", "/Fans/1x",
        "/Fans/99999999999999999999", "/Fans/", "/Fans", "/text", "/text/0",
        "/c~d", "/c~", "/Fans/0/Name/x"}) {
    EXPECT_EQ(nameAt(thermalGraph(),
                     ("/redfish/v1/T#" + std::string(fragment)).c_str()),
              "nothing")
        << fragment;
  }
}

TEST(GraphResolve, UnreadDocumentHasNoObject) {
  Graph graph;
  Resource resource = resourceOf("/redfish/v1/A", "{}");
  resource.state = ResourceState::kUnreadable;
  graph.insert(std::move(resource));
  EXPECT_EQ(nameAt(graph, "/redfish/v1/A"), "nothing");
}

TEST(GraphResolve, UnknownDocumentIsNotFound) {
  EXPECT_EQ(nameAt(thermalGraph(), "/redfish/v1/U"), "never asked for");
}

TEST(GraphFollow, FollowsTheLinkAtAPath) {
  const Graph graph = thermalGraph();
  const json::object holder =
      json::parse(
          R"({"Links": {"Fan": {"@odata.id": "/redfish/v1/T#/Fans/0"}}})")
          .as_object();
  const LinkTarget found = graph.follow(holder, "Links/Fan");
  ASSERT_NE(found.object, nullptr);
  EXPECT_EQ(stringAt(*found.object, "Name"), "first");
}

TEST(GraphFollow, WithoutLinkFindsNothing) {
  const LinkTarget found = thermalGraph().follow(json::object(), "Links/Fan");
  EXPECT_EQ(found.document, nullptr);
  EXPECT_EQ(found.object, nullptr);
}

}  // namespace
}  // namespace redfish
