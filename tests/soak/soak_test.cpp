// Runs of the program against controllers that do wrong at random. Each run is
// drawn from a seed, which a failure names; BRIVEL_SOAK_SEED and
// BRIVEL_SOAK_RUNS choose the first seed and how many follow it.

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/soak/random_run.h"
#include "tests/support/child_process.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

constexpr const char* kPassword = "Nothing-2-Hide";
constexpr int kSignalled = 128;

// What all runs came to.
struct Figures {
  std::map<int, std::uint64_t> runsByStatus;
  std::uint64_t sessions = 0;
  std::uint64_t sessionsLost = 0;  // Those of `mayLoseSession`, or told.
  std::uint64_t mostKibibytes = 0;
  double slowest = 0;  // Milliseconds.
};

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
  const char* const text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

// What a run wrote: its streams and its log.
std::string writtenBy(const support::ChildProcess& child,
                      const std::string& log) {
  return child.output() + child.errors() + support::fileText(log);
}

// Whether a run ended by itself: with a status of its own, or by the signal
// that it was sent.
bool endedInOrder(int status, int signal) {
  return status < kSignalled || status == kSignalled + SIGINT ||
         (signal != 0 && status == kSignalled + signal);
}

// Each session that was granted in an answer that was sent whole has been asked
// to end, unless an answer has said that there is none.
void expectLogouts(const std::vector<bmc::LoggedRequest>& requests,
                   std::uint64_t open, const std::string& written) {
  std::uint64_t granted = 0;
  std::uint64_t logouts = 0;
  for (const bmc::LoggedRequest& request : requests) {
    if (request.status == 401) {
      return;
    }
    const bool grants = request.method == "POST" && request.status == 201;
    if (grants && request.complete) {
      ++granted;
    } else if (request.method == "DELETE") {
      ++logouts;
    }
  }
  EXPECT_LE(std::min(open, granted), logouts) << written;
}

void runOnce(std::uint64_t seed, Figures& figures) {
  const soak::RandomRun run = soak::randomRun(seed);
  const support::TempFolder folder;
  std::vector<std::string> bmc = {"--tree", SAMPLES "/" + run.sample,
                                  "--faults",
                                  folder.write("faults.json", run.faults)};
  bmc.insert(bmc.end(), run.bmc.begin(), run.bmc.end());
  const bmc::Controller controller(bmc);
  ASSERT_TRUE(controller.running()) << run.faults;

  support::ChildOptions options;
  options.program = BRIVEL_PROGRAM;
  options.environment = {"HOME=" + folder.path().string(), "LC_ALL=C",
                         "BRIVEL_PASSWORD=" + std::string(kPassword)};
  for (const std::string& setting : support::sanitizerOptions()) {
    options.environment.push_back(setting);
  }
  options.arguments = {"--bmc",      controller.https(),
                       "--user",     "admin",
                       "--cacert",   controller.ready().certificate,
                       "--log-file", folder.at("log")};
  options.arguments.insert(options.arguments.end(), run.arguments.begin(),
                           run.arguments.end());
  options.closed = run.closed;
  support::ChildProcess child(options);
  if (run.signal != 0) {
    // Where it has come by then is part of what is tried.
    std::this_thread::sleep_for(run.after);
    child.signal(run.signal);
  }
  const support::ChildEnd end = child.wait();
  const bmc::Counters counters = controller.counters();

  EXPECT_TRUE(endedInOrder(end.status, run.signal)) << end.status;
  EXPECT_FALSE(end.dumpedCore);
  const std::string written = writtenBy(child, folder.at("log"));
  for (const char* secret :
       {kPassword, "bmc-token-", "YWRtaW46Tm90aGluZy0yLUhpZGU"}) {
    EXPECT_EQ(written.find(secret), std::string::npos) << written;
  }
  // One that the logout did not reach in time is told; one whose login had no
  // answer in time is not known.
  const bool told =
      written.find("open until it times out") != std::string::npos ||
      written.find("/Sessions: no whole answer") != std::string::npos;
  if (!told && !run.mayLoseSession) {
    EXPECT_EQ(counters.sessionsOpen, 0U) << written;
  }
  if (!told && !run.mayHideSession) {
    expectLogouts(controller.requests(), counters.sessionsOpen, written);
  }
#ifndef SYSHEALTH_SANITIZED
  constexpr std::uint64_t kMostKibibytes = std::uint64_t{128} << 10U;
  EXPECT_LE(end.kibibytes, kMostKibibytes);
#endif
  ++figures.runsByStatus[end.status];
  figures.sessions += counters.sessionsCreated;
  figures.sessionsLost += counters.sessionsOpen;
  figures.mostKibibytes = std::max(figures.mostKibibytes, end.kibibytes);
  figures.slowest = std::max(figures.slowest, end.milliseconds);
}

class Soak : public testing::TestWithParam<std::uint64_t> {};

TEST_P(Soak, RunsEndInOrder) {
  constexpr std::uint64_t kParts = 6;
  const std::uint64_t runs = fromEnvironment("BRIVEL_SOAK_RUNS", 300) / kParts;
  const std::uint64_t first =
      fromEnvironment("BRIVEL_SOAK_SEED", 1) + GetParam() * runs;
  Figures figures;
  for (std::uint64_t seed = first; seed < first + runs; ++seed) {
    SCOPED_TRACE("run it again: BRIVEL_SOAK_SEED=" + std::to_string(seed) +
                 " BRIVEL_SOAK_RUNS=6 soak_test --gtest_filter='*/0'");
    runOnce(seed, figures);
  }
  std::cout << "seeds " << first << " to " << first + runs - 1 << ": "
            << figures.sessions << " sessions, " << figures.sessionsLost
            << " of them left for faults of login and logout; slowest "
            << static_cast<std::uint64_t>(figures.slowest) << " ms, most "
            << figures.mostKibibytes << " KiB; runs by status";
  for (const auto& [status, count] : figures.runsByStatus) {
    std::cout << " " << status << ":" << count;
  }
  std::cout << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Seeds, Soak,
                         testing::Range(std::uint64_t{0}, std::uint64_t{6}));

}  // namespace
