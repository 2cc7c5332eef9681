#include "suite/local/controller/discovery.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <thread>

#include "suite/base/host_name.h"
#include "suite/local/controller/neighbour_posix.h"
#include "suite/local/controller/network.h"

namespace local {
namespace {

using namespace std::chrono_literals;

constexpr char kUuid[] = "01112233-4455-6677-8899-aabbccddeeff";

std::string answer(
    const std::string& link = "https://10.9.9.9:8443/redfish/v1/",
    const std::string& type = "urn:dmtf-org:service:redfish-rest:1:0") {
  return "HTTP/1.1 200 OK\r\nCACHE-CONTROL:max-age=1800\r\nST:" + type +
         "\r\nUSN: uuid:01112233-4455-6677-8899-AABBCCDDEEFF::" + type +
         "\r\nAL: " + link + "\r\nEXT:\r\n\r\n";
}

TEST(ParseSearchAnswer, GivesThePort) {
  EXPECT_EQ(parseSearchAnswer(answer(), kUuid), 8443);
  EXPECT_EQ(parseSearchAnswer(answer(), ""), 8443);
  EXPECT_EQ(parseSearchAnswer(answer("https://[fe80::1]/redfish/v1/"), ""),
            443);
}

TEST(ParseSearchAnswer, OtherServicesAreNotTaken) {
  EXPECT_FALSE(
      parseSearchAnswer(answer(), "99999999-4455-6677-8899-aabbccddeeff"));
  EXPECT_FALSE(parseSearchAnswer(
      answer("https://10.9.9.9/", "urn:other:service:1"), ""));
}

TEST(ParseSearchAnswer, NonsenseIsNotTaken) {
  EXPECT_FALSE(parseSearchAnswer("", ""));
  EXPECT_FALSE(parseSearchAnswer("HTTP/1.1 404 Not Found\r\n\r\n", ""));
  EXPECT_FALSE(parseSearchAnswer(answer("http://10.9.9.9/"), ""));
  EXPECT_FALSE(parseSearchAnswer(answer("https://["), ""));
  EXPECT_FALSE(parseSearchAnswer(answer("https://h:0/"), ""));
  EXPECT_FALSE(parseSearchAnswer(answer("https://h:99999/"), ""));
  EXPECT_FALSE(parseSearchAnswer(answer(""), ""));
  EXPECT_FALSE(parseSearchAnswer("HTTP/1.1 200 OK", ""));
}

// A service on the loopback that answers one search with given texts.
class Responder {
 public:
  explicit Responder(const std::vector<std::string>& answers)
      : file_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in own = {};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof own;
    EXPECT_EQ(bind(file_, reinterpret_cast<sockaddr*>(&own), length), 0);
    getsockname(file_, reinterpret_cast<sockaddr*>(&own), &length);
    port_ = ntohs(own.sin_port);
    const timeval limit = {5, 0};
    setsockopt(file_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    thread_ = std::thread([this, answers] { serve(answers); });
  }
  ~Responder() {
    thread_.join();
    close(file_);
  }
  Responder(const Responder&) = delete;
  Responder& operator=(const Responder&) = delete;

  DiscoveryOptions options() const { return {"127.0.0.1", port_, 5000ms}; }

  // The search as it came.
  const std::string& search() {
    thread_.join();
    thread_ = std::thread([] {});
    return search_;
  }

 private:
  void serve(const std::vector<std::string>& answers) {
    char buffer[2048];
    sockaddr_in sender = {};
    socklen_t length = sizeof sender;
    const ssize_t count =
        recvfrom(file_, buffer, sizeof buffer, 0,
                 reinterpret_cast<sockaddr*>(&sender), &length);
    if (count < 0) {
      return;
    }
    search_.assign(buffer, static_cast<std::size_t>(count));
    for (const std::string& text : answers) {
      EXPECT_GE(sendto(file_, text.data(), text.size(), 0,
                       reinterpret_cast<sockaddr*>(&sender), length),
                0);
    }
  }

  int file_;
  std::uint16_t port_ = 0;
  std::string search_;
  std::thread thread_;
};

TEST(DiscoverServices, TakesTheSendersAddressAndTheStatedPort) {
  Responder responder({answer()});
  const auto found = discoverServices("lo", kUuid, responder.options());
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].address, "127.0.0.1");
  EXPECT_EQ(found[0].port, 8443);
  const std::string& search = responder.search();
  EXPECT_EQ(search.substr(0, 21), "M-SEARCH * HTTP/1.1\r\n");
  EXPECT_NE(search.find("\r\nMAN: \"ssdp:discover\"\r\n"), search.npos);
  EXPECT_NE(search.find("\r\nST: urn:dmtf-org:service:redfish-rest:1\r\n"),
            search.npos);
}

TEST(DiscoverServices, WaitsPastAnswersOfOthers) {
  const Responder responder({"noise", answer("http://h/"), answer()});
  EXPECT_EQ(discoverServices("lo", kUuid, responder.options()).size(), 1U);
}

TEST(DiscoverServices, SilenceEndsAtTheLimit) {
  const Responder responder({});
  DiscoveryOptions options = responder.options();
  options.timeout = 50ms;
  EXPECT_TRUE(discoverServices("lo", kUuid, options).empty());
}

TEST(DiscoverServices, EachAnswerIsTakenOnce) {
  const Responder responder({answer(), answer("https://h:9443/"), answer()});
  const auto found = discoverServices("lo", kUuid, responder.options());
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].port, 8443);
  EXPECT_EQ(found[1].port, 9443);
}

TEST(DiscoverServices, AnswerOnAnotherDeviceIsNotTaken) {
  const auto devices = runningDevices();
  const auto other = std::find_if(
      devices.begin(), devices.end(), [](const NetworkDevice& device) {
        return device.name != "lo" && !device.addresses.empty();
      });
  if (other == devices.end()) {
    GTEST_SKIP() << "this machine has no network device but loopback";
  }
  // From loopback, where any user of the machine can answer.
  const Responder responder({answer()});
  DiscoveryOptions options = responder.options();
  options.timeout = 200ms;
  EXPECT_TRUE(discoverServices(other->name, kUuid, options).empty());
}

// Whether an IPv4 address is a neighbour on a device.
bool isNeighbourOn(const std::string& device, const std::string& address) {
  sockaddr_in ipv4 = {};
  ipv4.sin_family = AF_INET;
  EXPECT_EQ(inet_pton(AF_INET, address.c_str(), &ipv4.sin_addr), 1);
  return isNeighbour(reinterpret_cast<const sockaddr&>(ipv4), device);
}

TEST(IsNeighbour, LiesInTheDevicesNetwork) {
  EXPECT_TRUE(isNeighbourOn("lo", "127.0.0.1"));
  EXPECT_TRUE(isNeighbourOn("lo", "127.9.9.9"));
  EXPECT_FALSE(isNeighbourOn("lo", "128.0.0.1"));
  EXPECT_FALSE(isNeighbourOn("no-such-device", "127.0.0.1"));
}

TEST(IsNeighbour, IsNotThisMachine) {
  for (const NetworkDevice& device : runningDevices()) {
    for (const std::string& address : device.addresses) {
      if (device.name != "lo" && !base::isIpv6Host(address)) {
        EXPECT_FALSE(isNeighbourOn(device.name, address)) << address;
      }
    }
  }
}

TEST(DiscoverServices, UnknownDeviceFindsNothing) {
  EXPECT_TRUE(discoverServices("no-such-device", kUuid).empty());
}

TEST(DiscoverServices, GroupThatIsNoAddressFindsNothing) {
  EXPECT_TRUE(discoverServices("lo", kUuid, {"nowhere", 1900, 50ms}).empty());
}

}  // namespace
}  // namespace local
