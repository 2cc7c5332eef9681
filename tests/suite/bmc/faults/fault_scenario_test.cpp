// Fault files against the running controller, seen with curl's eyes.

#include <arpa/inet.h>
#include <curl/curl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "tests/bmc/control/controller.h"
#include "tests/suite/bmc/control/fetch.h"
#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

using testing::HasSubstr;

// A controller with a fault file, and one client of it.
class FaultScenario : public testing::Test {
 protected:
  void start(const std::string& faults) {
    files_.emplace(Files{{"faults.json", faults}, {"x", ""}});
    controller_.emplace(std::vector<std::string>{
        "--tree", SAMPLES "/rack-server", "--open", "--faults",
        files_->folder() + "/faults.json"});
    ASSERT_TRUE(controller_->running());
  }

  Fetch fetchOf(const std::string& path) const {
    Fetch fetch;
    fetch.url = "https://" + controller_->https() + path;
    fetch.authority = controller_->ready().certificate;
    return fetch;
  }

  FetchResult get(const std::string& path = "/redfish/v1/") {
    return client_.get(fetchOf(path));
  }

  FetchResult get(const std::string& path, long timeoutMs) {
    Fetch fetch = fetchOf(path);
    fetch.timeoutMs = timeoutMs;
    return client_.get(fetch);
  }

  std::optional<RecordedTree> files_;
  std::optional<Controller> controller_;
  Fetcher client_;
};

TEST_F(FaultScenario, SilentAnswerNeverComes) {
  start(R"({"rules": [{"delivery": {"silent": true}}]})");
  EXPECT_EQ(get("/redfish/v1/", 300).error, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(FaultScenario, StalledConnectionDoesNotShakeHands) {
  start(R"({"connections": [{"onAccept": "stall"}]})");
  EXPECT_EQ(get("/redfish/v1/", 300).error, CURLE_OPERATION_TIMEDOUT);
  EXPECT_EQ(controller_->counters().connections, 1U);
  EXPECT_EQ(controller_->counters().tlsHandshakes, 0U);
}

TEST_F(FaultScenario, DrippingConnectionDoesNotShakeHands) {
  start(R"({"connections": [{"onAccept": "drip"}]})");
  EXPECT_EQ(get("/redfish/v1/", 1500).error, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(FaultScenario, OnlyTheNumberedConnectionIsReset) {
  start(R"({"connections": [{"numbers": "1", "onAccept": "reset"}]})");
  EXPECT_NE(get().error, CURLE_OK);
  EXPECT_EQ(get().status, 200);
}

TEST_F(FaultScenario, AnswerComesByteByByte) {
  start(R"({"rules": [{"answer": {"body": "{}"},
                       "delivery": {"stepBytes": 100, "stepMs": 100}}]})");
  const FetchResult fetched = get();
  EXPECT_EQ(fetched.body, "{}");
  EXPECT_GE(fetched.seconds, 0.1);
  EXPECT_EQ(get("/redfish/v1/", 50).error, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(FaultScenario, BodyEndsInTheMiddle) {
  start(R"({"rules": [{"delivery": {"cutAfter": 10, "ending": "close"}}]})");
  const FetchResult fetched = get();
  EXPECT_EQ(fetched.error, CURLE_PARTIAL_FILE);
  EXPECT_EQ(fetched.body.size(), 10U);
}

TEST_F(FaultScenario, BodyStopsInTheMiddle) {
  start(R"({"rules": [{"delivery": {"cutAfter": 10}}]})");
  // Time enough for the handshake, also on a busy machine.
  const FetchResult fetched = get("/redfish/v1/", 1500);
  EXPECT_EQ(fetched.error, CURLE_OPERATION_TIMEDOUT);
  EXPECT_EQ(fetched.body.size(), 10U);
}

TEST_F(FaultScenario, ReusedConnectionIsReset) {
  start(R"({"rules": [{"match": {"ordinal": "2-", "nth": "1"},
                       "delivery": {"silent": true, "ending": "reset"}}]})");
  EXPECT_EQ(get().status, 200);
  EXPECT_EQ(get().status, 200);  // curl itself goes on, on a new connection.
  EXPECT_EQ(controller_->counters().connections, 2U);
}

TEST_F(FaultScenario, LengthIsWrong) {
  start(R"({"rules": [{"answer": {"body": "{}",
                        "headers": {"Content-Length": "9"}},
                       "delivery": {"ending": "close"}}]})");
  EXPECT_EQ(get().error, CURLE_PARTIAL_FILE);
}

TEST_F(FaultScenario, HugeBodyStartsAtOnce) {
  start(R"({"rules": [{"answer": {"body": {"parts": [
                        {"text": "0123456789", "times": 1000000000}]}}}]})");
  // Made whole before it is sent, it would take longer than anyone waits.
  Fetch fetch = fetchOf("/redfish/v1/");
  fetch.mostBytes = 1024U * 1024U;
  const FetchResult fetched = client_.get(fetch);
  EXPECT_EQ(fetched.error, CURLE_WRITE_ERROR);
  EXPECT_EQ(fetched.headers.at("content-length"), "10000000000");
  EXPECT_GT(fetched.body.size(), 1024U * 1024U);
}

TEST_F(FaultScenario, GzipBombIsSmallOnTheWire) {
  start(R"({"rules": [{"answer": {"body": {"gzip": true, "parts": [
      {"text": "                                ", "times": 1000000}]}}}]})");
  const FetchResult fetched = get();
  EXPECT_EQ(fetched.error, CURLE_OK);
  EXPECT_EQ(fetched.headers.at("content-encoding"), "gzip");
  EXPECT_LT(fetched.body.size(), 64U * 1024U);
}

TEST_F(FaultScenario, RedirectLeadsElsewhere) {
  start(R"({"rules": [{"match": {"path": "/redfish/v1"}, "answer":
      {"status": 302, "headers": {"Location": "http://${http}/x"}}}]})");
  const FetchResult fetched = get();
  EXPECT_EQ(fetched.status, 302);
  EXPECT_EQ(fetched.headers.at("location"),
            "http://" + controller_->http() + "/x");
}

TEST_F(FaultScenario, TreeIsServedAsEdited) {
  start(R"({"tree": [{"path": "/redfish/v1/Systems/1",
                      "set": {"/Status/Health": "Critical"}},
                     {"path": "/redfish/v1/Chassis", "absent": true}]})");
  EXPECT_THAT(get("/redfish/v1/Systems/1").body, HasSubstr("Critical"));
  EXPECT_EQ(get("/redfish/v1/Chassis").status, 404);
}

TEST_F(FaultScenario, CertificateIsExpired) {
  start(R"({"tls": {"certificate": "expired"}})");
  EXPECT_EQ(get().error, CURLE_PEER_FAILED_VERIFICATION);
  EXPECT_EQ(controller_->counters().tlsFailures, 1U);
}

TEST_F(FaultScenario, CertificateIsForAnotherName) {
  start(R"({"tls": {"certificate": "other-name"}})");
  EXPECT_EQ(get().error, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(FaultScenario, AuthorityIsTrusted) {
  start(R"({"tls": {"certificate": "authority"}})");
  EXPECT_EQ(get().status, 200);
}

TEST_F(FaultScenario, AuthorityIsUnheardOf) {
  start(R"({"tls": {"certificate": "untrusted"}})");
  EXPECT_EQ(get().error, CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(FaultScenario, TlsIsTooOld) {
  start(R"({"tls": {"maxVersion": "TLSv1.1"}})");
  EXPECT_EQ(get().error, CURLE_SSL_CONNECT_ERROR);
}

TEST_F(FaultScenario, NoSessionIsTakenUpAgain) {
  start(R"({"tls": {"noResumption": true},
            "rules": [{"delivery": {"ending": "close"}}]})");
  EXPECT_EQ(get().status, 200);
  EXPECT_EQ(get().status, 200);
  EXPECT_EQ(controller_->counters().tlsFullHandshakes, 2U);
  EXPECT_EQ(controller_->counters().tlsResumptions, 0U);
}

TEST_F(FaultScenario, HttpsPortSpeaksPlainText) {
  start(R"({"connections": [{"plainText": true}]})");
  EXPECT_EQ(get().error, CURLE_SSL_CONNECT_ERROR);
  Fetch fetch;
  fetch.url = "http://" + controller_->https() + "/redfish/v1/";
  EXPECT_EQ(Fetcher().get(fetch).status, 200);
}

// One datagram to a port of loopback; the answer, or nothing within a second.
std::string exchange(std::uint16_t port, const std::string& datagram) {
  const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  const timeval patience{1, 0};
  setsockopt(descriptor, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::string answer(512, '\0');
  ssize_t count = -1;
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address),
              sizeof address) == 0 &&
      send(descriptor, datagram.data(), datagram.size(), 0) > 0) {
    count = recv(descriptor, answer.data(), answer.size(), 0);
  }
  close(descriptor);
  answer.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  return answer;
}

TEST_F(FaultScenario, IpmiAnswersAfterALostDatagram) {
  start(R"({"ipmi": {"channel": "silent", "presence": "ipmi",
                     "ignoredFirst": 1}})");
  using namespace std::string_literals;
  const std::string ping = "\x06\x00\xff\x06\x00\x00\x11\xbe\x80\x07\x00\x00"s;
  const std::uint16_t port = controller_->ready().ipmiPort;
  EXPECT_EQ(exchange(port, ping), "");
  EXPECT_EQ(exchange(port, ping).size(), 28U);
  EXPECT_EQ(controller_->counters().datagrams, 2U);
  EXPECT_THAT(controller_->log(), HasSubstr("0600ff06000011be80070000"));
}

}  // namespace
}  // namespace bmc
