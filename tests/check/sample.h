#pragma once

#include <string>

#include "check/verdict.h"
#include "suite/report/report.h"

namespace check {

/// A server that was wholly read and of which nothing is wrong, with two parts
/// in each list.
report::ServerReport goodReport(const std::string& name = "n1");

/// An event of it.
report::Event event(report::Category category, report::Health severity,
                    const std::string& message);

/// Adds an event, and gives its area and the server its severity.
void addEvent(const report::Event& event, report::ServerReport& report);

}  // namespace check
