#pragma once

#include <string>

#include "suite/report/report.h"

namespace exporting {

// One table of the reports as comma-separated values (RFC 4180): a header
// row, then one row for each part. Each row begins with the target's name and
// the node. Columns have the names that the fields have in JSON; what is not
// known is empty. Lines end in CR LF, as the RFC has them.
//
// A table is named by what has to be read for it: kWantSystem has one row for
// each node, kWantHealth one for each active event.

/// The header row of a table.
std::string csvHeader(report::Want table);

/// The rows of a report in a table; empty if that was not read, or holds
/// nothing.
std::string csvRows(report::Want table, const report::ServerReport& report);

}  // namespace exporting
