#include "syshealth/host/report_table.h"

#include <gmock/gmock.h>

#include <boost/format.hpp>
#include <iomanip>

#include "tests/fakes/suite_test.h"

namespace {

using testing::ElementsAre;

class PrintRow : public fakes::SuiteTest {
 protected:
  PrintRow() { columns.modify_item(1, std::setw(5)); }

  boost::format columns{"%1% %2% "};
};

TEST_F(PrintRow, AlignsInTheFormatsColumns) {
  printRow(columns, {"ab", "cd"});
  EXPECT_EQ(output(), "   ab cd \n");
}

TEST_F(PrintRow, GoesToConsoleAndLogAtLevel3) {
  printRow(columns, {"ab", "cd"});
  EXPECT_THAT(fakes::journal(),
              ElementsAre("out    ab cd ", "log 3:    ab cd "));
}

TEST_F(PrintRow, StartsAFreshLineEachTime) {
  printRow(columns, {"a", "b"});
  printRow(columns, {"c", "d"});
  EXPECT_EQ(output(), "    a b \n    c d \n");
}

TEST_F(PrintRow, WideValueIsPrintedWhole) {
  printRow(columns, {"123456789", "x"});
  EXPECT_EQ(output(), "123456789 x \n");
}

TEST_F(PrintRow, EmptyValueIsBlanksToTheWidth) {
  printRow(columns, {"", ""});
  EXPECT_EQ(output(), "       \n");
}

TEST_F(PrintRow, ValueIsNotReadAsAPattern) {
  printRow(columns, {"%2%", "100% %1$s %%"});
  EXPECT_EQ(output(), "  %2% 100% %1$s %% \n");
}

TEST_F(PrintRow, WidthCountsBytes) {
  printRow(columns, {"\xc3\xa9", "x"});
  EXPECT_EQ(output(), "   \xc3\xa9 x \n");
}

}  // namespace
