#include "suite/http/transport.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>

#include "suite/redfish/recorded/directory_transport.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"
#include "tests/support/temp_folder.h"

namespace http {
namespace {

// What every transport promises, whatever it asks: run over all of them.

const std::map<std::string, std::string>& resources() {
  static const std::map<std::string, std::string> kBodies = {
      {"/redfish/v1/", R"({"@odata.type": "#ServiceRoot.v1_0_0.ServiceRoot"})"},
      {"/redfish/v1/Systems", R"({"Name": "systems"})"},
      {"/redfish/v1/Chassis", R"({"Name": "chassis"})"},
  };
  return kBodies;
}

// A transport with a service that holds the resources.
struct Setting {
  virtual ~Setting() = default;
  std::unique_ptr<Transport> transport;
};

struct DirectorySetting : Setting {
  DirectorySetting() {
    for (const auto& [target, body] : resources()) {
      directory.write(target.substr(1) + "/index.json", body);
    }
    transport = redfish::makeDirectoryTransport(directory.path());
  }
  support::TempFolder directory;
};

std::string serveResource(const std::string& request) {
  const std::size_t begin = request.find(' ') + 1;
  const auto found =
      resources().find(request.substr(begin, request.find(' ', begin) - begin));
  return found == resources().end() ? httpAnswer(404, "")
                                    : httpAnswer(200, found->second);
}

struct PlainSetting : Setting {
  PlainSetting() : server(answering(serveResource)) {
    transport = makeNetworkTransport(plainOptions(server.port()));
  }
  // The transport goes first, so that no connection keeps the server.
  ~PlainSetting() override { transport.reset(); }
  ScriptedServer server;
};

struct TlsSetting : Setting {
  TlsSetting()
      : identity(bmc::makeCertificate({})),
        server(answering(serveResource), tlsWith(identity)) {
    NetworkTransportOptions options = tlsOptions(server.port());
    options.pin = bmc::pinOf(identity.certificate);
    transport = makeNetworkTransport(options);
  }
  ~TlsSetting() override { transport.reset(); }
  bmc::Identity identity;
  ScriptedServer server;
};

struct Kind {
  const char* name;
  std::function<std::unique_ptr<Setting>()> make;
};

class TransportTest : public testing::TestWithParam<Kind> {
 protected:
  TransportTest() : setting_(GetParam().make()) {}
  Transport& transport() { return *setting_->transport; }

 private:
  std::unique_ptr<Setting> setting_;
};

TEST_P(TransportTest, ResourceIsAnswered) {
  const Answer answer = ask(transport(), get("/redfish/v1/Systems"));
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, R"({"Name": "systems"})");
}

TEST_P(TransportTest, MissingResourceIsNotFound) {
  const Answer answer = ask(transport(), get("/redfish/v1/Managers"));
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.status, 404);
}

TEST_P(TransportTest, AnswersCarryTheIdsOfTheirRequests) {
  std::map<std::uint64_t, std::string> expected;
  for (const auto& [target, body] : resources()) {
    expected[transport().start(get(target))] = body;
  }
  EXPECT_EQ(expected.size(), resources().size());
  while (!expected.empty()) {
    const Answer answer = nextAnswer(transport());
    ASSERT_EQ(expected.count(answer.id), 1U);
    EXPECT_EQ(answer.body, expected[answer.id]);
    expected.erase(answer.id);
  }
}

TEST_P(TransportTest, NothingUnderWayGivesNothingAtOnce) {
  const base::Clock::time_point begin = base::Clock::now();
  EXPECT_FALSE(transport().next(begin + std::chrono::seconds(5)));
  EXPECT_LT(base::Clock::now() - begin, std::chrono::seconds(1));
}

TEST_P(TransportTest, CancelledRequestsAreNotAnswered) {
  transport().start(get("/redfish/v1/Systems"));
  transport().start(get("/redfish/v1/Chassis"));
  transport().cancelAll();
  EXPECT_FALSE(transport().next(base::Clock::now() + std::chrono::seconds(5)));
}

TEST_P(TransportTest, RequestsAfterACancelAreAnswered) {
  const std::uint64_t cancelled = transport().start(get("/redfish/v1/Systems"));
  transport().cancelAll();
  const std::uint64_t id = transport().start(get("/redfish/v1/Chassis"));
  EXPECT_NE(id, cancelled);
  const Answer answer = nextAnswer(transport());
  EXPECT_EQ(answer.id, id);
  EXPECT_EQ(answer.body, R"({"Name": "chassis"})");
}

TEST_P(TransportTest, RequestsAndBytesAreCounted) {
  ask(transport(), get("/redfish/v1/Systems"));
  ask(transport(), get("/redfish/v1/Systems"));
  const TransportStats stats = transport().stats();
  EXPECT_EQ(stats.requests, 2U);
  EXPECT_EQ(stats.bytes, 2 * resources().at("/redfish/v1/Systems").size());
  EXPECT_EQ(stats.connections, transport().live() ? 1U : 0U);
}

template <typename Made>
std::unique_ptr<Setting> make() {
  return std::make_unique<Made>();
}

INSTANTIATE_TEST_SUITE_P(
    All, TransportTest,
    testing::Values(Kind{"Directory", make<DirectorySetting>},
                    Kind{"CurlPlain", make<PlainSetting>},
                    Kind{"CurlTls", make<TlsSetting>}),
    [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

}  // namespace
}  // namespace http
