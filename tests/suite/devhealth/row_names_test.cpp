#include "suite/devhealth/inventory/row_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace devhealth {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DistinctNames, NameStandsAloneWhereItIsTheOnlyOne) {
  EXPECT_THAT(distinctNames({{"A1", "Node 0"}, {"A2", "Node 0"}}, "DIMM"),
              ElementsAre("A1", "A2"));
}

TEST(DistinctNames, EqualNamesAreFollowedByThePlace) {
  EXPECT_THAT(
      distinctNames({{"A1", "Node 0"}, {"A1", "Node 1"}, {"A2", ""}}, "DIMM"),
      ElementsAre("A1 Node 0", "A1 Node 1", "A2"));
}

TEST(DistinctNames, NumbersTellTheRestApart) {
  EXPECT_THAT(distinctNames(
                  {{"PSU", "Rear"}, {"PSU", ""}, {"PSU", "Rear"}, {"PSU", ""}},
                  "Power Supply"),
              ElementsAre("PSU Rear 1", "PSU 1", "PSU Rear 2", "PSU 2"));
}

TEST(DistinctNames, NumbersLeaveOtherNamesAlone) {
  EXPECT_THAT(distinctNames({{"CPU", ""}, {"CPU 1", ""}, {"CPU", ""}}, "X"),
              ElementsAre("CPU 2", "CPU 1", "CPU 3"));
}

TEST(DistinctNames, PlaceThenClassServeWithoutName) {
  EXPECT_THAT(distinctNames({{"", "Bay 1"}, {"", ""}, {"", ""}}, "Fan"),
              ElementsAre("Bay 1", "Fan 1", "Fan 2"));
}

TEST(DistinctNames, PlaceThatIsTheNameIsNotRepeated) {
  EXPECT_THAT(distinctNames({{"PSU", "PSU"}, {"PSU", "Rear"}}, "X"),
              ElementsAre("PSU", "PSU Rear"));
}

TEST(DistinctNames, NoRowsNoNames) {
  EXPECT_THAT(distinctNames({}, "Fan"), IsEmpty());
}

}  // namespace
}  // namespace devhealth
