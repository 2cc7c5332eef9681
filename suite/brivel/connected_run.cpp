#include "suite/brivel/connected_run.h"

#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/base/progress.h"
#include "suite/brivel/console.h"
#include "suite/brivel/finish_run.h"
#include "suite/brivel/progress_line.h"
#include "suite/brivel/stats_lines.h"
#include "suite/connection/connections.h"
#include "suite/connection/device_items.h"
#include "suite/connection/run_recording.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/standard_streams.h"
#include "suite/platform/terminal.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

void warnOfInsecurity(const connection::Target& target,
                      const std::string& name) {
  if (!target.insecure ||
      target.address.scheme != connection::Address::Scheme::kHttps) {
    return;
  }
  printError("warning: the certificate of " + name + " is not checked" +
             (target.pin.empty() ? "" : ", only its pinned key") +
             " (insecure)");
}

void warnOfInsecurity(const CommandLine& line,
                      const std::optional<connection::Target>& target,
                      const connection::InBandOptions& inBand) {
  if (target) {
    warnOfInsecurity(*target, connection::toString(target->address));
  } else if (line.localRoot.empty()) {
    warnOfInsecurity(inBand.controller, "this server's controller");
  }
}

// What the application will read, as far as its options tell.
connection::RunHints hintsOf(const args::OptionValues& options) {
  const auto device = options.find("device");
  const auto node = options.find("node");
  connection::RunHints hints;
  hints.wants =
      connection::wantsOf(device == options.end() ? nullptr : &device->second);
  if (node != options.end()) {
    hints.node = base::parseNumber<int>(node->second);
  }
  return hints;
}

// Says why a run failed for which the application gave no cause, if the host
// knows it.
void explain(RunResult& result, const connection::Connections& connections,
             const Application& application, const args::OptionValues& given) {
  // What the items of --device are, is known of the options that applications
  // without a specification have.
  const args::OptionValues options = application.specification().summary.empty()
                                         ? given
                                         : args::OptionValues();
  const auto device = options.find("device");
  if (auto failure = connections.failure()) {
    result.remedy = std::exchange(failure->remedy, "");
    result.cause = describe(*failure);
  } else if (device != options.end()) {
    result.cause = connection::problemWithItems(device->second);
  }
  result.combined = device != options.end() &&
                    connection::isCombined(result.code, device->second) &&
                    !connections.hasReturned(result.code);
}

// Begins to record if the command line says so. Returns why nothing is
// recorded all the same, or an empty text; fails if the run must not go on.
base::Result<std::string> beginRecording(const CommandLine& line,
                                         connection::RunRecording& recording) {
  if (line.recordRaw && line.record.empty()) {
    return base::makeFailure(
        base::FailureKind::kUsage,
        "--record-raw is for --record DIR, which is missing");
  }
  return line.record.empty() ? base::Result<std::string>("")
                             : recording.begin();
}

// Stores what the run has read. A run that succeeded otherwise has failed if it
// cannot be stored.
void finishRecording(connection::RunRecording& recording, std::string problem,
                     bool plugIn, RunResult& result) {
  if (auto missing = recording.finish(platform::interrupted())) {
    problem = *std::move(missing);
  }
  if (problem.empty()) {
    return;
  }
  if (result.code != kResultSuccess || result.ended || plugIn ||
      platform::interrupted()) {
    printError(problem);
    return;
  }
  result.code = kResultWriteFileFailed;
  result.cause = std::move(problem);
}

}  // namespace

base::Result<std::optional<connection::Target>> targetOf(
    const CommandLine& line, const connection::Settings& settings) {
  // The command line takes precedence over the source in the settings.
  if (!line.localRoot.empty()) {
    std::error_code failure;
    if (!std::filesystem::is_directory(std::filesystem::u8path(line.localRoot),
                                       failure)) {
      return base::makeFailure(
          base::FailureKind::kUsage,
          "--local-root: '" + line.localRoot + "' is no folder");
    }
    return std::optional<connection::Target>();
  }
  if (line.mode != kConnectModeEsxi) {
    return connection::resolveTarget(line.target, settings);
  }
  base::Result<connection::Address> address =
      connection::parseAddress(line.target.text);
  if (!address) {
    return address.error();
  }
  if (address->scheme == connection::Address::Scheme::kDirectory) {
    return base::usageFailure("--esxi names a host, not a recorded server");
  }
  connection::Target target;
  target.user = address->user;
  target.address = *std::move(address);
  return std::optional(std::move(target));
}

connection::InBandOptions inBandOf(const CommandLine& line,
                                   const connection::Settings& settings) {
  connection::InBandOptions options;
  options.controller = connection::controllerTarget(line.target, settings);
  options.bootstrapCredentials = settings.inband.bootstrapCredentials;
  options.root = line.localRoot.empty() ? "/" : line.localRoot;
  options.pciIdsFile = settings.inband.pciIdsFile;
  return options;
}

int runConnected(const CommandLine& line, Application& application,
                 std::optional<connection::Target> target,
                 connection::InBandOptions inBand,
                 std::optional<base::Secret> environmentPassword,
                 std::chrono::steady_clock::time_point begun) {
  const std::string name =
      target ? connection::toString(target->address) : "this server";
  warnOfInsecurity(line, target, inBand);
  const bool plugIn = application.specification().plugInExit;
  connection::RunRecording recording(line.record, !line.recordRaw);
  base::Result<std::string> unrecorded = beginRecording(line, recording);
  if (!unrecorded) {
    return usageError(unrecorded.error().cause, plugIn);
  }
  std::optional<ProgressLine> progress;
  if (platform::isTerminal(platform::kStandardError) &&
      !platform::outputIsPipe()) {
    progress.emplace(platform::kStandardError, name);
  }
  connection::Connections connections(
      line.mode, std::move(target), std::move(environmentPassword),
      hintsOf(line.applicationOptions), std::move(inBand));
  if (!line.record.empty()) {
    connections.recordInto(recording);
  }
  if (progress) {
    connections.showProgress(*progress);
  }
  RunResult result = application.run(line.command, line.applicationOptions);
  if (progress) {
    progress->done();
  }
  connections.close();
  if (!line.record.empty()) {
    finishRecording(recording, *std::move(unrecorded), plugIn, result);
  }

  if (line.stats) {
    const auto wallTime = std::chrono::steady_clock::now() - begun;
    std::cerr << statsLines(connections.costs(), wallTime) << std::flush;
  }
  if (result.code != kResultSuccess && result.cause.empty()) {
    explain(result, connections, application, line.applicationOptions);
  }
  return finishRun(std::move(result), connections.notices(), plugIn);
}

}  // namespace brivel
