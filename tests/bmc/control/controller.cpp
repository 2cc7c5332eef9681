#include "tests/bmc/control/controller.h"

#include <fcntl.h>
#include <unistd.h>

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <chrono>
#include <csignal>
#include <sstream>

#include "tests/bmc/control/control_client.h"

namespace bmc {
namespace {

namespace json = boost::json;

constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kPollPause{2};

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

Controller::Controller(const std::vector<std::string>& arguments) {
  running_ = spawn(arguments) && awaitReadiness();
}

Controller::~Controller() {
  static_cast<void>(stop());  // A test that cares has stopped it before.
  if (lifeline_ >= 0) {
    close(lifeline_);
  }
}

std::string Controller::program() { return BMC_PROGRAM; }

bool Controller::spawn(const std::vector<std::string>& arguments) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return false;
  }
  lifeline_ = ends[1];
  support::ChildOptions options;
  options.program = BMC_PROGRAM;
  options.arguments = {"--dir", folder_.path().string()};
  options.arguments.insert(options.arguments.end(), arguments.begin(),
                           arguments.end());
  options.environment = support::ownEnvironment();
  options.inputDescriptor = ends[0];
  options.outputDescriptor = STDOUT_FILENO;
  options.errorDescriptor = STDERR_FILENO;
  options.timeLimit = {};
  process_.emplace(options);
  close(ends[0]);
  return true;
}

bool Controller::awaitReadiness() {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!readReady(folder_.path().string(), ready_)) {
    if (process_->waitFor(kPollPause) ||
        std::chrono::steady_clock::now() > end) {
      return false;
    }
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
  if (!process_) {
    return -1;
  }
  running_ = false;
  // The signal alone: with the end of its input it would come twice, and the
  // second one kills a process that is already on its way out.
  process_->signal(SIGTERM);
  if (!process_->waitFor(kPatience)) {
    process_->signal(SIGKILL);
  }
  return process_->wait().status;
}

}  // namespace bmc
