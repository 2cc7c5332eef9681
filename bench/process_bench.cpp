// The whole program on the recorded server, from its start to its end. The
// time of an empty program stands beside it: that much is the system's.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace {

const std::string kTarget = "file:" RACK_SERVER;

// Runs a program with its output thrown away. Its exit status; -1 when it
// cannot be started or a signal ended it.
int run(std::vector<std::string> words) {
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);
  std::vector<std::string> settings{"LC_ALL=C", "HOME=/nonexistent"};
  std::vector<char*> environment;
  for (std::string& setting : settings) {
    environment.push_back(setting.data());
  }
  environment.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null",
                                   O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null",
                                   O_WRONLY, 0);
  pid_t process = -1;
  const int error = posix_spawn(&process, argv[0], &actions, nullptr,
                                argv.data(), environment.data());
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (error != 0 || waitpid(process, &status, 0) != process) {
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void wholeProcess(benchmark::State& state, std::vector<std::string> words) {
  for (auto _ : state) {
    if (run(words) != 0) {
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
