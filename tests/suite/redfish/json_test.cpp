#include "suite/redfish/graph/json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/json/array.hpp>

#include "suite/redfish/graph/json_limits.h"

namespace redfish {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

json::object objectOf(std::string_view text) {
  const auto object = parseObject(text);
  EXPECT_TRUE(object) << object.error().cause;
  return object ? *object : json::object();
}

std::string reasonFor(std::string_view text) {
  const auto object = parseObject(text);
  return object ? "accepted" : object.error().cause;
}

std::string nested(std::size_t arrays) {
  return "{\"a\":" + std::string(arrays, '[') + std::string(arrays, ']') + "}";
}

TEST(ParseObject, ObjectIsRead) {
  EXPECT_EQ(stringAt(objectOf(" \r\n{\"Name\": \"x\"}\n"), "Name"), "x");
}

TEST(ParseObject, ByteOrderMarkIsStripped) {
  EXPECT_EQ(stringAt(objectOf("\xEF\xBB\xBF{\"Name\": \"x\"}"), "Name"), "x");
}

TEST(ParseObject, LastOfDuplicateNamesWins) {
  EXPECT_EQ(stringAt(objectOf(R"({"a": "1", "a": "2"})"), "a"), "2");
}

TEST(ParseObject, IntegersStayExact) {
  const json::object object =
      objectOf(R"({"a": 9007199254740993, "b": 18446744073709551615})");
  EXPECT_EQ(object.at("a").as_int64(), 9007199254740993);
  EXPECT_EQ(object.at("b").as_uint64(), 18446744073709551615U);
}

TEST(ParseObject, WrongUtf8InATextIsKept) {
  EXPECT_EQ(stringAt(objectOf("{\"a\": \"5 \xB0"
                              "C\"}"),
                     "a"),
            "5 \xB0"
            "C");
}

TEST(ParseObject, EmptyBodyIsRefused) {
  EXPECT_EQ(reasonFor(""), "the body is empty");
  EXPECT_EQ(reasonFor(" \n"), "the body is empty");
  EXPECT_EQ(reasonFor("\xEF\xBB\xBF"), "the body is empty");
}

TEST(ParseObject, HtmlIsRefused) {
  EXPECT_EQ(reasonFor("<!DOCTYPE html><html>"),
            "the body is HTML or XML, not JSON");
}

TEST(ParseObject, OtherValuesAreRefused) {
  EXPECT_EQ(reasonFor("[{}]"), "the body is a JSON array, not an object");
  EXPECT_EQ(reasonFor("\"x\""), "the body is a JSON string, not an object");
  EXPECT_EQ(reasonFor("42"), "the body is a number, not a JSON object");
  EXPECT_EQ(reasonFor("-1"), "the body is a number, not a JSON object");
}

TEST(ParseObject, OtherTextIsQuotedWithoutControlCharacters) {
  EXPECT_EQ(reasonFor("\x1B[31mService unavailable"),
            "the body is not JSON, it starts with \"[31mService unava...\"");
}

TEST(ParseObject, TruncationNamesItsPlace) {
  EXPECT_EQ(reasonFor(" {\"a\": \"b"), "the JSON is truncated at byte 9");
  EXPECT_EQ(reasonFor("{\"a\": {}"), "the JSON is truncated at byte 8");
}

TEST(ParseObject, MalformedJsonNamesItsPlace) {
  EXPECT_THAT(reasonFor("{\"a\": nul}"),
              StartsWith("the JSON is malformed at byte 6 ("));
}

TEST(ParseObject, SomethingAfterTheObjectIsRefused) {
  EXPECT_EQ(reasonFor("{} {}"),
            "the JSON is followed by something else at byte 3");
}

TEST(ParseObject, DeepestNestingIsAccepted) {
  EXPECT_EQ(reasonFor(nested(kMaxJsonDepth - 1)), "accepted");
}

TEST(ParseObject, DeeperNestingIsRefused) {
  EXPECT_THAT(reasonFor(nested(kMaxJsonDepth)),
              StartsWith("the JSON is nested deeper than 64 levels"));
  EXPECT_THAT(reasonFor(nested(100000)),
              StartsWith("the JSON is nested deeper than 64 levels"));
}

TEST(ParseObject, MillionMembersAreRefused) {
  std::string body = "{\"a\":0";
  for (int index = 0; index < 1000000; ++index) {
    body += ",\"" + std::to_string(index) + "\":0";
  }
  EXPECT_THAT(reasonFor(body + "}"), HasSubstr("more than 20000 members"));
}

TEST(MemberAt, FollowsObjects) {
  const json::object object = objectOf(R"({"Links": {"Chassis": [1]}})");
  ASSERT_NE(memberAt(object, "Links/Chassis"), nullptr);
  EXPECT_TRUE(memberAt(object, "Links/Chassis")->is_array());
}

TEST(MemberAt, MissingNullAndMistypedStepsAreNull) {
  const json::object object =
      objectOf(R"({"a": {"b": null}, "c": [{"d": 1}], "e": "x"})");
  EXPECT_EQ(memberAt(object, "x"), nullptr);
  EXPECT_EQ(memberAt(object, "a/b"), nullptr);
  EXPECT_EQ(memberAt(object, "a/b/c"), nullptr);
  EXPECT_EQ(memberAt(object, "c/d"), nullptr);
  EXPECT_EQ(memberAt(object, "e/f"), nullptr);
  EXPECT_EQ(memberAt(object, ""), nullptr);
}

TEST(MemberAt, AnyNameIsTheFirstThatLeadsOn) {
  const json::object object = objectOf(R"({"Oem": {
      "Text": "x", "None": {"Bay": null}, "First": {"Bay": 1},
      "Second": {"Bay": 2, "Rack": {"Row": 3}}}})");
  EXPECT_EQ(memberAt(object, "Oem/*/Bay")->as_int64(), 1);
  EXPECT_EQ(memberAt(object, "Oem/*/Rack/Row")->as_int64(), 3);
  EXPECT_EQ(memberAt(object, "Oem/*/*/Row")->as_int64(), 3);
  EXPECT_EQ(memberAt(object, "Oem/*/Shelf"), nullptr);
  EXPECT_EQ(memberAt(object, "Other/*/Bay"), nullptr);
}

TEST(TypedAccess, WrongTypesAreNothing) {
  const json::object object = objectOf(R"({"n": 1, "s": "x", "l": []})");
  EXPECT_EQ(objectAt(object, "l"), nullptr);
  EXPECT_EQ(arrayAt(object, "s"), nullptr);
  EXPECT_EQ(stringAt(object, "n"), "");
  EXPECT_NE(arrayAt(object, "l"), nullptr);
}

TEST(LinkAt, ReadsTheLink) {
  const json::object object =
      objectOf(R"({"Systems": {"@odata.id": "/redfish/v1/Systems"}})");
  ASSERT_TRUE(linkAt(object, "Systems"));
  EXPECT_EQ(linkAt(object, "Systems")->document(), "/redfish/v1/Systems");
}

TEST(LinkAt, EverythingElseIsNoLink) {
  const json::object object = objectOf(R"({
      "text": "/redfish/v1", "number": {"@odata.id": 1}, "list": [],
      "null": {"@odata.id": null}, "empty": {}})");
  for (const char* name : {"text", "number", "list", "null", "empty", "no"}) {
    EXPECT_FALSE(linkAt(object, name)) << name;
  }
}

TEST(LinkAt, RefusedLinkIsNone) {
  const json::object object =
      objectOf(R"({"a": {"@odata.id": "/etc/passwd"}})");
  EXPECT_FALSE(linkAt(object, "a"));
}

TEST(SurveyLinks, AreFoundAnywhereAndClean) {
  const json::object object = objectOf(R"({
      "@odata.id": "/redfish/v1",
      "a": {"@odata.id": "/etc/\u001b[2Jpass\nwd"},
      "b": [{"@odata.id": "/redfish/v1/B"}, {"c": {"@odata.id": "/redfish/.."}}],
      "d": {"@odata.id": 1}})");
  const LinkReport report = surveyLinks(object);
  EXPECT_EQ(report.refusedCount, 2U);
  EXPECT_EQ(report.longList, "");
  EXPECT_EQ(report.refused,
            (std::vector<std::string>{"/etc/ [2Jpass wd", "/redfish/.."}));
}

TEST(SurveyLinks, LongLinkIsCut) {
  json::object object;
  object["a"] = {{"@odata.id", std::string(100000, 'x')}};
  const LinkReport report = surveyLinks(object);
  ASSERT_EQ(report.refused.size(), 1U);
  EXPECT_LT(report.refused[0].size(), 150U);
}

TEST(SurveyLinks, OnlyTheFirstRefusedAreTold) {
  json::array list(1000, json::object{{"@odata.id", "/etc"}});
  const LinkReport report = surveyLinks({{"a", list}});
  EXPECT_EQ(report.refused.size(), 8U);
  EXPECT_EQ(report.refusedCount, 1000U);
}

TEST(SurveyLinks, ListOfTooManyLinksIsNamed) {
  const json::object link{{"@odata.id", "/redfish/v1/A"}};
  json::array list(kMaxLinks, link);
  EXPECT_EQ(surveyLinks({{"Links", {{"Drives", list}}}}).longList, "");
  list.push_back(link);
  EXPECT_EQ(surveyLinks({{"Links", {{"Drives", list}}}}).longList, "Drives");
  EXPECT_EQ(surveyLinks({{"Values", json::array(5000, 1)}}).longList, "");
}

TEST(LinksAt, KeepsOrderAndRepeatsAndSkipsBadEntries) {
  const json::object object = objectOf(R"({"Members": [
      {"@odata.id": "/redfish/v1/b"}, null, 1, {}, "/redfish/v1/c",
      {"@odata.id": "/redfish/v1/a"}, {"@odata.id": "/redfish/v1/b/"},
      {"@odata.id": "/elsewhere"}]})");
  std::vector<std::string> documents;
  for (const Uri& link : linksAt(object, "Members")) {
    documents.push_back(link.document());
  }
  EXPECT_THAT(documents,
              ElementsAre("/redfish/v1/b", "/redfish/v1/a", "/redfish/v1/b"));
}

TEST(LinksAt, SingleObjectIsOneMember) {
  EXPECT_EQ(linksAt(objectOf(R"({"Members": {"@odata.id": "/redfish/v1/a"}})"),
                    "Members")
                .size(),
            1U);
}

TEST(LinksAt, MissingAndNullAreEmpty) {
  EXPECT_TRUE(linksAt(objectOf("{}"), "Members").empty());
  EXPECT_TRUE(linksAt(objectOf(R"({"Members": null})"), "Members").empty());
}

TEST(Links, LinkThatPassesEndsTheLook) {
  const json::object object = objectOf(R"({"Members": [
    {"@odata.id": "/other"}, {"@odata.id": "/redfish/v1/a"},
    {"@odata.id": "/redfish/v1/b"}, {"@odata.id": "/redfish/v1/c"}]})");
  std::string seen;
  const auto endsIn = [&seen](char letter) {
    return [&seen, letter](const Uri& link) {
      seen += link.document().back();
      return link.document().back() == letter;
    };
  };
  EXPECT_TRUE(anyLinkAt(object, "Members", endsIn('b')));
  EXPECT_EQ(seen, "ab");
  EXPECT_FALSE(anyLinkAt(object, "Members", endsIn('d')));
  EXPECT_FALSE(anyLinkAt(object, "Nothing", endsIn('b')));
  EXPECT_TRUE(anyLinkAt(objectOf(R"({"One": {"@odata.id": "/redfish/v1/b"}})"),
                        "One", endsIn('b')));
}

}  // namespace
}  // namespace redfish
