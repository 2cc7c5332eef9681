#include "syshealth/host/report_table.h"

#include <boost/format.hpp>

#include "syshealth/host/console_line.h"

void printRow(boost::format& columns,
              std::initializer_list<std::string_view> values, int line) {
  for (const std::string_view value : values) {
    columns % value;
  }
  printReport(columns.str(), line);
}
