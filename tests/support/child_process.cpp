#include "tests/support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include "tests/support/file_text.h"

namespace support {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kPatienceMilliseconds = 10000;
constexpr int kCannotStart = 127;
constexpr int kSignalled = 128;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

void allowCores() {
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) != 0) {
    return;
  }
  limit.rlim_cur = limit.rlim_max;
  static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
}

// Tests that run under nohup, or in the background of a shell, have these
// ignored, and a child inherits that.
void heedSignals() {
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
    static_cast<void>(::signal(number, SIG_DFL));
  }
}

void put(int from, int as) {
  // The descriptor that it is already must only outlive exec.
  const bool done =
      from == as ? fcntl(as, F_SETFD, 0) == 0 : dup2(from, as) == as;
  if (!done) {
    _exit(kCannotStart);
  }
}

// Puts the descriptor, or without one the file, in place of a stream.
void redirect(int descriptor, const char* file, int flags, int as) {
  constexpr mode_t kMode = 0600;
  const int source =
      descriptor >= 0 ? descriptor : open(file, flags | O_CLOEXEC, kMode);
  if (source < 0) {
    _exit(kCannotStart);
  }
  put(source, as);
}

double toMilliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 +
         static_cast<double>(time.tv_usec) / 1e3;
}

}  // namespace

std::vector<std::string> ownEnvironment() {
  std::vector<std::string> settings;
  for (char** setting = environ; *setting != nullptr; ++setting) {
    settings.emplace_back(*setting);
  }
  return settings;
}

std::vector<std::string> sanitizerOptions() {
  std::vector<std::string> settings;
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) {
      settings.push_back(std::string(name) + "=" + value);
    }
  }
  return settings;
}

ChildProcess::ChildProcess(const ChildOptions& options) {
  folder_.write("input", options.input);
  std::vector<std::string> words{options.program};
  words.insert(words.end(), options.arguments.begin(), options.arguments.end());
  std::vector<std::string> settings = options.environment;
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> environment = pointersTo(settings);

  start_ = steady_clock::now();
  process_ = options.terminal ? forkpty(&terminal_, nullptr, nullptr, nullptr)
                              : fork();
  if (process_ < 0) {
    throw std::system_error(errno, std::generic_category(),
                            options.terminal ? "forkpty" : "fork");
  }
  if (process_ == 0) {
    become(options, argv.data(), environment.data());
  }
}

void ChildProcess::become(const ChildOptions& options, char* const* arguments,
                          char* const* environment) const {
  // The alarm outlives exec and this process.
  alarm(static_cast<unsigned>(options.timeLimit.count()));
  allowCores();
  heedSignals();
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  const std::string output =
      options.outputFile.empty() ? folder_.at("output") : options.outputFile;
  if (!options.terminal) {
    redirect(options.inputDescriptor, folder_.at("input").c_str(), O_RDONLY,
             STDIN_FILENO);
    redirect(options.errorDescriptor, folder_.at("errors").c_str(), kWrite,
             STDERR_FILENO);
  }
  redirect(options.outputDescriptor, output.c_str(), kWrite, STDOUT_FILENO);
  for (const int descriptor : options.closed) {
    close(descriptor);
  }
  if (options.directory.empty() || chdir(options.directory.c_str()) == 0) {
    execvpe(options.program.c_str(), arguments, environment);
  }
  _exit(kCannotStart);
}

ChildProcess::~ChildProcess() {
  if (!end_) {
    signal(SIGKILL);
    static_cast<void>(reap(0));
  }
  if (terminal_ >= 0) {
    close(terminal_);
  }
}

void ChildProcess::signal(int number) const {
  if (!end_) {
    kill(process_, number);
  }
}

void ChildProcess::type(const std::string& text) const {
  static_cast<void>(write(terminal_, text.data(), text.size()) < 0);
}

bool ChildProcess::await(const std::string& text) {
  while (shown_.find(text) == std::string::npos) {
    if (!readTerminal(kPatienceMilliseconds)) {
      return false;
    }
  }
  return true;
}

bool ChildProcess::terminalEchoes() const {
  termios settings = {};
  return tcgetattr(terminal_, &settings) == 0 && (settings.c_lflag & ECHO) != 0;
}

std::optional<ChildEnd> ChildProcess::waitFor(milliseconds patience) {
  constexpr milliseconds kPause{2};
  const auto last = steady_clock::now() + patience;
  while (!end_ && !reap(WNOHANG) && steady_clock::now() < last) {
    std::this_thread::sleep_for(kPause);
  }
  return end_;
}

ChildEnd ChildProcess::wait() {
  // The terminal ends with the program; it must be read for the program to go
  // on writing.
  while (terminal_ >= 0 && readTerminal(-1)) {
  }
  if (!end_ && !reap(0)) {
    throw std::system_error(errno, std::generic_category(), "wait4");
  }
  return *end_;
}

std::string ChildProcess::output() const {
  return fileText(folder_.at("output"));
}

std::string ChildProcess::errors() const {
  return terminal_ >= 0 ? shown_ : fileText(folder_.at("errors"));
}

bool ChildProcess::readTerminal(int timeoutMilliseconds) {
  pollfd watched = {};
  watched.fd = terminal_;
  watched.events = POLLIN;
  if (poll(&watched, 1, timeoutMilliseconds) != 1) {
    return false;
  }
  std::array<char, 512> bytes{};
  const ssize_t count = read(terminal_, bytes.data(), bytes.size());
  if (count <= 0) {
    return false;
  }
  shown_.append(bytes.data(), static_cast<std::size_t>(count));
  return true;
}

// Takes the end of the process, if it has come. Whether it has.
bool ChildProcess::reap(int flags) {
  int status = 0;
  rusage used{};
  pid_t ended = 0;
  do {
    ended = wait4(process_, &status, flags, &used);
  } while (ended < 0 && errno == EINTR);
  if (ended != process_) {
    return false;
  }
  ChildEnd end;
  end.status =
      WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
  end.dumpedCore = WIFSIGNALED(status) && WCOREDUMP(status);
  end.milliseconds =
      std::chrono::duration<double, std::milli>(steady_clock::now() - start_)
          .count();
  end.cpuMilliseconds =
      toMilliseconds(used.ru_utime) + toMilliseconds(used.ru_stime);
  end.kibibytes = static_cast<std::uint64_t>(used.ru_maxrss);
  end_ = end;
  return true;
}

ChildEnd runChild(const ChildOptions& options) {
  return ChildProcess(options).wait();
}

}  // namespace support
