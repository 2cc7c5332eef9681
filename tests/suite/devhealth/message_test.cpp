// Identifiers, texts and registries of event messages.
#include <gtest/gtest.h>

#include "suite/devhealth/health/message_id.h"
#include "suite/devhealth/health/message_registry.h"
#include "suite/devhealth/health/message_text.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

TEST(ParseMessageId, TakesPrefixVersionAndKey) {
  const MessageId id = parseMessageId("Base.1.8.ConditionInRelatedResource");
  EXPECT_EQ(id.prefix, "Base");
  EXPECT_EQ(id.major, "1");
  EXPECT_EQ(id.minor, "8");
  EXPECT_EQ(id.key, "ConditionInRelatedResource");
  EXPECT_TRUE(isPointer(id));
}

TEST(ParseMessageId, LeavesOutTheErrataNumber) {
  const MessageId id = parseMessageId("Velmarn.2.10.3.FanSlow");
  EXPECT_EQ(id.prefix, "Velmarn");
  EXPECT_EQ(id.minor, "10");
  EXPECT_EQ(id.key, "FanSlow");
  EXPECT_FALSE(isPointer(id));
}

TEST(ParseMessageId, PrefixMayHoldDots) {
  const MessageId id = parseMessageId("Velmarn.Events.1.0.FanSlow");
  EXPECT_EQ(id.prefix, "Velmarn.Events");
  EXPECT_EQ(id.key, "FanSlow");
}

TEST(ParseMessageId, TextWithoutVersionHasNone) {
  EXPECT_EQ(parseMessageId("IERR0001").key, "IERR0001");
  EXPECT_EQ(parseMessageId("IERR0001").prefix, "");
  EXPECT_EQ(parseMessageId("Velmarn.FanSlow").prefix, "Velmarn");
  EXPECT_EQ(parseMessageId("Velmarn.FanSlow").major, "");
  EXPECT_EQ(parseMessageId("").key, "");
  EXPECT_EQ(parseMessageId("Base.1").key, "1");
  EXPECT_EQ(parseMessageId("Base.1.8").major, "1");
}

TEST(SubstituteArguments, PutsArgumentsInPlace) {
  EXPECT_EQ(substituteArguments("%2 of %1 is %1.", {"a", "b"}), "b of a is a.");
}

TEST(SubstituteArguments, LongestNumberIsMeant) {
  std::vector<std::string> arguments(12, "x");
  arguments[0] = "first";
  arguments[11] = "twelfth";
  EXPECT_EQ(substituteArguments("%12 %1 %123", arguments),
            "twelfth first twelfth3");
}

TEST(SubstituteArguments, MissingArgumentIsEmpty) {
  EXPECT_EQ(substituteArguments("<%1><%3>", {"a", "b"}), "<a><>");
}

TEST(SubstituteArguments, PercentWithoutNumberStays) {
  EXPECT_EQ(substituteArguments("100% of %0 and %", {"a"}), "100% of %0 and %");
}

TEST(SubstituteArguments, ArgumentsAreNotReadAgain) {
  EXPECT_EQ(substituteArguments("%1", {"%2", "b"}), "%2");
}

TEST(SubstituteArguments, RepeatedArgumentsEndSomewhere) {
  std::string message;
  for (int i = 0; i < 100000; ++i) {
    message += "%1";
  }
  EXPECT_LT(substituteArguments(message, {std::string(1000, 'x')}).size(),
            10000U);
}

TEST(KeyWithArguments, JoinsThem) {
  EXPECT_EQ(keyWithArguments("FanSlow", {"3", "900"}), "FanSlow: 3, 900");
  EXPECT_EQ(keyWithArguments("FanSlow", {}), "FanSlow");
}

using Members = std::vector<std::pair<std::string, std::string>>;

std::string file(const std::string& registry, const std::string& locations) {
  return R"({"Registry": ")" + registry + R"(", "Location": [)" + locations +
         "]}";
}

std::string location(const std::string& language, const std::string& uri) {
  return R"({"Language": ")" + language + R"(", "Uri": ")" + uri + R"("})";
}

constexpr const char* kRegistry =
    R"({"@odata.type": "#MessageRegistry.v1_6_0.MessageRegistry",
        "Messages": {"FanSlow": {"Message": "Fan %1 is slow."}}})";

Server withRegistry(const std::string& registry) {
  Server server;
  server.members(
      "", "Registries",
      {{"Velmarn", file(registry, location("en", "/redfish/v1/Files/V"))}});
  server.put("Files/V", kRegistry);
  return server;
}

std::string textOfMessage(const Server& server, const char* id) {
  MessageRegistries registries(server.graph());
  const auto* message = registries.find(parseMessageId(id));
  return message == nullptr
             ? "none"
             : std::string(redfish::stringAt(*message, "Message"));
}

TEST(MessageRegistriesFind, FindsTheMessageOfItsVersion) {
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.1.3"), "Velmarn.1.3.FanSlow"),
            "Fan %1 is slow.");
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.1.3.2"), "Velmarn.1.3.FanSlow"),
            "Fan %1 is slow.");
}

TEST(MessageRegistriesFind, OtherMinorVersionWillDo) {
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.1.4"), "Velmarn.1.3.FanSlow"),
            "Fan %1 is slow.");
}

TEST(MessageRegistriesFind, OtherMajorVersionWillNot) {
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.2.3"), "Velmarn.1.3.FanSlow"),
            "none");
}

TEST(MessageRegistriesFind, UnknownKeyGivesNone) {
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.1.3"), "Velmarn.1.3.Other"),
            "none");
}

TEST(MessageRegistriesFind, IdentifierWithoutVersionGivesNone) {
  EXPECT_EQ(textOfMessage(withRegistry("Velmarn.1.3"), "FanSlow"), "none");
}

TEST(MessageRegistriesFind, ExactVersionWinsOverTheHighest) {
  Server server;
  server.members(
      "", "Registries",
      {{"Velmarn.1.9", file("Velmarn.1.9", location("en", "/redfish/v1/F/9"))},
       {"Velmarn.1.3", file("Velmarn.1.3", location("en", "/redfish/v1/F/3"))},
       {"Velmarn.1.5",
        file("Velmarn.1.5", location("en", "/redfish/v1/F/5"))}});
  for (const std::string minor : {"3", "5", "9"}) {
    server.put("F/" + minor,
               R"({"Messages": {"A": {"Message": ")" + minor + R"("}}})");
  }
  EXPECT_EQ(textOfMessage(server, "Velmarn.1.3.A"), "3");
  EXPECT_EQ(textOfMessage(server, "Velmarn.1.4.A"), "9");
}

TEST(MessageRegistriesFind, FileOfAnyNameIsFoundByItsRegistry) {
  Server server;
  server.members(
      "", "Registries",
      {{"One", file("Other.1.0", "")},
       {"Two", file("Velmarn.1.3", location("en", "/redfish/v1/Files/V"))}});
  server.put("Files/V", kRegistry);
  EXPECT_EQ(textOfMessage(server, "Velmarn.1.3.FanSlow"), "Fan %1 is slow.");
}

TEST(MessageRegistriesFind, IdStandsInForTheRegistry) {
  Server server;
  server.members(
      "", "Registries",
      {{"Velmarn", R"({"Id": "Velmarn.1.3", "Location": [)" +
                       location("en", "/redfish/v1/Files/V") + "]}"}});
  server.put("Files/V", kRegistry);
  EXPECT_EQ(textOfMessage(server, "Velmarn.1.3.FanSlow"), "Fan %1 is slow.");
}

TEST(MessageRegistriesFind, EnglishOrTheDefaultLanguageIsTaken) {
  for (const std::string language : {"en", "en-US", "EN", "default"}) {
    Server server;
    server.members(
        "", "Registries",
        {{"Velmarn",
          file("Velmarn.1.3", location("de", "/redfish/v1/Files/D") + "," +
                                  location(language, "/redfish/v1/Files/V"))}});
    server.put("Files/D", R"({"Messages": {"FanSlow": {"Message": "D"}}})");
    server.put("Files/V", kRegistry);
    EXPECT_EQ(textOfMessage(server, "Velmarn.1.3.FanSlow"), "Fan %1 is slow.")
        << language;
  }
}

TEST(MessageRegistriesFind, LocationElsewhereIsNotUsed) {
  Server server;
  server.members("", "Registries",
                 {{"Velmarn", file("Velmarn.1.3",
                                   R"({"Language": "en",
              "PublicationUri": "https://velmarn.example/registry.json"},
             {"Language": "en", "Uri": "/files/registry.json"})")}});
  MessageRegistries registries(server.graph());
  EXPECT_EQ(registries.find(parseMessageId("Velmarn.1.3.FanSlow")), nullptr);
  EXPECT_TRUE(registries.wanted().empty());
}

std::vector<std::string> wantedFor(const Server& server, const char* id) {
  MessageRegistries registries(server.graph());
  EXPECT_EQ(registries.find(parseMessageId(id)), nullptr);
  std::vector<std::string> links;
  for (const auto& link : registries.wanted()) {
    links.push_back(link.document());
  }
  return links;
}

using Links = std::vector<std::string>;

TEST(MessageRegistriesFind, WantsCollectionThenFileThenRegistry) {
  constexpr const char* kId = "Velmarn.1.3.FanSlow";
  Server server;
  server.link("", "Registries");
  EXPECT_EQ(wantedFor(server, kId), (Links{"/redfish/v1/Registries"}));
  server.put("Registries", R"({"Members": [)" + linkTo("Registries/Base.1.8") +
                               "," + linkTo("Registries/Velmarn.1.3") + "]}");
  EXPECT_EQ(wantedFor(server, kId),
            (Links{"/redfish/v1/Registries/Velmarn.1.3"}));
  server.put("Registries/Velmarn.1.3",
             file("Velmarn.1.3", location("en", "/redfish/v1/Files/V")));
  EXPECT_EQ(wantedFor(server, kId), (Links{"/redfish/v1/Files/V"}));
  server.put("Files/V", kBroken);
  EXPECT_EQ(wantedFor(server, kId), Links{});
}

TEST(MessageRegistriesFind, ServiceWithoutRegistriesIsNotAsked) {
  EXPECT_EQ(wantedFor(Server(), "Velmarn.1.3.FanSlow"), Links{});
}

TEST(MessageRegistriesFind, ServesFourRegistriesAtMost) {
  Server server;
  Members files;
  for (const std::string name : {"A", "B", "C", "D", "E"}) {
    files.emplace_back(
        name, file(name + ".1.0", location("en", "/redfish/v1/Files/V")));
  }
  server.members("", "Registries", files);
  server.put("Files/V", kRegistry);
  MessageRegistries registries(server.graph());
  for (const std::string name : {"A", "B", "C", "D"}) {
    EXPECT_NE(registries.find(parseMessageId(name + ".1.0.FanSlow")), nullptr);
  }
  EXPECT_EQ(registries.find(parseMessageId("E.1.0.FanSlow")), nullptr);
  EXPECT_NE(registries.find(parseMessageId("A.1.0.FanSlow")), nullptr);
}

}  // namespace
}  // namespace devhealth
