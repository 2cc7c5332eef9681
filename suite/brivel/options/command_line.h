#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/args/parser_scope.h"
#include "suite/base/result.h"
#include "suite/brivel/options/options.h"
#include "suite/connection/settings/target.h"
#include "syshealth/host/connect_info.h"

namespace brivel {

/// The beginning of a command line, as far as it can be understood before the
/// application is loaded.
struct CommandLineStart {
  bool help = false;
  bool version = false;
  bool empty = false;        ///< There are no arguments at all.
  std::string application;   ///< The first word; empty: none.
  std::int32_t command = 1;  ///< If it stands right behind; else show.
};

/// Which targets a run of several reads, and how.
struct FleetChoice {
  std::string group;        ///< Of the settings; empty: none.
  std::string targetsFile;  ///< "-" for standard input; empty: none.
  int fanout = kDefaultFanout;
  std::optional<std::chrono::milliseconds> total;

  /// Whether several targets are chosen.
  bool chosen() const { return !group.empty() || !targetsFile.empty(); }
};

/// What the command line asks for.
struct CommandLine {
  enum class Action { kRun, kShowHelp, kShowVersion };
  Action action = Action::kRun;

  std::string application;             ///< Name of a module or host command.
  std::int32_t command = 1;            ///< 1 show, 2 set, or any number.
  std::vector<std::string> arguments;  ///< Of a host command.
  args::OptionValues applicationOptions;

  ConnectMode mode = kConnectModeInBand;
  connection::TargetChoice target;
  FleetChoice fleet;
  bool groups = false;  ///< Of the command `targets`: list the groups.

  std::string localRoot;     ///< Folder of a recorded machine that is read
                             ///< instead of this one; empty: none.
  std::string record;        ///< Folder to record into; empty: none.
  bool recordRaw = false;    ///< Without masking.
  std::string settingsFile;  ///< Empty: the usual places.
  std::string logFile;  ///< Empty: as the settings say, or the usual place.
  std::optional<int> logLevel;
  bool stats = false;
};

// The functions below fail if they do not understand the command line. The
// cause is a clause without control characters and without any text that may be
// a password. The first argument is the program's name.

/// Reads the beginning of a command line.
base::Result<CommandLineStart> readCommandLineStart(int argc,
                                                    const char* const* argv);

/// Reads the command line of an application that takes the options
/// `applicationOptions` beside those of every run.
base::Result<CommandLine> parseCommandLine(
    int argc, const char* const* argv, const OptionList& applicationOptions);

/// Reads the command line of a command of the host.
base::Result<CommandLine> parseHostCommandLine(int argc,
                                               const char* const* argv,
                                               const HostCommand& command);

}  // namespace brivel
