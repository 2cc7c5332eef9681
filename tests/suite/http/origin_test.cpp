#include "suite/http/origin.h"

#include <gtest/gtest.h>

namespace http {
namespace {

std::string urlFor(const std::string& host) {
  return urlOf({host, 8443, false}).value_or("refused");
}

TEST(AddressOf, NamesHostAndPort) {
  EXPECT_EQ(addressOf({"10.0.0.5", 8443, false}), "10.0.0.5:8443");
}

TEST(AddressOf, PortZeroIsTheOneOfTheScheme) {
  EXPECT_EQ(addressOf({"bmc", 0, false}), "bmc:443");
  EXPECT_EQ(addressOf({"bmc", 0, true}), "bmc:80");
}

TEST(AddressOf, Ipv6IsInBrackets) {
  EXPECT_EQ(addressOf({"fe80::1%eth0", 443, false}), "[fe80::1%eth0]:443");
}

TEST(AddressOf, ControlCharactersDoNotPass) {
  EXPECT_EQ(addressOf({"b\x1B[2Jmc", 443, false}), "b [2Jmc:443");
}

TEST(UrlOf, NamesSchemeHostAndPort) {
  EXPECT_EQ(urlFor("bmc-1.example"), "https://bmc-1.example:8443");
  EXPECT_EQ(urlOf({"127.0.0.1", 0, true}), "http://127.0.0.1:80");
}

TEST(UrlOf, Ipv6IsInBracketsWithItsZoneEscaped) {
  EXPECT_EQ(urlFor("2001:db8::1"), "https://[2001:db8::1]:8443");
  EXPECT_EQ(urlFor("fe80::1%eth0.1"), "https://[fe80::1%25eth0.1]:8443");
}

TEST(UrlOf, WhatIsNoHostIsRefused) {
  for (const char* host :
       {"", "a b", "user@bmc", "bmc/redfish", "bmc?x", "bmc#x", "[::1]",
        "bmc\r\nHost: x", "::1%", "::1%eth/0", "bmc%eth0", "a\\b"}) {
    EXPECT_EQ(urlFor(host), "refused") << host;
  }
  EXPECT_EQ(urlFor(std::string(256, 'a')), "refused");
}

}  // namespace
}  // namespace http
