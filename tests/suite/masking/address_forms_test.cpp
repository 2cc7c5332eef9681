#include "suite/masking/address_forms.h"

#include <gtest/gtest.h>

#include <string>

namespace masking {
namespace {

// What is found at the first place of a text where anything is.
std::string found(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (const std::size_t length = addressAt(text, i)) {
      return std::string(text.substr(i, length));
    }
  }
  return "";
}

TEST(AddressAt, FindsUuids) {
  EXPECT_EQ(found("urn:uuid:3D9a41c8-7e02-4f5b-a6d1-90c4f82b57e3."),
            "3D9a41c8-7e02-4f5b-a6d1-90c4f82b57e3");
  EXPECT_EQ(found("3d9a41c8-7e02-4f5b-a6d1-90c4f82b57e31"), "");
  EXPECT_EQ(found("3d9a41c8-7e02-4f5b-a6d1"), "");
}

TEST(AddressAt, FindsMacAddressesAndWorldWideNames) {
  EXPECT_EQ(found("port aa:bb:cc:00:11:22 is down"), "aa:bb:cc:00:11:22");
  EXPECT_EQ(found("MAC:AA-BB-CC-00-11-22"), "AA-BB-CC-00-11-22");
  EXPECT_EQ(found("20:00:00:25:b5:01:02:03"), "20:00:00:25:b5:01:02:03");
}

TEST(AddressAt, FindsNoTimesDatesOrPciAddresses) {
  EXPECT_EQ(found("2024-11-02T10:20:30+01:00"), "");
  EXPECT_EQ(found("0000:3b:00.0"), "");
  EXPECT_EQ(found("aa:bb:cc:00:11"), "");
  EXPECT_EQ(found("aa:bb:cc:00:11:222"), "");
}

TEST(AddressAt, FindsAddressesOfNetworks) {
  EXPECT_EQ(found("from 10.0.0.5."), "10.0.0.5");
  EXPECT_EQ(found("https://10.0.0.5:443/redfish"), "10.0.0.5");
  EXPECT_EQ(found("[fe80::1a2b%eth0]"), "fe80::1a2b");
  EXPECT_EQ(found("2001:db8:0:0:0:0:0:17"), "2001:db8:0:0:0:0:0:17");
  EXPECT_EQ(found("::ffff:10.0.0.5"), "::ffff:10.0.0.5");
}

TEST(AddressAt, LeavesWhatEveryMachineHas) {
  EXPECT_EQ(found("127.0.0.1 0.0.0.0 255.255.255.0 ::1 ::"), "");
}

TEST(AddressAt, FindsNoVersionsThatAreNoAddresses) {
  EXPECT_EQ(found("4.40.10.00"), "");
  EXPECT_EQ(found("1.2.3"), "");
  EXPECT_EQ(found("1.2.3.4.5"), "");
  EXPECT_EQ(found("v1.2.3.4"), "");
  EXPECT_EQ(found("300.1.2.3"), "");
}

}  // namespace
}  // namespace masking
