#pragma once

#include "syshealth/result/brivel_result.h"

namespace exporting {

/// Reads the targets of the run and writes them as the options say.
BrivelResult run();

}  // namespace exporting
