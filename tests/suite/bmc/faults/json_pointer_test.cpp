#include "tests/bmc/faults/json_pointer.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

namespace bmc {
namespace {

namespace json = boost::json;

std::string after(const char* text, const char* pointer,
                  const json::value& value) {
  json::value root = json::parse(text);
  return setAt(root, pointer, value) ? json::serialize(root) : "no place";
}

std::string without(const char* text, const char* pointer) {
  json::value root = json::parse(text);
  return removeAt(root, pointer) ? json::serialize(root) : "not there";
}

TEST(SetAt, MemberIsReplacedOrAdded) {
  EXPECT_EQ(after(R"({"a":1})", "/a", 2), R"({"a":2})");
  EXPECT_EQ(after(R"({"a":1})", "/b", 2), R"({"a":1,"b":2})");
}

TEST(SetAt, MissingObjectsAreMade) {
  EXPECT_EQ(after(R"({"a":null})", "/a/b/c", 1), R"({"a":{"b":{"c":1}}})");
}

TEST(SetAt, ArrayEntriesAreReached) {
  EXPECT_EQ(after(R"({"a":[1,2]})", "/a/1", 3), R"({"a":[1,3]})");
  EXPECT_EQ(after(R"({"a":[1,2]})", "/a/-", 3), R"({"a":[1,2,3]})");
  EXPECT_EQ(after(R"({"a":[1,2]})", "/a/2", 3), "no place");
}

TEST(SetAt, EscapesAreDecoded) {
  EXPECT_EQ(after("{}", "/a~1b~0c", 1), R"({"a/b~c":1})");
}

TEST(SetAt, WhatIsNoPointerIsRefused) {
  EXPECT_EQ(after("{}", "a", 1), "no place");
  EXPECT_EQ(after("{}", "", 1), "no place");
}

TEST(RemoveAt, TakesMembersAndEntriesOut) {
  EXPECT_EQ(without(R"({"a":1,"b":2})", "/a"), R"({"b":2})");
  EXPECT_EQ(without(R"({"a":[1,2]})", "/a/0"), R"({"a":[2]})");
}

TEST(RemoveAt, TellsWhatIsNotThere) {
  EXPECT_EQ(without(R"({"a":1})", "/b"), "not there");
  EXPECT_EQ(without(R"({"a":1})", "/a/b"), "not there");
}

}  // namespace
}  // namespace bmc
