#include "suite/brivel/fleet_run.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/brivel/console.h"
#include "suite/brivel/finish_run.h"
#include "suite/brivel/progress_line.h"
#include "suite/brivel/stats_lines.h"
#include "suite/fleet/fleet.h"
#include "suite/platform/standard_streams.h"
#include "suite/platform/terminal.h"

namespace brivel {
namespace {

// One warning for all that are read without trust.
void warnOfInsecurity(const std::vector<fleet::Member>& members) {
  const auto insecure = std::count_if(
      members.begin(), members.end(), [](const fleet::Member& member) {
        return member.target && member.target->insecure &&
               member.target->pin.empty() &&
               member.target->address.scheme ==
                   connection::Address::Scheme::kHttps;
      });
  if (insecure > 0) {
    printError("warning: the certificates of " + std::to_string(insecure) +
               " targets are not checked (insecure)");
  }
}

}  // namespace

base::Result<std::vector<fleet::Member>> membersOf(
    const CommandLine& line, const connection::Settings& settings) {
  const FleetChoice& choice = line.fleet;
  const auto refused = [](const std::string& why) {
    return base::usageFailure(why);
  };
  if (!choice.targetsFile.empty()) {
    auto members =
        fleet::membersInFile(choice.targetsFile, line.target, settings);
    if (members && members->empty()) {
      return refused("--targets " + choice.targetsFile +
                     ": no target is named");
    }
    return members;
  }
  const auto names = connection::findGroup(settings, choice.group);
  if (!names) {
    return refused("--group: " + names.error().cause);
  }
  if ((*names)->empty()) {
    return refused("--group: '" + choice.group + "' in " + settings.file +
                   " holds no targets");
  }
  return fleet::membersNamed(**names, line.target, settings);
}

int runOnFleet(const CommandLine& line, Application& application,
               std::vector<fleet::Member> members,
               std::optional<base::Secret> environmentPassword,
               std::chrono::steady_clock::time_point begun) {
  warnOfInsecurity(members);
  std::optional<FleetLine> drawn;
  if (platform::isTerminal(platform::kStandardError) &&
      !platform::outputIsPipe()) {
    drawn.emplace(platform::kStandardError);
  }
  fleet::FleetOptions options;
  options.fanout = line.fleet.fanout;
  options.total = line.fleet.total;
  if (const auto node = line.applicationOptions.find("node");
      node != line.applicationOptions.end()) {
    options.node = base::parseNumber<int>(node->second);
  }
  options.environmentPassword = std::move(environmentPassword);
  options.progress = [&](const fleet::Progress& progress) {
    if (drawn) {
      drawn->show(progress.read, progress.failed, progress.all);
    }
  };
  fleet::Fleet fleet(std::move(members), std::move(options));
  RunResult result = application.run(line.command, line.applicationOptions);
  drawn.reset();
  if (line.stats) {
    const auto wallTime = std::chrono::steady_clock::now() - begun;
    std::cerr << statsLines({fleet.cost()}, wallTime) << std::flush;
  }
  return finishRun(std::move(result), {},
                   application.specification().plugInExit);
}

}  // namespace brivel
