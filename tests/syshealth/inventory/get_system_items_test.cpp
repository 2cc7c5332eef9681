#include <gmock/gmock.h>

#include <stdexcept>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const char* kEntering =
    "log 4: Entering  SystemHealth::getSystemItems";
constexpr const char* kExiting = "log 4: Exiting  SystemHealth::getSystemItems";

class GetSystemItems : public fakes::SuiteTest {
 protected:
  GetSystemItems() {
    fakes::TargetScript& script = fakes::script().targets["a"];
    script.system = {"board", "", "", ""};
    script.processors = {{"processor", "", "", "", ""}};
    script.fans = {{"fan", "", ""}};
    script.dimms = {{"module", "", "", "", "", ""}};
    script.powers = {{"supply", "", ""}};
    script.adapters = {{"adapter", "", "", "", "", "", "", "", ""}};
    fakes::clearJournal();
  }

  int get(const std::string& item) {
    return application.getSystemItems(target("a"), item);
  }

  SystemHealth application;
};

// One item: its getter with an empty argument and no other, its report.
struct ItemCase {
  std::string item;
  std::string call;
  std::string heading;
  std::string value;
};

std::ostream& operator<<(std::ostream& out, const ItemCase& itemCase) {
  return out << itemCase.item;
}

class GetSystemItemsOf : public GetSystemItems,
                         public testing::WithParamInterface<ItemCase> {};

TEST_P(GetSystemItemsOf, CallsItsGetterWithoutConnectingAndPrintsItsReport) {
  EXPECT_EQ(get(GetParam().item), 0);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              ElementsAre("DevHealth(a)", GetParam().call, "~DevHealth()"));
  EXPECT_EQ(output().rfind("\n" + GetParam().heading + "\n", 0), 0U);
  EXPECT_NE(output().find(GetParam().value), std::string::npos);
}

TEST_P(GetSystemItemsOf, TracesEntryAndExit) {
  get(GetParam().item);
  EXPECT_EQ(fakes::journal().front(), kEntering);
  EXPECT_THAT(fakes::journal(), Contains(kExiting).Times(1));
}

TEST_P(GetSystemItemsOf, FailedGetterPrintsNothingAndTracesNoExit) {
  for (const int status : {-1, -2, -3, -4, -5, 7}) {
    fakes::clearJournal();
    fakes::script().targets["a"].readStatus = status;
    EXPECT_EQ(get(GetParam().item), status);
    EXPECT_THAT(fakes::journal(),
                ElementsAre(kEntering, "call DevHealth(a)",
                            "call " + GetParam().call, "call ~DevHealth()"));
  }
}

INSTANTIATE_TEST_SUITE_P(
    EveryItem, GetSystemItemsOf,
    testing::Values(
        ItemCase{"system", "DevHealth::get_system(empty record)",
                 "System Board:", "board"},
        ItemCase{"processor", "DevHealth::get_processors(list of 0)",
                 "CPU:", "processor"},
        ItemCase{"fan", "DevHealth::get_fans(list of 0)", "Fan:", "fan"},
        ItemCase{"dimm", "DevHealth::get_DIMMs(list of 0)", "DIMM:", "module"},
        ItemCase{"power", "DevHealth::get_Powers(list of 0)",
                 "Power:", "supply"},
        ItemCase{"pci_adapter", "DevHealth::get_PCIApaters(list of 0)",
                 "PCI Adapter:", "adapter"}),
    [](const testing::TestParamInfo<ItemCase>& itemCase) {
      return itemCase.param.item;
    });

TEST_F(GetSystemItems, UnknownItemIsNotSupportedWithExitTrace) {
  EXPECT_EQ(get("disk"), -4);
  EXPECT_THAT(fakes::journal(), ElementsAre(kEntering, "call DevHealth(a)",
                                            kExiting, "call ~DevHealth()"));
}

TEST_F(GetSystemItems, NameMustMatchWhole) {
  for (const std::string& item :
       {std::string("Fan"), std::string("FAN"), std::string(" fan"),
        std::string("fan "), std::string("fans"), std::string("fa"),
        std::string(""), std::string("all"), std::string("fan\0", 4)}) {
    EXPECT_EQ(get(item), -4) << item;
  }
  EXPECT_EQ(output(), "");
}

TEST_F(GetSystemItems, ExitIsTracedBeforeTheClientIsDestroyed) {
  get("fan");
  EXPECT_EQ(fakes::journal().back(), "call ~DevHealth()");
}

TEST_F(GetSystemItems, ExceptionLeavesNoExitTraceAndDestroysTheClient) {
  fakes::script().throwingCall = "DevHealth::get_fans(list of 0)";
  EXPECT_THROW(get("fan"), std::runtime_error);
  EXPECT_THAT(fakes::journal(), Not(Contains(kExiting)));
  EXPECT_EQ(fakes::journal().back(), "call ~DevHealth()");
}

}  // namespace
