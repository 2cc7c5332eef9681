// Runs transports for a test that runs on another system: takes one command a
// line on standard input, and answers each with a line. Ends with its input.

#include <fcntl.h>
#include <io.h>

#include <boost/json/serialize.hpp>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "tests/windows/transport_wire.h"

namespace {

namespace json = boost::json;

class Agent {
 public:
  json::object obey(const json::object& command) {
    const auto number = command.at("transport").to_number<std::uint64_t>();
    const std::string verb(command.at("verb").as_string());
    if (verb == "make") {
      transports_[number] = http::makeNetworkTransport(
          wire::optionsOf(command.at("options").as_object()));
      return {};
    }
    if (verb == "drop") {
      transports_.erase(number);
      return {};
    }
    return act(*transports_.at(number), verb, command);
  }

 private:
  static json::object act(http::Transport& transport, const std::string& verb,
                          const json::object& command) {
    if (verb == "start") {
      return {{"id", transport.start(
                         wire::requestOf(command.at("request").as_object()))}};
    }
    if (verb == "next") {
      const std::chrono::microseconds time(
          command.at("time").to_number<std::int64_t>());
      const auto answer = transport.next(base::Clock::now() + time);
      return answer ? json::object{{"answer", wire::encode(*answer)}}
                    : json::object{};
    }
    if (verb == "stats") {
      return wire::encode(transport.stats());
    }
    if (verb == "cancel") {
      transport.cancelAll();
    }
    if (verb == "disableCompression") {
      transport.disableCompression();
    }
    return {};
  }

  std::map<std::uint64_t, std::unique_ptr<http::Transport>> transports_;
};

}  // namespace

int main() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  Agent agent;
  std::string line;
  while (std::getline(std::cin, line)) {
    std::cout << json::serialize(agent.obey(wire::parseLine(line))) << '\n'
              << std::flush;
  }
  return 0;
}
