#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "suite/args/parser_scope.h"
#include "suite/connection/target.h"
#include "syshealth/host/connect_info.h"

namespace brivel {

/// What the command line asks for.
struct CommandLine {
  enum class Action { kRun, kListApplications, kShowHelp, kShowVersion };
  Action action = Action::kRun;

  std::string application;   ///< Name of the module.
  std::int32_t command = 1;  ///< 1 show, 2 set, or any number.
  args::OptionValues applicationOptions;

  ConnectMode mode = kConnectModeInBand;
  connection::TargetChoice target;

  std::string localRoot;     ///< Folder of a recorded machine that is read
                             ///< instead of this one; empty: none.
  std::string settingsFile;  ///< Empty: the usual places.
  std::string logFile;  ///< Empty: as the settings say, or the usual place.
  std::optional<int> logLevel;
  bool stats = false;
};

/// Reads a command line by the table of options (options.h); the first
/// argument is the program's name. Returns nullopt and sets `error` if it is
/// not understood: a clause without control characters and without any text
/// that may be a password.
std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv,
                                            std::string& error);

}  // namespace brivel
