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

std::vector<bench::Job> delayJobs() {
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

// Controllers with one slow processor, and one that is far away.
std::vector<bench::Job> slowJobs() {
  std::vector<bench::Job> jobs;
  for (const bench::Slowness slowness :
       {bench::Slowness{250, 50, 30, 20}, bench::Slowness{100, 20, 50, 20},
        bench::Slowness{0, 0, 0, 50}}) {
    for (const bool walk : {true, false}) {
      for (const unsigned connections : {1U, 2U, 4U, 16U}) {
        bench::Job job;
        job.name = walk ? "summary" : "six tables";
        if (!walk) {
          job.arguments = {"--device", "all"};
        }
        job.connections = connections;
        job.slowness = slowness;
        job.walk = walk;
        job.curl = false;
        jobs.push_back(job);
      }
    }
  }
  return jobs;
}

// Controllers that close each connection, grant no session to take up, or get
// slower or faster in mid-run, in ways that no processor's load tells.
std::vector<bench::Job> oddJobs() {
  struct Odd {
    const char* circumstances;
    const char* faults;
  };
  std::vector<bench::Job> jobs;
  for (const Odd odd :
       {Odd{"closes after each answer",
            R"("rules": [{"delivery": {"ending": "close"}}])"},
        Odd{"no sessions", R"("tls": {"noResumption": true})"},
        Odd{"200 ms more from the 10th read on",
            R"("rules": [{"match": {"method": "GET", "nth": "10-"},
                          "delivery": {"delayMs": 200}}])"},
        Odd{"300 ms more up to the 9th read",
            R"("rules": [{"match": {"method": "GET", "nth": "1-9"},
                          "delivery": {"delayMs": 300}}])"}}) {
    for (const bench::Slowness slowness :
         {bench::Slowness{250, 50, 30, 20}, bench::Slowness{100, 20, 50, 20},
          bench::Slowness{0, 0, 0, 50}}) {
      for (const bool walk : {true, false}) {
        bench::Job job;
        job.name = walk ? "summary" : "six tables";
        if (!walk) {
          job.arguments = {"--device", "all"};
        }
        job.slowness = slowness;
        job.walk = walk;
        job.curl = false;
        job.faults = odd.faults;
        job.circumstances = odd.circumstances;
        jobs.push_back(job);
      }
    }
  }
  return jobs;
}

// Does the jobs and prints a row for each one; false when one fails.
bool measureAll(const std::vector<bench::Job>& jobs, unsigned runs,
                void (*printRow)(const bench::Job&, const bench::Outcome&)) {
  for (const bench::Job& job : jobs) {
    std::string error;
    const auto outcome = bench::measure(job, runs, error);
    if (!outcome) {
      std::cerr << "controller_bench: " << job.name << ": " << error << '\n';
      return false;
    }
    printRow(job, *outcome);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  unsigned runs = 5;
  std::string table;
  CLI::App app("Measures brivel against a controller on loopback.");
  app.add_option("--runs", runs, "Runs of which the median is taken")
      ->check(CLI::PositiveNumber);
  app.add_option("--table", table, "Which table; the first two without it")
      ->check(CLI::IsMember({"delay", "slow", "odd"}));
  CLI11_PARSE(app, argc, argv);

  if (table == "odd") {
    bench::printOddHead();
    return measureAll(oddJobs(), runs, &bench::printOddRow) ? EXIT_SUCCESS
                                                            : EXIT_FAILURE;
  }
  if (table != "slow") {
    bench::printHead();
    if (!measureAll(delayJobs(), runs, &bench::printRow)) {
      return EXIT_FAILURE;
    }
  }
  if (table.empty()) {
    std::cout << '\n';
  }
  if (table != "delay") {
    bench::printSlowHead();
    if (!measureAll(slowJobs(), runs, &bench::printSlowRow)) {
      return EXIT_FAILURE;
    }
  }
  return EXIT_SUCCESS;
}
