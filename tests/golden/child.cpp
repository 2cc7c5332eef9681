#include "tests/golden/child.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>

namespace golden {
namespace {

constexpr unsigned kTimeLimitSeconds = 60;
constexpr int kCannotStart = 127;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

// A crash leaves as much as the system ever lets it, whatever limit this
// process was given.
void allowCores() {
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) != 0) {
    return;
  }
  limit.rlim_cur = limit.rlim_max;
  static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
}

// Signals mean what they mean to a program at a terminal, also where the tests
// run under nohup, or in the background of a shell, which has them ignored.
void heedSignals() {
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
    static_cast<void>(signal(number, SIG_DFL));
  }
}

bool redirect(const char* file, int flags, int descriptor) {
  constexpr mode_t kMode = 0600;
  const int opened = open(file, flags, kMode);
  return opened >= 0 && dup2(opened, descriptor) == descriptor;
}

}  // namespace

Outcome runChild(const Command& command,
                 const std::function<void(pid_t)>& meanwhile) {
  std::vector<std::string> words{command.program.string()};
  words.insert(words.end(), command.arguments.begin(), command.arguments.end());
  std::vector<std::string> settings = command.environment;
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> environment = pointersTo(settings);

  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (child == 0) {
    // The alarm outlives exec and ends a program that hangs.
    alarm(kTimeLimitSeconds);
    allowCores();
    heedSignals();
    constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
    if (redirect(command.input.c_str(), O_RDONLY, STDIN_FILENO) &&
        redirect(command.output.c_str(), kWrite, STDOUT_FILENO) &&
        redirect(command.errors.c_str(), kWrite, STDERR_FILENO) &&
        chdir(command.directory.c_str()) == 0) {
      execve(command.program.c_str(), argv.data(), environment.data());
    }
    _exit(kCannotStart);
  }

  if (meanwhile) {
    meanwhile(child);
  }
  int status = 0;
  rusage used{};
  while (wait4(child, &status, 0, &used) < 0) {
    if (errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "wait4");
    }
  }
  constexpr int kSignalled = 128;
  Outcome outcome;
  outcome.status =
      WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
  outcome.dumpedCore = WIFSIGNALED(status) && WCOREDUMP(status);
  outcome.milliseconds = static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(
          std::chrono::steady_clock::now() - start)
          .count());
  outcome.kibibytes = static_cast<std::uint64_t>(used.ru_maxrss);
  return outcome;
}

}  // namespace golden
