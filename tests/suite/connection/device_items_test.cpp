#include "suite/connection/device_items.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "suite/redfish/crawl/selection.h"

namespace {

constexpr std::uint32_t kSix = redfish::kWantSystem | redfish::kWantProcessors |
                               redfish::kWantFans | redfish::kWantDimms |
                               redfish::kWantPowers | redfish::kWantPciAdapters;

std::uint32_t wantsOf(const std::string& device) {
  return connection::wantsOf(&device);
}

TEST(WantsOf, NoDeviceIsTheHealthSummary) {
  EXPECT_EQ(connection::wantsOf(nullptr), redfish::kWantHealth);
}

TEST(WantsOf, AllIsTheSixItems) { EXPECT_EQ(wantsOf("all"), kSix); }

TEST(WantsOf, EachItemHasItsWant) {
  EXPECT_EQ(wantsOf("system"), redfish::kWantSystem);
  EXPECT_EQ(wantsOf("processor"), redfish::kWantProcessors);
  EXPECT_EQ(wantsOf("fan"), redfish::kWantFans);
  EXPECT_EQ(wantsOf("dimm"), redfish::kWantDimms);
  EXPECT_EQ(wantsOf("power"), redfish::kWantPowers);
  EXPECT_EQ(wantsOf("pci_adapter"), redfish::kWantPciAdapters);
}

TEST(WantsOf, ListIsTheUnion) {
  EXPECT_EQ(wantsOf("fan,dimm,fan"), redfish::kWantFans | redfish::kWantDimms);
}

TEST(WantsOf, NamesThatAreNoItemCountForNothing) {
  EXPECT_EQ(wantsOf(""), 0U);
  EXPECT_EQ(wantsOf("Fan,all, dimm,,fa"), 0U);
  EXPECT_EQ(wantsOf("fan,"), redfish::kWantFans);
}

TEST(ObjectionToItems, NamesTheFirstThatIsNone) {
  EXPECT_EQ(connection::problemWithItems("fan,memory,x"),
            "'memory' is no item; items are system, processor, fan, dimm, "
            "power, pci_adapter, or all alone");
  EXPECT_EQ(connection::problemWithItems("").rfind("'' is no item", 0), 0U);
  EXPECT_EQ(connection::problemWithItems("all,fan").rfind("'all'", 0), 0U);
}

TEST(ObjectionToItems, IsEmptyForItems) {
  EXPECT_EQ(connection::problemWithItems("all"), "");
  EXPECT_EQ(connection::problemWithItems("fan,dimm,fan"), "");
}

TEST(IsCombined, NeedsSeveralItems) {
  EXPECT_FALSE(connection::isCombined(29, "fan"));
  EXPECT_TRUE(connection::isCombined(29, "fan,dimm"));
  EXPECT_TRUE(connection::isCombined(29, "all"));
}

TEST(IsCombined, IsNoCodeThatAnItemEndsWith) {
  for (const std::int32_t code : {1, 10, 13, 17, 25}) {
    EXPECT_FALSE(connection::isCombined(code, "all")) << code;
  }
  for (const std::int32_t code : {10 | 13, 10 | 25, 13 | 25, 10 | 13 | 25}) {
    EXPECT_TRUE(connection::isCombined(code, "all")) << code;
  }
}

}  // namespace
