#include "bench/controller/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace bench {
namespace {

double toMilliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 +
         static_cast<double>(time.tv_usec) / 1e3;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

Run runProgram(std::vector<std::string> words, const std::string& home,
               const std::string& errorFile) {
  std::vector<std::string> settings{
      "LC_ALL=C", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "HOME=" + home};
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> environment = pointersTo(settings);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null",
                                   O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null",
                                   O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);

  Run run;
  const auto start = std::chrono::steady_clock::now();
  pid_t process = -1;
  const int error = posix_spawnp(&process, argv[0], &actions, nullptr,
                                 argv.data(), environment.data());
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (error != 0 || wait4(process, &status, 0, &usage) != process) {
    return run;
  }
  run.milliseconds = std::chrono::duration<double, std::milli>(
                         std::chrono::steady_clock::now() - start)
                         .count();
  run.cpuMilliseconds =
      toMilliseconds(usage.ru_utime) + toMilliseconds(usage.ru_stime);
  run.mebibytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

}  // namespace bench
