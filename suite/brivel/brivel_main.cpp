#include "suite/brivel/brivel_main.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/base/progress.h"
#include "suite/brivel/application.h"
#include "suite/brivel/completion_run.h"
#include "suite/brivel/connected_run.h"
#include "suite/brivel/console.h"
#include "suite/brivel/exit_status.h"
#include "suite/brivel/finish_run.h"
#include "suite/brivel/fleet_run.h"
#include "suite/brivel/host_commands.h"
#include "suite/brivel/modules/module_search.h"
#include "suite/brivel/options/command_line.h"
#include "suite/brivel/options/help.h"
#include "suite/brivel/run_settings.h"
#include "suite/brivel/version.h"
#include "suite/connection/password/environment_password.h"
#include "suite/connection/settings/settings.h"
#include "suite/connection/settings/target.h"
#include "suite/log/log_file.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/library_search.h"
#include "suite/platform/memory.h"
#include "suite/platform/standard_streams.h"
#include "suite/platform/terminal.h"
#include "suite/platform/user_paths.h"

namespace brivel {
namespace {

// The width of the help on one of the standard streams.
std::size_t widthOf(int descriptor) {
  return platform::terminalWidth(descriptor, kHelpWidth);
}

// Asked by the shells' completion alone, and told nowhere.
constexpr std::string_view kCompleteOption = "--complete";

void openRunLog(const CommandLine& line, const connection::Settings& settings) {
  logging::LogOptions options;
  options.file = !line.logFile.empty() ? line.logFile
                 : settings.logFile    ? *settings.logFile
                                       : platform::logFile();
  if (options.file == connection::kNoLog) {
    options.file.clear();
  }
  options.askedFor = !line.logFile.empty() || settings.logFile.has_value();
  const std::optional<int> level =
      line.logLevel ? line.logLevel : settings.logLevel;
  if (level) {
    options.level = static_cast<unsigned int>(*level);
  }
  logging::openLog(options);
}

// The command line names no application.
int runNothing(const CommandLineStart& start) {
  if (start.version) {
    return show(versionText());
  }
  if (start.help) {
    return show(
        shortHelp(applicationNames(), widthOf(platform::kStandardOutput)));
  }
  if (start.empty) {
    std::cerr << shortHelp(applicationNames(),
                           widthOf(platform::kStandardError))
              << std::flush;
    return kExitUsage;
  }
  return usageError("no application is named");
}

// Runs what the command line asks for on its target.
int run(const CommandLine& line, const connection::Settings& settings,
        Application& application,
        std::optional<base::Secret> environmentPassword,
        std::chrono::steady_clock::time_point begun) {
  const bool plugIn = application.specification().plugInExit;
  if (line.fleet.chosen()) {
    auto members = membersOf(line, settings);
    return members ? runOnFleet(line, application, *std::move(members),
                                std::move(environmentPassword), begun)
                   : usageError(members.error().cause, plugIn);
  }
  base::Result<std::optional<connection::Target>> target =
      targetOf(line, settings);
  if (!target) {
    return usageError((line.target.text.empty() ? "this server: " : "") +
                          target.error().cause,
                      plugIn);
  }
  return runConnected(line, application, *std::move(target),
                      inBandOf(line, settings), std::move(environmentPassword),
                      begun);
}

int runApplication(int argc, char** argv, const CommandLineStart& start,
                   std::optional<base::Secret> environmentPassword,
                   std::chrono::steady_clock::time_point begun) {
  auto application = Application::loadFor(start.command, start.application);
  if (!application) {
    printError(application.error().cause);
    return kExitModule;
  }
  const OptionList options = application->options();
  const bool plugIn = application->specification().plugInExit;
  const auto line = parseCommandLine(argc, argv, options);
  if (!line) {
    return usageError(line.error().cause, plugIn);
  }
  if (line->action == CommandLine::Action::kShowVersion) {
    return show(versionText());
  }
  if (line->action == CommandLine::Action::kShowHelp) {
    return show(applicationHelp(line->application, application->specification(),
                                options, widthOf(platform::kStandardOutput)));
  }
  // A command that stands further back was not known when it was asked first.
  if (line->command != start.command) {
    const std::string problem = application->registerOptions(line->command);
    if (!problem.empty()) {
      printError(problem);
      return kExitModule;
    }
  }
  const base::Result<connection::Settings> settings =
      readRunSettings(line->settingsFile);
  if (!settings && plugIn) {
    return plugInUnknown(settings.error().cause);
  }
  if (!settings) {
    printError(settings.error().cause);
    return kExitUsage;
  }
  openRunLog(*line, *settings);
  return runGuarded(
      [&] {
        return run(*line, *settings, *application,
                   std::move(environmentPassword), begun);
      },
      plugIn);
}

int brivel(int argc, char** argv) {
  const auto begun = std::chrono::steady_clock::now();
  platform::limitLibrarySearch();
  platform::prepareStandardStreams();
  // Out of the environment first of all, whatever becomes of the run.
  std::optional<base::Secret> environmentPassword =
      connection::takeEnvironmentPassword();
  if (argc > 1 && argv[1] == kCompleteOption) {
    return runCompletion({argv + 2, argv + argc});
  }
  const auto start = readCommandLineStart(argc, argv);
  if (!start) {
    return usageError(start.error().cause);
  }
  if (start->application.empty()) {
    return runNothing(*start);
  }
  if (const HostCommand* const command = findHostCommand(start->application)) {
    return runHostCommand(argc, argv, *command);
  }
  platform::installInterruptHandlers();
  // The application registers itself before the place of the log is known.
  logging::keepEarlyLines();
  const int status =
      runApplication(argc, argv, *start, std::move(environmentPassword), begun);
  logging::closeLog();
  return status;
}

}  // namespace
}  // namespace brivel

int brivelMain(int argc, char** argv) {
  platform::returnLargeBlocks();
  brivel::endWithoutMemory();
  return brivel::runGuarded([=] { return brivel::brivel(argc, argv); }, false);
}
