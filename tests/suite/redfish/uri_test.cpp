#include "suite/redfish/graph/uri.h"

#include <gtest/gtest.h>

namespace redfish {
namespace {

using namespace std::string_view_literals;

std::string documentOf(std::string_view link) {
  const std::optional<Uri> uri = Uri::parse(link);
  return uri ? uri->document() : "refused";
}

TEST(UriParse, PathBelowTheServiceIsAccepted) {
  EXPECT_EQ(documentOf("/redfish/v1/Systems/1"), "/redfish/v1/Systems/1");
  EXPECT_EQ(documentOf("/redfish/v1"), "/redfish/v1");
  EXPECT_EQ(documentOf("/redfish/v1/"), "/redfish/v1");
}

TEST(UriParse, OtherPathsAreRefused) {
  EXPECT_EQ(documentOf(""), "refused");
  EXPECT_EQ(documentOf("/"), "refused");
  EXPECT_EQ(documentOf("/redfish"), "refused");
  EXPECT_EQ(documentOf("/redfishes/v1"), "refused");
  EXPECT_EQ(documentOf("/Redfish/v1"), "refused");
  EXPECT_EQ(documentOf("redfish/v1"), "refused");
  EXPECT_EQ(documentOf("/cgi/redfish/v1"), "refused");
  EXPECT_EQ(documentOf("?redfish"), "refused");
  EXPECT_EQ(documentOf("#/redfish/v1"), "refused");
}

TEST(UriParse, AuthorityIsDropped) {
  EXPECT_EQ(documentOf("https://192.0.2.1:8443/redfish/v1/Chassis"),
            "/redfish/v1/Chassis");
  EXPECT_EQ(documentOf("HTTP://bmc.example/redfish/v1/Chassis"),
            "/redfish/v1/Chassis");
  EXPECT_EQ(documentOf("//bmc.example/redfish/v1/Chassis"),
            "/redfish/v1/Chassis");
  EXPECT_EQ(documentOf("https://[2001:db8::1]:443/redfish/v1"), "/redfish/v1");
}

TEST(UriParse, AuthorityWithAnotherPathIsRefused) {
  EXPECT_EQ(documentOf("https://bmc.example"), "refused");
  EXPECT_EQ(documentOf("https://bmc.example?/redfish/v1"), "refused");
  EXPECT_EQ(documentOf("https://bmc.example/other"), "refused");
  EXPECT_EQ(documentOf("//redfish/v1/Systems"), "refused");
}

TEST(UriParse, OtherSchemesAreRefused) {
  EXPECT_EQ(documentOf("file:///redfish/v1/Systems"), "refused");
  EXPECT_EQ(documentOf("ftp://bmc.example/redfish/v1"), "refused");
  EXPECT_EQ(documentOf("://bmc.example/redfish/v1"), "refused");
  EXPECT_EQ(documentOf("x:["), "refused");
}

TEST(UriParse, DotSegmentsAreRefusedInEverySpelling) {
  EXPECT_EQ(documentOf("/redfish/v1/../../etc/passwd"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/.."), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/%2e%2E/x"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/.%2e/x"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/..%2fx"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a%2F..%2Fb"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/./x"), "refused");
}

TEST(UriParse, DotsInsideANameAreNoDotSegment) {
  EXPECT_EQ(documentOf("/redfish/v1/Registries/Base.1.0..x/..."),
            "/redfish/v1/Registries/Base.1.0..x/...");
}

TEST(UriParse, BackslashesAreRefused) {
  EXPECT_EQ(documentOf("/redfish/v1\\..\\x"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a%5cb"), "refused");
}

TEST(UriParse, ControlCharactersAreRefused) {
  EXPECT_EQ(documentOf("/redfish/v1/a\r\nHost: x"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a\0b"sv), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a%0d%0aHost"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a%00"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a?b=%1b"), "refused");
  EXPECT_EQ(documentOf("/redfish/v1/a#/b%7F"), "refused");
}

TEST(UriParse, LongestLinkHas1024Bytes) {
  const std::string longest = "/redfish/v1/" + std::string(1012, 'a');
  EXPECT_EQ(documentOf(longest), longest);
  EXPECT_EQ(documentOf(longest + "a"), "refused");
}

TEST(UriParse, QueryIsKeptAndFragmentIsNotSent) {
  const std::optional<Uri> uri =
      Uri::parse("/redfish/v1/Chassis/E/Thermal?$skip=2#/Fans/0");
  ASSERT_TRUE(uri);
  EXPECT_EQ(uri->target(), "/redfish/v1/Chassis/E/Thermal?$skip=2");
  EXPECT_EQ(uri->document(), "/redfish/v1/Chassis/E/Thermal?$skip=2");
  EXPECT_EQ(uri->fragment(), "/Fans/0");
  EXPECT_EQ(uri->identity(), "/redfish/v1/Chassis/E/Thermal?$skip=2#/Fans/0");
}

TEST(UriParse, TargetKeepsItsTrailingSlash) {
  EXPECT_EQ(Uri::parse("/redfish/v1/")->target(), "/redfish/v1/");
}

TEST(UriParse, CharactersOutsideUrisAreEscaped) {
  EXPECT_EQ(Uri::parse("/redfish/v1/DIMM \"A1\"/50%/\xC3\xA9")->target(),
            "/redfish/v1/DIMM%20%22A1%22/50%25/%C3%A9");
}

TEST(UriIsAllowed, SaysWhatParsingSays) {
  const std::string longest = "/redfish/" + std::string(1015, 'a');
  for (const std::string& link :
       {std::string("/redfish/v1/Systems/1"), std::string("/redfish/v1/a b"),
        std::string("https://other/redfish/v1"), longest}) {
    EXPECT_TRUE(Uri::isAllowed(link)) << link;
    EXPECT_TRUE(Uri::parse(link)) << link;
  }
  for (const std::string& link :
       {std::string(), std::string("/other/v1"), std::string("ftp:/redfish/v1"),
        std::string("/redfish/v1/../../etc"), std::string("/redfish/v1/%2e"),
        std::string("/redfish/v1/."), std::string("/redfish/v1\\Systems"),
        std::string("/redfish/v1/\n"), longest + 'a'}) {
    EXPECT_FALSE(Uri::isAllowed(link)) << link;
    EXPECT_FALSE(Uri::parse(link)) << link;
  }
}

TEST(UriDocument, SpellingsOfOneDocumentAreEqual) {
  const std::string key = documentOf("/redfish/v1/Systems/a%20b~c");
  EXPECT_EQ(documentOf("/redfish/v1/Systems/a b~c"), key);
  EXPECT_EQ(documentOf("/redfish/v1/%53ystems/a%20b%7ec/"), key);
  EXPECT_EQ(documentOf("https://other/redfish/v1/Systems/a%20b~c"), key);
}

TEST(UriDocument, PlainAndEscapedSpellingsAreEqual) {
  for (const char* plain :
       {"/redfish/v1/Systems/A.1", "/redfish/v1/.hidden",
        "/redfish/v1/Chassis/Node-1_a:2", "/redfish/v1/Systems//"}) {
    const auto escaped = std::string("/%72edfish") + (plain + 8);
    ASSERT_TRUE(Uri::parse(plain) && Uri::parse(escaped)) << plain;
    EXPECT_EQ(Uri::parse(plain)->document(), Uri::parse(escaped)->document());
    EXPECT_EQ(Uri::parse(plain)->target(), Uri::parse(escaped)->target());
  }
}

TEST(UriDocument, ReservedEscapesStayApart) {
  EXPECT_EQ(documentOf("/redfish/v1/a%2fb"), "/redfish/v1/a%2Fb");
  EXPECT_NE(documentOf("/redfish/v1/a%2fb"), documentOf("/redfish/v1/a/b"));
}

TEST(UriDocument, CaseCounts) {
  EXPECT_NE(documentOf("/redfish/v1/Systems"),
            documentOf("/redfish/v1/systems"));
}

TEST(UriFragment, PercentEscapesAreDecoded) {
  EXPECT_EQ(Uri::parse("/redfish/v1/T#/a%20b")->fragment(), "/a b");
}

TEST(UriIdentity, EmptyFragmentIsTheDocument) {
  EXPECT_EQ(Uri::parse("/redfish/v1/T#")->identity(), "/redfish/v1/T");
}

TEST(UriLastSegment, IsTheEndOfTheFragmentOrPath) {
  EXPECT_EQ(Uri::parse("/redfish/v1/Fans/F1/?a=/b")->lastSegment(), "F1");
  EXPECT_EQ(Uri::parse("/redfish/v1/T#/Fans/0")->lastSegment(), "0");
  EXPECT_EQ(Uri::parse("/redfish/v1/T#/")->lastSegment(), "");
}

}  // namespace
}  // namespace redfish
