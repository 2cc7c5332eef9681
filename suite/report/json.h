#pragma once

#include <string>
#include <string_view>

#include "suite/base/result.h"
#include "suite/report/report.h"
#include "syshealth/host/export.h"

namespace report {

/// Version of the JSON form. 1.N adds keys to 1.0; to remove or to change one
/// takes 2.0. docs/brivel-report.schema.json describes it.
inline constexpr std::string_view kSchema = "brivel-report";
inline constexpr std::string_view kSchemaVersion = "1.0";

/// A report as one line of JSON (RFC 8259), without line end. The keys are
/// always the same and in the same order. What is not known, and a list that
/// was not read, is null; a list without elements is [].
BRIVEL_SUITE_API std::string toJson(const ServerReport& report);

/// Reads a line that `toJson` has written, now or with another version 1.N:
/// keys that are not known are ignored, missing ones leave their values
/// unknown. If it is no such line, the cause of the failure says what is
/// wrong, and where.
BRIVEL_SUITE_API base::Result<ServerReport> fromJson(std::string_view line);

}  // namespace report
