// Runs brivel on a recorded machine and on this one, and prints how long it
// took and how much memory, beside two programs that administrators know:
// dmidecode, which decodes the firmware's table alone, and lshw, which lists
// the parts of the machine it runs on.

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "bench/controller/program.h"
#include "bench/local/dump.h"
#include "tests/support/temp_folder.h"

namespace {

struct Job {
  std::string what;
  std::vector<std::string> words;
  std::vector<bench::Run> runs;
};

std::vector<Job> jobsOf(const std::string& brivel, const std::string& recorded,
                        const std::string& dump) {
  return {
      {"recorded: brivel, six tables",
       {brivel, "--log-level", "0", "--local-root", recorded, "syshealth",
        "--device", "all"},
       {}},
      {"recorded: dmidecode", {"dmidecode", "--from-dump", dump}, {}},
      {"this machine: brivel, six tables",
       {brivel, "--log-level", "0", "syshealth", "--device", "all"},
       {}},
      {"this machine: dmidecode", {"dmidecode"}, {}},
      {"this machine: lshw -quiet", {"lshw", "-quiet"}, {}},
      {"nothing", {"true"}, {}},
  };
}

double median(std::vector<bench::Run> runs, double bench::Run::*value) {
  std::sort(runs.begin(), runs.end(),
            [&](const auto& a, const auto& b) { return a.*value < b.*value; });
  return runs[runs.size() / 2].*value;
}

void printRow(const Job& job) {
  constexpr int kNoSuchProgram = 127;
  const int status = job.runs.front().status;
  if (status == kNoSuchProgram) {
    std::printf("| %s | not installed | | | |\n", job.what.c_str());
    return;
  }
  std::printf("| %s | %d | %.1f | %.1f | %.1f |\n", job.what.c_str(), status,
              median(job.runs, &bench::Run::milliseconds),
              median(job.runs, &bench::Run::cpuMilliseconds),
              median(job.runs, &bench::Run::mebibytes));
}

}  // namespace

int main(int argc, char** argv) {
  unsigned count = 25;
  std::string brivel = BRIVEL_PROGRAM;
  std::string recorded = LOCAL_SERVER;
  CLI::App app("Measures what reading a machine's own parts costs.");
  app.add_option("--runs", count, "Runs of which the median is taken")
      ->check(CLI::PositiveNumber);
  app.add_option("--brivel", brivel, "The program");
  app.add_option("--recorded", recorded, "Folder of a recorded machine");
  CLI11_PARSE(app, argc, argv);

  const support::TempFolder work;
  const std::string dump = work.at("dump");
  if (!bench::writeDump(recorded, dump)) {
    std::cerr << "local_bench: " << recorded << " cannot be read, or " << dump
              << " not be written\n";
    return EXIT_FAILURE;
  }
  std::vector<Job> jobs = jobsOf(brivel, recorded, dump);
  // In turns, so that what else the machine does falls on all alike.
  for (unsigned run = 0; run < count; ++run) {
    for (Job& job : jobs) {
      job.runs.push_back(bench::runProgram(job.words, work.path().string()));
    }
  }
  std::puts("| run | exit status | wall ms | processor ms | MiB |");
  std::puts("|---|---|---|---|---|");
  for (const Job& job : jobs) {
    printRow(job);
  }
  return EXIT_SUCCESS;
}
