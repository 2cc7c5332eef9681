#include "suite/brivel/host_commands.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "suite/base/natural_order.h"
#include "suite/base/suggestion.h"
#include "suite/base/text.h"
#include "suite/brivel/application.h"
#include "suite/brivel/console.h"
#include "suite/brivel/exit_status.h"
#include "suite/brivel/options/command_line.h"
#include "suite/brivel/options/help.h"
#include "suite/brivel/pin_command.h"
#include "suite/brivel/run_settings.h"
#include "suite/brivel/version.h"
#include "suite/platform/terminal.h"

namespace brivel {
namespace {

std::size_t outputWidth() {
  return platform::terminalWidth(platform::kStandardOutput, kHelpWidth);
}

int showApplications() {
  std::vector<std::string> errors;
  std::cout << listApplications(errors) << std::flush;
  for (const std::string& error : errors) {
    printError(error);
  }
  return errors.empty() ? kExitSuccess : kExitModule;
}

template <typename Map>
std::vector<std::string> namesOf(const Map& map) {
  std::vector<std::string> names;
  names.reserve(map.size());
  for (const auto& [name, value] : map) {
    names.push_back(name);
  }
  std::sort(names.begin(), names.end(), base::naturallyBefore);
  return names;
}

// Lists targets or groups of the settings, a name a line: what ClusterShell
// asks for.
int showTargets(const CommandLine& line, const connection::Settings& settings) {
  const std::string& group = line.fleet.group;
  std::vector<std::string> names =
      line.groups ? namesOf(settings.groups) : namesOf(settings.targets);
  if (!group.empty()) {
    const auto members = connection::findGroup(settings, group);
    if (!members) {
      return usageError(members.error().cause);
    }
    names = **members;
  }
  if (settings.file.empty()) {
    printError("there is no settings file that would name targets");
  }
  std::string text;
  for (const std::string& name : names) {
    text += base::escapeControls(name) + "\n";
  }
  return show(text);
}

int helpOn(const std::string& name) {
  const auto application = Application::loadFor(kShowCommand, name);
  if (!application) {
    printError(application.error().cause);
    return kExitModule;
  }
  return show(applicationHelp(name, application->specification(),
                              application->options(), outputWidth()));
}

}  // namespace

int showFullHelp() { return show(fullHelp(outputWidth())); }

int runHostCommand(int argc, const char* const* argv,
                   const HostCommand& command) {
  const auto line = parseHostCommandLine(argc, argv, command);
  if (!line) {
    return usageError(line.error().cause);
  }
  if (line->action == CommandLine::Action::kShowVersion) {
    return show(versionText());
  }
  if (line->action == CommandLine::Action::kShowHelp) {
    return showFullHelp();
  }
  if (command.name == kHelpCommand) {
    return line->arguments.empty() ? showFullHelp()
                                   : helpOn(line->arguments.front());
  }
  if (command.name != kTargetsCommand && command.name != kPinCommand) {
    return showApplications();
  }
  const auto settings = readRunSettings(line->settingsFile);
  if (!settings) {
    printError(settings.error().cause);
    return kExitUsage;
  }
  return command.name == kPinCommand ? showPins(*line, *settings)
                                     : showTargets(*line, *settings);
}

}  // namespace brivel
