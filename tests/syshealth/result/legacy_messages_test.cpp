#include "syshealth/result/legacy_messages.h"

#include <gtest/gtest.h>

#include "syshealth/result/result_registry.h"

namespace {

// What the table held before any test looked something up.
class TableAtLoad : public testing::Environment {
 public:
  void SetUp() override { rows = legacyMessageTable.size(); }

  static inline std::size_t rows = 1;
};

const testing::Environment* const kTableAtLoad =
    testing::AddGlobalTestEnvironment(new TableAtLoad);

TEST(LegacyMessageTable, IsEmptyWhenLoaded) {
  ASSERT_NE(kTableAtLoad, nullptr);
  EXPECT_EQ(TableAtLoad::rows, 0U);
}

TEST(LegacyMessageTable, RegisteredCodeDoesNotFillIt) {
  legacyMessageTable.clear();
  getResultMessage(17);
  EXPECT_TRUE(legacyMessageTable.empty());
}

TEST(LegacyMessageTable, FirstLegacyCodeFillsIt) {
  legacyMessageTable.clear();
  EXPECT_EQ(getResultMessage(1537),
            "Update query module error: given ID is not found in the query "
            "package results.");
  EXPECT_EQ(legacyMessageTable.size(), 202U);
}

TEST(LegacyMessageTable, UnknownLegacyCodeFillsItToo) {
  legacyMessageTable.clear();
  EXPECT_EQ(getResultMessage(0x0700), "Unknown error");
  EXPECT_EQ(legacyMessageTable.size(), 202U);
}

TEST(LegacyMessageTable, SecondLookupDoesNotFillItAgain) {
  legacyMessageTable.clear();
  getResultMessage(0x0700);
  legacyMessageTable.erase(1537);
  EXPECT_EQ(getResultMessage(1537), "Unknown error");
  EXPECT_EQ(legacyMessageTable.size(), 201U);
  legacyMessageTable.clear();
}

TEST(LegacyMessageTable, EmptyTableIsFilledAgain) {
  getResultMessage(1537);
  legacyMessageTable.clear();
  EXPECT_EQ(getResultMessage(3085),
            "Failed to update due to the input slot number is invalid.");
}

}  // namespace
