#include "suite/brivel/brivel_main.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/brivel/application_run.h"
#include "suite/brivel/command_line.h"
#include "suite/brivel/connected_run.h"
#include "suite/brivel/exit_status.h"
#include "suite/brivel/help.h"
#include "suite/brivel/print_error.h"
#include "suite/brivel/standard_streams.h"
#include "suite/brivel/user_paths.h"
#include "suite/connection/run_watch.h"
#include "suite/connection/settings.h"
#include "suite/connection/target.h"
#include "suite/log/log_file.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

int usageError(const std::string& text) {
  printError(text);
  std::cerr << "Try 'brivel --help'." << std::endl;
  return kExitUsage;
}

int show(std::string_view text) {
  std::cout << text << std::flush;
  return outputIsWhole() ? kExitSuccess : kResultWriteFileFailed;
}

// The settings of the run. Returns nullopt and sets `error` if they cannot be
// read.
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

int list() {
  std::vector<std::string> errors;
  std::cout << listApplications(errors) << std::flush;
  for (const std::string& error : errors) {
    printError(error);
  }
  return errors.empty() ? kExitSuccess : kExitModule;
}

// Runs what the command line asks for on its target.
int run(const CommandLine& line, const connection::Settings& settings,
        std::optional<connection::Secret> environmentPassword,
        std::chrono::steady_clock::time_point begun) {
  std::string error;
  std::optional<connection::Target> target = targetOf(line, settings, error);
  if (!error.empty()) {
    return usageError((line.target.text.empty() ? "this server: " : "") +
                      error);
  }
  return runConnected(line, std::move(target), inBandOf(line, settings),
                      std::move(environmentPassword), begun);
}

int brivel(int argc, char** argv) {
  const auto begun = std::chrono::steady_clock::now();
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
    return show(helpText());
  }
  if (line->action == CommandLine::Action::kShowVersion) {
    return show(versionText());
  }
  connection::installInterruptHandlers();
  const std::optional<connection::Settings> settings =
      readSettings(*line, error);
  if (!settings) {
    printError(error);
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
  // The start of the process has walked through all libraries, and its end
  // does so once more, on top of what the run has touched.
  connection::releaseLoaderPages();
  int status = kResultInternalError;
  try {
    status = brivel::brivel(argc, argv);
  } catch (const std::exception& failure) {
    brivel::printError(std::string("internal error: ") + failure.what());
  }
  connection::releaseLoaderPages();
  return status;
}
