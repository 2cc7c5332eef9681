// The built program on many controllers at once, by the application export.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/suite/brivel/program_fixture.h"

namespace {

#ifdef SYSHEALTH_SANITIZED
constexpr int kTargets = 130;
#else
constexpr int kTargets = 1000;
#endif
constexpr int kOfEachKind = 10;  // That hang, refuse, have another password.

// Listens and never takes a connection in, so that handshakes hang.
class HangingPort {
 public:
  HangingPort() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (bind(socket_, any, size) == 0 && listen(socket_, 100) == 0 &&
        getsockname(socket_, any, &size) == 0) {
      address_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
  }
  ~HangingPort() { close(socket_); }

  HangingPort(const HangingPort&) = delete;
  HangingPort& operator=(const HangingPort&) = delete;

  const std::string& address() const { return address_; }

 private:
  int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::string address_;
};

class ProgramFleet : public ProgramFixture {
 protected:
  ProgramFleet() {
    useModules(EXPORT_MODULES);
    options.environment.emplace_back("BRIVEL_PASSWORD=Nothing-2-Hide");
  }

  // A controller on every address of this machine's loopback.
  static std::vector<std::string> everywhere(
      const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {
        "--tree",  SAMPLES "/rack-server", "--address",
        "0.0.0.0", "--max-sessions",       "2000"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }

  // As many addresses of a controller.
  static std::vector<std::string> addresses(const bmc::Controller& controller,
                                            int count) {
    std::vector<std::string> list;
    list.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      list.push_back("127.4." + std::to_string(i / 200) + "." +
                     std::to_string(i % 200 + 1) + ":" +
                     std::to_string(controller.ready().httpsPort));
    }
    return list;
  }

  // A recorded server with so many active events.
  std::string writeServer(const std::string& name, int events) const {
    std::string conditions;
    for (int i = 0; i < events; ++i) {
      conditions += std::string(i == 0 ? "" : ",") +
                    R"({"Severity":"Critical","Message":")" +
                    std::to_string(i) + "\"}";
    }
    home.write(name + "/index.json",
               R"({"@odata.id":"/redfish/v1/","RedfishVersion":"1.6.0",)"
               R"("@odata.type":"#ServiceRoot.v1_5_0.ServiceRoot","Systems":)"
               R"({"@odata.id":"/redfish/v1/Systems"}})");
    home.write(name + "/Systems/index.json",
               R"({"@odata.id":"/redfish/v1/Systems","Members":)"
               R"([{"@odata.id":"/redfish/v1/Systems/1"}]})");
    home.write(name + "/Systems/1/index.json",
               R"({"@odata.id":"/redfish/v1/Systems/1",)"
               R"("Status":{"Health":"Critical","Conditions":[)" +
                   conditions + "]}}");
    return "file:" + home.at(name);
  }

  std::string writeList(const std::vector<std::string>& targets) const {
    std::string text;
    for (const std::string& target : targets) {
      text += target + "\n";
    }
    return home.write("list", text);
  }
};

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::ptrdiff_t countLines(const ProgramEnd& end, const std::string& text) {
  const std::vector<std::string> lines = linesOf(end.output);
  return std::count_if(lines.begin(), lines.end(), [&](const auto& line) {
    return line.find(text) != std::string::npos;
  });
}

// Ten of them never answer, ten refuse the connection, and ten have another
// password than the one of the settings for them.
TEST_F(ProgramFleet, ReadsWhatIsWellAndNamesWhatIsNot) {
  const bmc::Controller healthy(everywhere({"--delay-ms", "20"}));
  const std::string password = home.write("theirs", "Another-Password\n");
  const bmc::Controller others(everywhere({"--password-file", password}));
  const HangingPort hanging;
  ASSERT_TRUE(healthy.running() && others.running());
  const int well = kTargets - 3 * kOfEachKind;
  std::vector<std::string> targets = addresses(healthy, well);
  std::string settings = "[defaults]\nuser = 'admin'\ntimeout = 3\npin = '" +
                         healthy.ready().pin + ";" + others.ready().pin + "'\n";
  const auto add = [&](const std::string& name, const std::string& address,
                       const std::string& more) {
    settings += "[targets." + name + "]\naddress = '" + address + "'\n" + more;
    targets.insert(
        targets.begin() + static_cast<std::ptrdiff_t>(targets.size() * 2 / 3),
        name);
  };
  for (int i = 0; i < kOfEachKind; ++i) {
    const std::string number = std::to_string(i);
    add("hanging-" + number, hanging.address(), "");
    add("refusing-" + number, "127.2.0." + number + ":1", "");
    add("other-" + number,
        "127.3.0." + number + ":" + std::to_string(others.ready().httpsPort),
        "user = 'operator'\n");
  }
  writeSettings(settings);

  const ProgramEnd end =
      run({"--targets", writeList(targets), "export", "--device", "health"});
  EXPECT_EQ(end.status, 1) << end.errors;
  EXPECT_EQ(linesOf(end.output).size(), static_cast<std::size_t>(kTargets));
  EXPECT_EQ(countLines(end, "\"status\":\"complete\""), well) << end.errors;
  EXPECT_EQ(countLines(end, "\"name\":\"hanging-"), kOfEachKind);
  EXPECT_EQ(countLines(end, "the connection was refused"), kOfEachKind);
  EXPECT_EQ(countLines(end, "\"code\":12,"), kOfEachKind);
  EXPECT_EQ(countLines(end, "was refused by 3 targets"), kOfEachKind - 3);

  const bmc::Counters counters = healthy.counters();
  EXPECT_EQ(counters.sessionsCreated, static_cast<std::uint64_t>(well));
  EXPECT_EQ(counters.sessionsDeleted, counters.sessionsCreated);
  EXPECT_EQ(others.counters().loginsRefused, 3U);
  EXPECT_EQ(others.counters().sessionsCreated, 0U);
}

TEST_F(ProgramFleet, OneInterruptLogsEverySessionOut) {
  const bmc::Controller slow(everywhere({"--delay-ms", "300"}));
  ASSERT_TRUE(slow.running());
  writeSettings("[defaults]\nuser = 'admin'\npin = '" + slow.ready().pin +
                "'\n");
  support::ChildProcess child(
      started({"--targets", writeList(addresses(slow, 60)), "--fanout", "20",
               "export"}));
  while (slow.counters().sessionsCreated < 10) {
    ASSERT_EQ(child.waitFor(std::chrono::milliseconds(10)), std::nullopt)
        << child.errors();
  }
  child.signal(SIGINT);
  EXPECT_EQ(child.wait().status, 130) << child.errors();
  EXPECT_EQ(child.errors(), "brivel: interrupted\n");
  const bmc::Counters counters = slow.counters();
  EXPECT_LT(counters.sessionsCreated, 60U);
  EXPECT_EQ(counters.sessionsDeleted, counters.sessionsCreated);
}

TEST_F(ProgramFleet, BrokenLineCostsItsOwnTargetAlone) {
  const std::string list =
      writeList({"file:" SAMPLES "/rack-server", "# note",
                 "admin:hunter2@10.0.0.5", "file:" SAMPLES "/two-node"});
  const ProgramEnd end =
      run({"--targets", list, "export", "--device", "health"});
  EXPECT_EQ(end.status, 5);
  EXPECT_EQ(linesOf(end.output).size(), 4U) << end.output;
  EXPECT_EQ(countLines(end, "\"name\":\"" + list + ":3\""), 1);
  EXPECT_EQ(countLines(end, "\"status\":\"complete\""), 3);
  EXPECT_EQ((end.output + end.errors + log()).find("hunter2"),
            std::string::npos);
}

TEST_F(ProgramFleet, GroupsAndNodesAreChosen) {
  writeSettings("[targets.a]\naddress = 'file:" SAMPLES
                "/two-node'\n[targets.b]\naddress = 'file:" SAMPLES
                "/rack-server'\n[groups]\nwhole = ['*']\nnone = []\n");
  const ProgramEnd end =
      run({"--group", "whole", "export", "--device", "health", "--node", "2"});
  EXPECT_EQ(countLines(end, "\"node\":2,\"nodes\":2"), 1) << end.output;
  EXPECT_EQ(countLines(end, "--node 2: this service has 1 node"), 1);
  EXPECT_EQ(run({"--group", "none", "export"}).status, 2);
  EXPECT_EQ(run({"--group", "whol", "export"}).errors,
            "brivel: --group: 'whol' is no group in " + home.at(".config") +
                "/brivel/brivel.toml (none, whole); did you mean 'whole'?\n"
                "Try 'brivel --help'.\n");
}

// Servers that are too large to be read side by side are read one by one, each
// of them whole.
TEST_F(ProgramFleet, LargeServersAreReadWholeInLittleMemory) {
  constexpr int kServers = 5;
  constexpr int kEvents = 50000;
  std::vector<std::string> targets;
  targets.reserve(kServers);
  for (int i = 0; i < kServers; ++i) {
    targets.push_back(writeServer("server" + std::to_string(i), kEvents));
  }
  support::ChildProcess child(started(
      {"--targets", writeList(targets), "export", "--device", "health"}));
  const support::ChildEnd end = child.wait();
  EXPECT_EQ(end.status, 0) << child.errors();
#ifndef SYSHEALTH_SANITIZED
  EXPECT_LT(end.kibibytes, 128U * 1024U);
#endif
  const std::vector<std::string> lines = linesOf(child.output());
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(kServers));
  for (const std::string& line : lines) {
    int events = 0;
    for (std::size_t at = line.find(R"("severity":"error")");
         at != std::string::npos;
         at = line.find(R"("severity":"error")", at + 1)) {
      ++events;
    }
    EXPECT_EQ(events, kEvents);
    EXPECT_NE(line.find(R"("status":"complete")"), std::string::npos);
  }
}

// What is not read in the time of the run has a line all the same.
TEST_F(ProgramFleet, TimeOfTheRunEndsWhatHangs) {
  const HangingPort hanging;
  std::string settings;
  for (int i = 0; i < 4; ++i) {
    settings += "[targets.n" + std::to_string(i) + "]\naddress = '" +
                hanging.address() + "'\ninsecure = true\n";
  }
  writeSettings(settings + "[groups]\nall = ['*']\n");
  const ProgramEnd end =
      run({"--group", "all", "--fanout", "2", "--total", "0.3", "export"});
  EXPECT_EQ(end.status, 18) << end.errors;
  EXPECT_EQ(linesOf(end.output).size(), 4U);
  EXPECT_EQ(countLines(end, "the time of the run was over"), 2) << end.output;
  EXPECT_NE(end.errors.find("the certificates of 4 targets are not checked"),
            std::string::npos);
}

}  // namespace
