#include "bench/controller/report.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace bench {
namespace {

std::string fixed(double value, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return text.str();
}

// What no client can beat: the levels one after another, or the requests
// through the connections, each at the controller's delay.
double boundOf(const Job& job, const Outcome& outcome) {
  const std::size_t rounds =
      (outcome.requests + job.connections - 1) / job.connections;
  return static_cast<double>(std::max(outcome.levels, rounds) * job.delayMs);
}

// How often a time holds another one; nothing where that one is 0.
std::string ratio(double time, double ideal) {
  return ideal > 0 ? fixed(time / ideal, 2) : "";
}

void printCells(const std::vector<std::string>& cells) {
  for (const std::string& cell : cells) {
    std::cout << "| " << cell << ' ';
  }
  std::cout << '|' << std::endl;
}

// What the one processor has to do whatever the client does: one full
// handshake and all requests.
double workOf(const Job& job, const Outcome& outcome) {
  return job.slowness.fullHandshakeMs +
         static_cast<double>(outcome.requests * job.slowness.requestMs);
}

std::string describe(const Slowness& slowness) {
  return std::to_string(slowness.fullHandshakeMs) + " / " +
         std::to_string(slowness.resumedHandshakeMs) + " / " +
         std::to_string(slowness.requestMs) + " + " +
         std::to_string(slowness.roundTripMs);
}

}  // namespace

void printHead() {
  const std::vector<std::string> head{"job",
                                      "server",
                                      "delay",
                                      "`$expand`",
                                      "connections",
                                      "requests",
                                      "levels",
                                      "wall ms",
                                      "per levels x delay",
                                      "per bound",
                                      "processor ms",
                                      "MiB",
                                      "curl ms",
                                      "curl processor ms",
                                      "curl MiB",
                                      "processor per curl's"};
  printCells(head);
  printCells(std::vector<std::string>(head.size(), "---"));
}

void printRow(const Job& job, const Outcome& outcome) {
  const double wall = outcome.brivel.milliseconds;
  const auto chain = static_cast<double>(outcome.levels * job.delayMs);
  printCells(
      {job.name, job.sample, std::to_string(job.delayMs),
       job.expand ? "yes" : "no",
       std::to_string(outcome.connections) + " of " +
           std::to_string(job.connections),
       std::to_string(outcome.requests), std::to_string(outcome.levels),
       fixed(wall, 1), ratio(wall, chain), ratio(wall, boundOf(job, outcome)),
       fixed(outcome.brivel.cpuMilliseconds, 1),
       fixed(outcome.brivel.mebibytes, 1), fixed(outcome.curl.milliseconds, 1),
       fixed(outcome.curl.cpuMilliseconds, 1), fixed(outcome.curl.mebibytes, 1),
       ratio(outcome.brivel.cpuMilliseconds, outcome.curl.cpuMilliseconds)});
}

void printSlowHead() {
  const std::vector<std::string> head{
      "job",         "controller",      "`--max-connections`",
      "connections", "of them resumed", "most under way",
      "requests",    "levels",          "wall ms",
      "bound ms",    "times the bound"};
  printCells(head);
  printCells(std::vector<std::string>(head.size(), "---"));
}

void printSlowRow(const Job& job, const Outcome& outcome) {
  const double bound = workOf(job, outcome);
  const double wall = outcome.brivel.milliseconds;
  printCells(
      {job.name, describe(job.slowness), std::to_string(job.connections),
       std::to_string(outcome.connections), std::to_string(outcome.resumed),
       std::to_string(outcome.mostUnderWay), std::to_string(outcome.requests),
       std::to_string(outcome.levels), fixed(wall, 1),
       bound > 0 ? fixed(bound, 0) : "", ratio(wall, bound)});
}

void printOddHead() {
  const std::vector<std::string> head{
      "job",         "controller", "`--max-connections`",
      "connections", "resumed",    "most under way",
      "requests",    "wall ms"};
  printCells(head);
  printCells(std::vector<std::string>(head.size(), "---"));
}

void printOddRow(const Job& job, const Outcome& outcome) {
  printCells(
      {job.name, describe(job.slowness) + ", " + job.circumstances,
       std::to_string(job.connections), std::to_string(outcome.connections),
       std::to_string(outcome.resumed), std::to_string(outcome.mostUnderWay),
       std::to_string(outcome.requests),
       fixed(outcome.brivel.milliseconds, 1)});
}

}  // namespace bench
