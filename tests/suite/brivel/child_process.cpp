#include "tests/suite/brivel/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

constexpr unsigned kTimeLimitSeconds = 60;
constexpr int kPatienceMilliseconds = 10000;
constexpr int kCannotStart = 127;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

void redirect(const std::string& file, int flags, int descriptor) {
  const int opened = open(file.c_str(), flags, 0600);
  if (opened < 0 || dup2(opened, descriptor) != descriptor) {
    _exit(kCannotStart);
  }
  close(opened);
}

std::string contents(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

ChildProcess::ChildProcess(const ChildOptions& options) {
  std::string name = (fs::temp_directory_path() / "brivel_child.XXXXXX");
  folder_ = mkdtemp(name.data());
  std::ofstream(folder_ / "input", std::ios::binary) << options.input;

  std::vector<std::string> words{options.program};
  words.insert(words.end(), options.arguments.begin(), options.arguments.end());
  std::vector<std::string> settings = options.environment;
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> environment = pointersTo(settings);
  const std::string output = options.outputFile.empty()
                                 ? (folder_ / "output").string()
                                 : options.outputFile;

  process_ = options.terminal ? forkpty(&terminal_, nullptr, nullptr, nullptr)
                              : fork();
  if (process_ != 0) {
    return;
  }
  // The alarm outlives exec and ends a program that hangs.
  alarm(kTimeLimitSeconds);
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  if (options.outputDescriptor >= 0) {
    dup2(options.outputDescriptor, STDOUT_FILENO);
  } else {
    redirect(output, kWrite, STDOUT_FILENO);
  }
  if (!options.terminal) {
    redirect((folder_ / "input").string(), O_RDONLY, STDIN_FILENO);
    redirect((folder_ / "errors").string(), kWrite, STDERR_FILENO);
  }
  for (const int descriptor : options.closed) {
    close(descriptor);
  }
  execve(options.program.c_str(), argv.data(), environment.data());
  _exit(kCannotStart);
}

ChildProcess::~ChildProcess() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (terminal_ >= 0) {
    close(terminal_);
  }
  fs::remove_all(folder_);
}

void ChildProcess::signal(int number) const { kill(process_, number); }

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

int ChildProcess::wait() {
  // The terminal ends with the program; it must be read for the program to go
  // on writing.
  while (terminal_ >= 0 && readTerminal(-1)) {
  }
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  constexpr int kSignalled = 128;
  return WIFEXITED(status) ? WEXITSTATUS(status)
                           : kSignalled + WTERMSIG(status);
}

std::string ChildProcess::output() const {
  return contents(folder_ / "output");
}

std::string ChildProcess::errors() const {
  return terminal_ >= 0 ? shown_ : contents(folder_ / "errors");
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
