#pragma once

#include <cstdint>

namespace brivel {

/// Exit statuses of the host itself. Result codes become exit statuses, too.
enum ExitStatus : int {
  kExitSuccess = 0,
  kExitUsage = 2,          ///< The command line or the settings are wrong.
  kExitModule = 3,         ///< No such application, or it cannot be loaded.
  kExitOther = 64,         ///< A result code that is no exit status.
  kExitInterrupted = 130,  ///< The user ended the run.
};

/// The exit status that a result code becomes: itself from 0 to 63, which
/// holds every suite-wide code and every OR of them; 64 for all others.
int exitStatusOf(std::int32_t code);

}  // namespace brivel
