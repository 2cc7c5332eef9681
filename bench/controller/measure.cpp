#include "bench/controller/measure.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <regex>
#include <utility>

#include "tests/bmc/control/controller.h"
#include "tests/bmc/options.h"
#include "tests/support/temp_folder.h"

namespace bench {
namespace {

using support::TempFolder;

double median(const std::vector<Run>& runs, double Run::*figure) {
  std::vector<double> values;
  for (const Run& run : runs) {
    values.push_back(run.*figure);
  }
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// At least one run is given.
Run medianOf(const std::vector<Run>& runs) {
  Run middle;
  middle.status = runs.front().status;
  for (const auto figure :
       {&Run::milliseconds, &Run::cpuMilliseconds, &Run::mebibytes}) {
    middle.*figure = median(runs, figure);
  }
  return middle;
}

std::vector<std::string> controllerArguments(const Job& job,
                                             const TempFolder& folder) {
  std::vector<std::string> arguments{"--tree", SAMPLES "/" + job.sample,
                                     "--delay-ms", std::to_string(job.delayMs)};
  if (job.expand) {
    arguments.insert(arguments.end(), {"--expand", "6"});
  }
  std::string faults = job.faults;
  if (job.walk) {
    faults += faults.empty() ? "" : ", ";
    faults += R"("tree": [{"path": "/redfish/v1",
                           "remove": ["/ServiceConditions"]}])";
  }
  if (!faults.empty()) {
    folder.write("faults.json", '{' + faults + '}');
    arguments.insert(arguments.end(), {"--faults", folder.at("faults.json")});
  }
  const Slowness& slowness = job.slowness;
  const std::initializer_list<std::pair<const char*, unsigned>> kTimes{
      {"--full-handshake-ms", slowness.fullHandshakeMs},
      {"--resumed-handshake-ms", slowness.resumedHandshakeMs},
      {"--request-ms", slowness.requestMs},
      {"--round-trip-ms", slowness.roundTripMs}};
  for (const auto& [option, milliseconds] : kTimes) {
    arguments.insert(arguments.end(), {option, std::to_string(milliseconds)});
  }
  return arguments;
}

std::vector<std::string> brivelCommand(const Job& job,
                                       const bmc::Controller& controller,
                                       const TempFolder& folder) {
  std::vector<std::string> words{BRIVEL_PROGRAM,
                                 "--bmc",
                                 "https://" + controller.https(),
                                 "--user",
                                 bmc::kDefaultUser,
                                 "--password-file",
                                 folder.at("password"),
                                 "--cacert",
                                 controller.ready().certificate,
                                 "--max-connections",
                                 std::to_string(job.connections),
                                 "--stats",
                                 "syshealth"};
  words.insert(words.end(), job.arguments.begin(), job.arguments.end());
  return words;
}

// Returns false, and sets `error`, if brivel fails.
bool runBrivel(const Job& job, const bmc::Controller& controller,
               const TempFolder& folder, Run& run, std::string& error) {
  run = runProgram(brivelCommand(job, controller, folder),
                   folder.path().string());
  if (run.status != 0) {
    error = "brivel failed: " + run.errors;
  }
  return run.status == 0;
}

// Lets curl fetch what brivel has fetched, from the same controller.
Run runCurl(const Job& job, const bmc::Controller& controller,
            const std::vector<bmc::LoggedRequest>& requests,
            const TempFolder& folder) {
  std::ofstream config(folder.at("curlrc"));
  config << "user = \"" << bmc::kDefaultUser << ':' << bmc::kDefaultPassword
         << "\"\ncacert = \"" << controller.ready().certificate << "\"\n";
  for (const bmc::LoggedRequest& request : requests) {
    if (request.method != "GET") {
      continue;
    }
    config << "url = \"https://" << controller.https() << request.target
           << "\"\noutput = \"/dev/null\"\n";
  }
  config.close();
  return runProgram({"curl", "--disable", "--silent", "--globoff", "--parallel",
                     "--parallel-max", std::to_string(job.connections),
                     "--parallel-immediate", "--config", folder.at("curlrc")},
                    folder.path().string());
}

// One run of a job on a controller of its own.
struct Measured {
  Run brivel;
  Run curl;
  std::vector<bmc::LoggedRequest> requests;
  bmc::Counters counters;
  std::size_t levels = 0;
};

// The number before the word "level" in what --stats has written; 0 when it
// is not there.
std::size_t levelsIn(const std::string& statistics) {
  std::smatch found;
  const std::regex pattern("([0-9]+) level");
  return std::regex_search(statistics, found, pattern)
             ? std::stoul(found[1].str())
             : 0;
}

std::optional<Measured> runOnce(const Job& job, std::string& error) {
  const TempFolder folder;
  const bmc::Controller controller(controllerArguments(job, folder));
  if (!controller.running()) {
    error = "the controller does not start";
    return std::nullopt;
  }
  folder.write("password", std::string(bmc::kDefaultPassword) + "\n");
  Measured measured;
  if (!runBrivel(job, controller, folder, measured.brivel, error)) {
    return std::nullopt;
  }
  measured.levels = levelsIn(measured.brivel.errors);
  measured.requests = controller.requests();
  measured.counters = controller.counters();
  if (!job.curl) {
    return measured;
  }
  measured.curl = runCurl(job, controller, measured.requests, folder);
  if (measured.curl.status != 0) {
    error = "curl failed: " + measured.curl.errors;
    return std::nullopt;
  }
  // The run before curl's found the processor's caches full of the controller's
  // start; this one finds what curl found.
  if (!runBrivel(job, controller, folder, measured.brivel, error)) {
    return std::nullopt;
  }
  return measured;
}

}  // namespace

std::optional<Outcome> measure(const Job& job, unsigned runs,
                               std::string& error) {
  Outcome outcome;
  std::vector<Run> brivel;
  std::vector<Run> curl;
  for (unsigned i = 0; i < runs; ++i) {
    const auto measured = runOnce(job, error);
    if (!measured) {
      return std::nullopt;
    }
    brivel.push_back(measured->brivel);
    curl.push_back(measured->curl);
    outcome.requests = measured->requests.size();
    outcome.connections = measured->counters.connections;
    outcome.resumed = measured->counters.tlsResumptions;
    outcome.mostUnderWay = measured->counters.maxOpenRequests;
    outcome.levels = measured->levels;
  }
  outcome.brivel = medianOf(brivel);
  outcome.curl = medianOf(curl);
  return outcome;
}

}  // namespace bench
