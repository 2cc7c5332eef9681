// The whole program on the recorded server, from its start to its end. The
// time of an empty program stands beside it: that much is the system's.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "tests/support/child_process.h"

namespace {

const std::string kTarget = "file:" RACK_SERVER;

// Runs a program with its output thrown away. Whether all went well.
bool run(const std::vector<std::string>& words) {
  support::ChildOptions options;
  options.program = words.front();
  options.arguments.assign(words.begin() + 1, words.end());
  options.environment = {"LC_ALL=C", "HOME=/nonexistent"};
  options.outputFile = "/dev/null";
  return support::runChild(options).status == 0;
}

void wholeProcess(benchmark::State& state, std::vector<std::string> words) {
  for (auto _ : state) {
    if (!run(words)) {
      state.SkipWithError("the program failed");
      break;
    }
  }
}

BENCHMARK_CAPTURE(wholeProcess, empty, {"/bin/true"})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeProcess, summary,
                  {BRIVEL_PROGRAM, "--log-level", "0", "--bmc", kTarget,
                   "syshealth"})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeProcess, tables,
                  {BRIVEL_PROGRAM, "--log-level", "0", "--bmc", kTarget,
                   "syshealth", "--device", "all"})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
