// Runs brivel against a controller on loopback and prints what it took: how
// many requests and levels, how long, how much memory, beside the bounds that
// the controller's delay sets and beside curl fetching the same URLs.

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "bench/controller/measure.h"
#include "bench/controller/report.h"

namespace {

std::vector<bench::Job> allJobs() {
  std::vector<bench::Job> jobs;
  for (const unsigned delayMs : {0U, 50U}) {
    for (const bool expand : {false, true}) {
      for (const unsigned connections : {4U, 16U}) {
        jobs.push_back({"summary", {}, delayMs, expand, connections});
        jobs.push_back(
            {"six tables", {"--device", "all"}, delayMs, expand, connections});
      }
    }
  }
  // Servers small enough that the connections never run out.
  for (const char* sample : {"edge", "old-schema", "two-node"}) {
    jobs.push_back({"six tables", {"--device", "all"}, 50, false, 16, sample});
  }
  return jobs;
}

}  // namespace

int main(int argc, char** argv) {
  unsigned runs = 5;
  CLI::App app("Measures brivel against a controller on loopback.");
  app.add_option("--runs", runs, "Runs of which the median is taken")
      ->check(CLI::PositiveNumber);
  CLI11_PARSE(app, argc, argv);

  bench::printHead();
  for (const bench::Job& job : allJobs()) {
    std::string error;
    const auto outcome = bench::measure(job, runs, error);
    if (!outcome) {
      std::cerr << "controller_bench: " << job.name << ": " << error << '\n';
      return EXIT_FAILURE;
    }
    bench::printRow(job, *outcome);
  }
  return EXIT_SUCCESS;
}
