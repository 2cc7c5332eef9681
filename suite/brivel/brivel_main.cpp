#include "suite/brivel/brivel_main.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/args/integer.h"
#include "suite/brivel/application_run.h"
#include "suite/brivel/command_line.h"
#include "suite/brivel/exit_status.h"
#include "suite/brivel/help.h"
#include "suite/brivel/progress_line.h"
#include "suite/brivel/result_line.h"
#include "suite/brivel/standard_streams.h"
#include "suite/brivel/stats_lines.h"
#include "suite/brivel/terminal.h"
#include "suite/brivel/user_paths.h"
#include "suite/connection/connections.h"
#include "suite/connection/prefetch.h"
#include "suite/connection/run_watch.h"
#include "suite/connection/settings.h"
#include "suite/connection/target.h"
#include "suite/log/escape.h"
#include "suite/log/log_file.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kStandardError = 2;

/// Writes a line of the host's own on standard error.
void tell(const std::string& text) {
  std::cerr << "brivel: " << logging::escapeControls(text) << std::endl;
}

int usageError(const std::string& text) {
  tell(text);
  std::cerr << "Try 'brivel --help'." << std::endl;
  return kExitUsage;
}

/// The settings of the run; nothing, and the reason in `error`, when they
/// cannot be read.
std::optional<connection::Settings> readSettings(const CommandLine& line,
                                                 std::string& error) {
  const std::string file =
      line.settingsFile.empty() ? settingsFile() : line.settingsFile;
  if (file.empty()) {
    return connection::Settings();
  }
  return connection::loadSettings(file, homeDirectory(), error);
}

void openRunLog(const CommandLine& line, const connection::Settings& settings) {
  logging::LogOptions options;
  options.file = !line.logFile.empty() ? line.logFile
                 : settings.logFile    ? *settings.logFile
                                       : logFile();
  const std::optional<int> level =
      line.logLevel ? line.logLevel : settings.logLevel;
  if (level) {
    options.level = static_cast<unsigned int>(*level);
  }
  logging::openLog(options);
}

void warnOfInsecurity(const connection::Target& target) {
  if (!target.insecure ||
      target.address.scheme != connection::Address::Scheme::kHttps) {
    return;
  }
  tell("warning: the certificate of " + connection::inWords(target.address) +
       " is not checked" + (target.pin.empty() ? "" : ", only its pinned key") +
       " (insecure)");
}

/// The target of a run that has one.
std::optional<connection::Target> targetOf(const CommandLine& line,
                                           const connection::Settings& settings,
                                           std::string& error) {
  if (line.mode != kConnectModeEsxi) {
    return connection::resolveTarget(line.target, settings, error);
  }
  auto address = connection::parseAddress(line.target.text, error);
  if (!address) {
    return std::nullopt;
  }
  connection::Target target;
  target.user = address->user;
  target.address = *std::move(address);
  return target;
}

/// What the options of the application tell of the run.
connection::RunHints hintsOf(const args::OptionValues& options) {
  const auto device = options.find("device");
  const auto node = options.find("node");
  connection::RunHints hints;
  hints.wants =
      connection::wantsOf(device == options.end() ? nullptr : &device->second);
  if (node != options.end()) {
    hints.node = args::parseInteger(node->second).value_or(0);
  }
  return hints;
}

/// What a person should know about a run that failed without a cause of its
/// own; empty when the host does not know it either.
std::string causeOf(const connection::Connections& connections,
                    const args::OptionValues& options) {
  const std::string cause = connections.cause();
  const auto device = options.find("device");
  return cause.empty() && device != options.end()
             ? connection::objectionToItems(device->second)
             : cause;
}

/// Runs the application and closes the connections. The exit status, and the
/// host's own lines on standard error.
int run(const CommandLine& line, const connection::Settings& settings,
        std::optional<connection::Secret> environmentPassword,
        Clock::time_point begun) {
  std::string error;
  std::optional<connection::Target> target = targetOf(line, settings, error);
  if (!error.empty()) {
    return usageError((line.target.text.empty() ? "this server: " : "") +
                      error);
  }
  if (target) {
    warnOfInsecurity(*target);
  }
  connection::installInterruptHandlers();
  connection::Connections connections(line.mode, std::move(target),
                                      std::move(environmentPassword),
                                      hintsOf(line.applicationOptions));
  std::optional<ProgressLine> progress;
  if (isTerminal(kStandardError)) {
    progress.emplace(kStandardError);
  }
  std::optional<RunResult> result = runApplication(line, error);
  progress.reset();
  connections.close();

  if (!result) {
    tell(error);
    return kExitModule;
  }
  if (line.stats) {
    std::cerr << statsLines(connections.costs(), Clock::now() - begun)
              << std::flush;
  }
  if (connection::interrupted()) {
    tell("interrupted");
    return kExitInterrupted;
  }
  const bool abandoned = outputIsAbandoned();
  if (result->code == kResultSuccess && !outputIsWhole()) {
    result->code = kResultWriteFileFailed;
    result->cause = "standard output cannot be written";
  } else if (result->code != kResultSuccess && result->cause.empty()) {
    result->cause = causeOf(connections, line.applicationOptions);
  }
  if (result->code != kResultSuccess && !abandoned) {
    std::cerr << resultLine(*result, logging::logPath()) << std::endl;
  }
  return exitStatusOf(result->code);
}

int list() {
  std::vector<std::string> errors;
  std::cout << listApplications(errors) << std::flush;
  for (const std::string& error : errors) {
    tell(error);
  }
  return errors.empty() ? kExitSuccess : kExitModule;
}

int brivel(int argc, char** argv) {
  const Clock::time_point begun = Clock::now();
  prepareStandardStreams();
  // Out of the environment first of all, whatever becomes of the run.
  std::optional<connection::Secret> environmentPassword =
      connection::takeEnvironmentPassword();
  std::string error;
  const std::optional<CommandLine> line = parseCommandLine(argc, argv, error);
  if (!line) {
    return usageError(error);
  }
  if (line->action == CommandLine::Action::kShowHelp) {
    std::cout << helpText() << std::flush;
    return kExitSuccess;
  }
  if (line->action == CommandLine::Action::kShowVersion) {
    std::cout << versionText() << std::flush;
    return kExitSuccess;
  }
  const std::optional<connection::Settings> settings =
      readSettings(*line, error);
  if (!settings) {
    tell(error);
    return kExitUsage;
  }
  openRunLog(*line, *settings);
  const int status =
      line->action == CommandLine::Action::kListApplications
          ? list()
          : run(*line, *settings, std::move(environmentPassword), begun);
  logging::closeLog();
  return status;
}

}  // namespace
}  // namespace brivel

int brivelMain(int argc, char** argv) {
  try {
    return brivel::brivel(argc, argv);
  } catch (const std::exception& failure) {
    brivel::tell(std::string("internal error: ") + failure.what());
  }
  return kResultInternalError;
}
