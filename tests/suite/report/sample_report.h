#pragma once

#include "suite/report/report.h"

namespace report {

/// A report in which every field has a value of its own.
ServerReport fullReport();

}  // namespace report
