#pragma once

namespace check {

/// Status of a monitoring plug-in, as the Monitoring Plugins' guidelines
/// number them; the exit status of a run.
enum class Status { kOk = 0, kWarning = 1, kCritical = 2, kUnknown = 3 };

/// The worse of two. An error that was found is worse than a reading that is
/// not whole, and that is worse than a warning.
Status worse(Status left, Status right);

/// "OK", "WARNING", "CRITICAL" or "UNKNOWN".
const char* nameOf(Status status);

}  // namespace check
