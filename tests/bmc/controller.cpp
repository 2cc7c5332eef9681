#include "tests/bmc/controller.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <thread>

#include "tests/bmc/control/control_client.h"

namespace bmc {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kPollPause{2};

fs::path makeFolder() {
  std::string pattern = fs::temp_directory_path() / "bmc-XXXXXX";
  return mkdtemp(pattern.data()) == nullptr ? fs::path() : fs::path(pattern);
}

// The exit status of a process that has ended; -1 when a signal ended it.
int exitStatusOf(int waitStatus) {
  return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1;
}

LoggedRequest toRequest(const json::object& entry) {
  LoggedRequest request;
  request.connection = entry.at("connection").to_number<std::uint64_t>();
  request.method = entry.at("method").as_string();
  request.target = entry.at("target").as_string();
  request.status = entry.at("status").to_number<int>();
  request.authentication = entry.at("authentication").as_string();
  request.arrivedUs = entry.at("arrivedUs").to_number<std::int64_t>();
  request.doneUs = entry.at("doneUs").to_number<std::int64_t>();
  request.complete = entry.at("complete").as_bool();
  for (const auto& header : entry.at("headers").as_object()) {
    request.headers[header.key()] = header.value().as_string();
  }
  return request;
}

}  // namespace

Controller::Controller(const std::vector<std::string>& arguments)
    : folder_(makeFolder()) {
  running_ = !folder_.empty() && spawn(arguments) && awaitReadiness();
}

Controller::~Controller() {
  static_cast<void>(stop());  // A test that cares has stopped it before.
  if (lifeline_ >= 0) {
    close(lifeline_);
  }
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string Controller::program() { return BMC_PROGRAM; }

bool Controller::spawn(const std::vector<std::string>& arguments) {
  std::vector<std::string> words{BMC_PROGRAM, "--dir", folder_.string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);

  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return false;
  }
  lifeline_ = ends[1];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
  const int error = posix_spawn(&process_, BMC_PROGRAM, &actions, nullptr,
                                argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[0]);
  if (error != 0) {
    process_ = -1;
  }
  return error == 0;
}

bool Controller::awaitReadiness() {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!readReady(folder_.string(), ready_)) {
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) == process_) {
      exitStatus_ = exitStatusOf(status);
      process_ = -1;
      return false;
    }
    if (std::chrono::steady_clock::now() > end) {
      return false;
    }
    std::this_thread::sleep_for(kPollPause);
  }
  return true;
}

std::string Controller::https() const {
  return hostAndPort(ready_.address, ready_.httpsPort);
}

std::string Controller::http() const {
  return hostAndPort(ready_.address, ready_.httpPort);
}

Counters Controller::counters() const {
  return countersFromJson(
      askControl(ready_.address, ready_.controlPort, "/counters"));
}

std::string Controller::log() const {
  return askControl(ready_.address, ready_.controlPort, "/log");
}

std::vector<LoggedRequest> Controller::requests() const {
  std::vector<LoggedRequest> requests;
  std::istringstream lines(log());
  for (std::string line; std::getline(lines, line);) {
    json::error_code error;
    const json::value entry = json::parse(line, error);
    if (error || !entry.is_object()) {
      continue;
    }
    if (entry.get_object().at("event") == "request") {
      requests.push_back(toRequest(entry.get_object()));
    }
  }
  return requests;
}

int Controller::stop() {
  if (process_ < 0) {
    return exitStatus_;
  }
  // The signal alone: with the end of its input it would come twice, and the
  // second one kills a process that is already on its way out.
  kill(process_, SIGTERM);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  int status = 0;
  while (waitpid(process_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > end) {
      kill(process_, SIGKILL);
      waitpid(process_, &status, 0);
      break;
    }
    std::this_thread::sleep_for(kPollPause);
  }
  process_ = -1;
  running_ = false;
  exitStatus_ = exitStatusOf(status);
  return exitStatus_;
}

}  // namespace bmc
