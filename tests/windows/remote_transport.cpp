// Takes the place of this system's own transport over the network: each call
// goes to an agent under Wine, in which the transport of Windows runs.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <boost/json/serialize.hpp>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "tests/support/child_process.h"
#include "tests/windows/transport_wire.h"

namespace http {
namespace {

namespace json = boost::json;

// The agent's process; one serves the whole test program.
class Agent {
 public:
  static Agent& instance() {
    static Agent agent;
    return agent;
  }

  json::object ask(const json::object& command) {
    const std::string line = json::serialize(command) + '\n';
    if (std::fwrite(line.data(), 1, line.size(), toAgent_.get()) !=
            line.size() ||
        std::fflush(toAgent_.get()) != 0) {
      throw std::runtime_error("the agent cannot be asked");
    }
    std::string answer;
    for (int c = std::getc(fromAgent_.get()); c != '\n';
         c = std::getc(fromAgent_.get())) {
      if (c == EOF) {
        throw std::runtime_error("the agent has gone");
      }
      answer.push_back(static_cast<char>(c));
    }
    return wire::parseLine(answer);
  }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  using File = std::unique_ptr<std::FILE, Close>;

  Agent() {
    std::array<int, 2> commands{};
    std::array<int, 2> answers{};
    if (pipe2(commands.data(), O_CLOEXEC) != 0 ||
        pipe2(answers.data(), O_CLOEXEC) != 0) {
      throw std::runtime_error("no pipe");
    }
    support::ChildOptions options;
    options.program = WINE_SCRIPT;
    options.arguments = {TRANSPORT_AGENT};
    options.environment = support::ownEnvironment();
    options.environment.push_back("WINE_TIME_LIMIT=900");
    options.inputDescriptor = commands[0];
    options.outputDescriptor = answers[1];
    options.errorDescriptor = STDERR_FILENO;
    options.timeLimit = {};  // The script has its own.
    child_.emplace(options);
    close(commands[0]);
    close(answers[1]);
    toAgent_.reset(fdopen(commands[1], "w"));
    fromAgent_.reset(fdopen(answers[0], "r"));
  }

  ~Agent() {
    toAgent_.reset();  // The agent ends with its input.
    child_->wait();
  }

  std::optional<support::ChildProcess> child_;
  File toAgent_;
  File fromAgent_;
};

class RemoteTransport final : public Transport {
 public:
  explicit RemoteTransport(const NetworkTransportOptions& options)
      : number_(++lastNumber), address_(addressOf(options.origin)) {
    command("make", {{"options", wire::encode(options)}});
  }
  ~RemoteTransport() override { command("drop"); }

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }

  std::uint64_t start(Request request) override {
    return command("start", {{"request", wire::encode(request)}})
        .at("id")
        .to_number<std::uint64_t>();
  }

  std::optional<Answer> next(base::Clock::time_point until) override {
    const auto time = std::chrono::ceil<std::chrono::microseconds>(
        until - base::Clock::now());
    const json::object told = command("next", {{"time", time.count()}});
    const json::value* answer = told.if_contains("answer");
    if (answer == nullptr) {
      return std::nullopt;
    }
    return wire::answerOf(answer->as_object());
  }

  void cancelAll() override { command("cancel"); }
  void disableCompression() override { command("disableCompression"); }
  TransportStats stats() const override {
    return wire::statsOf(command("stats"));
  }

 private:
  json::object command(const char* verb, json::object more = {}) const {
    more["transport"] = number_;
    more["verb"] = verb;
    return Agent::instance().ask(more);
  }

  static std::uint64_t lastNumber;
  std::uint64_t number_;
  std::string address_;
};

std::uint64_t RemoteTransport::lastNumber = 0;

}  // namespace

std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options) {
  return std::make_unique<RemoteTransport>(options);
}

}  // namespace http
